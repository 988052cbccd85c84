"""Programs of another system, which lies in a folder of this one, as scripts/test-roots makes it."""

import os
import pathlib
import shutil

_CACHE = pathlib.Path(os.environ.get("XDG_CACHE_HOME") or pathlib.Path.home() / ".cache")


def find(suite):
    """The root of that suite of Debian; None where there is none, or nothing that enters it."""
    root = _CACHE / "kelpa" / "test-roots" / suite
    return root if (root / "usr/bin").is_dir() and shutil.which("bwrap") else None


def command(root, *arguments):
    """The command line of a program in the root, which is read-only there, for `arguments`: folders of
    this system that it may write to, as paths, then the program's own. It sees the same processes and
    sockets as programs of this system do, so that they may be its clients."""
    folders = []
    while isinstance(arguments[0], pathlib.Path):
        folders += ["--bind", arguments[0], arguments[0]]
        arguments = arguments[1:]
    system = [word for name in ("bin", "lib", "lib64", "sbin")
              for word in ("--symlink", f"usr/{name}", f"/{name}")]
    for name in ("usr", "etc", "var"):
        system += ["--ro-bind", root / name, f"/{name}"]
    # What enters it refuses capabilities that it has not asked for.
    return ["setpriv", "--inh-caps=-all", "--ambient-caps=-all",
            "bwrap", "--die-with-parent", *system, "--dev", "/dev", "--proc", "/proc", "--tmpfs", "/run",
            "--bind", "/tmp", "/tmp", *folders, "--", *arguments]


# Where those who entered with `visible` have the other system.
VIEW = "/mnt"
_MAKE_VIEW = """set -e
root=$1 view=$2
shift 2
mount -t tmpfs -o mode=755 tmpfs "$view"
mkdir "$view/run"
for name in usr etc var; do
    mkdir "$view/$name"
    mount --rbind "$root/$name" "$view/$name"
    mount -o remount,bind,ro "$view/$name"
done
for name in bin lib lib64 sbin; do
    ln -s "usr/$name" "$view/$name"
done
for folder in /dev /proc /sys /tmp; do
    mkdir "$view$folder"
    mount --rbind "$folder" "$view$folder"
done
while [ "$1" != -- ]; do
    mkdir -p "$view$1"
    mount --rbind "$1" "$view$1"
    shift
done
shift
exec "$@"
"""


def visible(root, folders, command):
    """The command line `command` where the root is there for `inside`, read-only, with these folders of
    this system. A program of the root then is of the same user namespace as the others, without which it
    may not see which files they run."""
    user = [] if os.getuid() == 0 else ["--user", "--map-current-user", "--keep-caps"]
    # The mounts belong to these processes, so they disappear with them.
    return ["unshare", "--mount", *user, "sh", "-c", _MAKE_VIEW, "sh", str(root), VIEW,
            *map(str, folders), "--", *command]


def inside(command):
    """The command line of a program in the root that is visible. It needs the capability to change the root."""
    return ["chroot", VIEW, *command]
