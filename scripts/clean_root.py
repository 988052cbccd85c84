"""A minimal Debian in a folder."""

import contextlib
import hashlib
import os
import pathlib
import shutil
import stat
import subprocess
import tarfile

# The release that Kelpa is made on.
DEFAULT_SUITE = "bookworm"
# Records of apt and dpkg, which every installation changes, and what is not on the disk.
_NOT_COMPARED = ("dev", "proc", "run", "sys", "tmp", "home", "var/cache/apt", "var/cache/debconf",
                 "var/lib/apt", "var/lib/dpkg", "var/log")

# An ordinary person of that Debian, and the environment of their programs.
USER = 1000
USER_ENV = {"HOME": "/home/someone", "XDG_RUNTIME_DIR": "/home/someone/run"}


def mirror():
    """The address that this machine gets its own packages from, whichever release of Debian it has: a mirror
    has them all."""
    listed = subprocess.run(
        ["apt-get", "indextargets", "--format", "$(LABEL) $(REPO_URI)", "Created-By: Packages"],
        check=True, capture_output=True, text=True).stdout
    return next(address for label, address in (line.rsplit(maxsplit=1) for line in listed.splitlines())
                if label == "Debian")


class CleanRoot:
    """`with CleanRoot(directory) as root:` makes the tree and removes it at the end of the block; its
    base and the packages that were fetched for it are kept in `directory`, which is of one suite."""

    def __init__(self, directory, suite=DEFAULT_SUITE):
        self._directory = pathlib.Path(directory)
        self._suite = suite
        self._base = self._directory / f"{suite}.tar"
        self._archives = self._directory / "archives"
        self.path = self._directory / "root"
        self._mounts = []

    def __enter__(self):
        self._directory.mkdir(parents=True, exist_ok=True)
        shutil.rmtree(self.path, ignore_errors=True)
        if self._base.exists():
            self.path.mkdir()
            with tarfile.open(self._base) as tar:
                tar.extractall(self.path, numeric_owner=True)
        else:
            self._make_base()
        self._mount("proc", "proc", "-t", "proc")
        (self._archives / "partial").mkdir(parents=True, exist_ok=True)
        self._mount(self._archives, "var/cache/apt/archives", "--bind")
        (self.path / "etc/resolv.conf").write_bytes(pathlib.Path("/etc/resolv.conf").read_bytes())
        # Packages start no services.
        policy = self.path / "usr/sbin/policy-rc.d"
        policy.write_text("#!/bin/sh\nexit 101\n", encoding="utf-8")
        policy.chmod(0o755)
        self.run("useradd", "--uid", USER, "--user-group", "--create-home", "someone")
        self.run("mkdir", "--mode=700", USER_ENV["XDG_RUNTIME_DIR"], user=USER)
        return self

    def __exit__(self, *_exception):
        for point in reversed(self._mounts):
            subprocess.run(["umount", "--lazy", point], check=True)
        shutil.rmtree(self.path)

    def _make_base(self):
        try:
            subprocess.run(["debootstrap", "--variant=minbase", self._suite, self.path, mirror()],
                           check=True, stdout=subprocess.DEVNULL)
            self.run("apt-get", "clean")
            unfinished = self._base.with_suffix(".unfinished")
            with tarfile.open(unfinished, "w") as tar:
                tar.add(self.path, arcname=".")
            unfinished.rename(self._base)
        except BaseException:
            shutil.rmtree(self.path, ignore_errors=True)
            raise

    def _mount(self, what, where, *options):
        point = self.path / where
        subprocess.run(["mount", *options, what, point], check=True)
        self._mounts.append(point)

    def bind(self, directory, where):
        """Shows a folder of this machine at a path in this Debian, until the end of the block."""
        (self.path / where).mkdir(parents=True, exist_ok=True)
        self._mount(directory, where, "--bind")

    def make_runnable(self):
        """Adds what whole desktops need of a kernel: shared memory and terminals."""
        for name, kind, *options in (("shm", "tmpfs"),
                                     ("pts", "devpts", "-o", "newinstance,ptmxmode=0666,mode=620")):
            (self.path / "dev" / name).mkdir(exist_ok=True)
            self._mount(kind, f"dev/{name}", "-t", kind, *options)
        (self.path / "dev/shm").chmod(0o1777)
        multiplexer = self.path / "dev/ptmx"
        multiplexer.unlink(missing_ok=True)
        multiplexer.symlink_to("pts/ptmx")

    def command(self, *argv, user=0, env=None):
        """The command line that runs `argv` in this Debian, with no environment but `env`."""
        words = [f"{name}={value}" for name, value in (env or {}).items()]
        return ["chroot", f"--userspec={user}:{user}", str(self.path), "/usr/bin/env", "-i",
                "PATH=/usr/sbin:/usr/bin:/sbin:/bin", "LANG=C.UTF-8", *words, *map(str, argv)]

    def run(self, *argv, user=0, env=None):
        """Returns what a command in this Debian printed; an AssertionError says so when it failed."""
        done = subprocess.run(self.command(*argv, user=user, env=env), stdin=subprocess.DEVNULL,
                              stdout=subprocess.PIPE, stderr=subprocess.STDOUT, text=True,
                              errors="replace", check=False)
        if done.returncode != 0:
            raise AssertionError(f"{' '.join(map(str, argv))}: {done.returncode}\n{done.stdout}")
        return done.stdout

    def files(self):
        """Every path that packages could have created, with its mode and a digest of its content."""
        found = {}
        for folder, names, files in os.walk(self.path):
            here = os.path.relpath(folder, self.path)
            for name in list(names):
                if os.path.normpath(os.path.join(here, name)) in _NOT_COMPARED:
                    names.remove(name)
            for name in names + files:
                found[os.path.normpath(os.path.join(here, name))] = _content(os.path.join(folder, name))
        return found

    @contextlib.contextmanager
    def unchanged_by(self, what):
        """The block leaves every file as it was before; an AssertionError names those that differ."""
        before = self.files()
        yield
        after = self.files()
        changed = sorted(path for path in before.keys() | after.keys()
                         if before.get(path) != after.get(path))
        if changed:
            raise AssertionError(f"{what} left a trace: {' '.join(changed)}")


def _content(path):
    mode = os.lstat(path).st_mode
    if stat.S_ISLNK(mode):
        return mode, os.readlink(path)
    if stat.S_ISREG(mode):
        with open(path, "rb") as file:
            return mode, hashlib.file_digest(file, "sha1").hexdigest()
    return mode, None
