"""test_roots.py FOLDER [SUITE...]: makes the roots of newer Debians in FOLDER for tests on their
compositors, each unless it is there and as its list of packages says. There is one for each
packages/test-root-SUITE.txt; without a suite all of them are made but the large ones, which are called after
a suite and what is in them, as in trixie-desktops."""

import pathlib
import shutil
import subprocess
import sys
import time

from clean_root import mirror

_LISTS = pathlib.Path(__file__).resolve().parent / "packages"
_PREFIX = "test-root-"

# Nobody reads there, and nothing starts there by itself. A mirror that lags behind is good enough.
_FILES = {
    "etc/apt/apt.conf.d/90lean": 'APT::Install-Recommends "false";\nAcquire::Languages "none";\n'
                                 'Acquire::Check-Valid-Until "false";\n',
    "etc/dpkg/dpkg.cfg.d/lean": "force-unsafe-io\npath-exclude=/usr/share/doc/*\n"
                                "path-exclude=/usr/share/man/*\npath-exclude=/usr/share/locale/*\n",
    "usr/sbin/policy-rc.d": "#!/bin/sh\nexit 101\n",
}


def _suites():
    return sorted(path.stem.removeprefix(_PREFIX) for path in _LISTS.glob(f"{_PREFIX}*.txt"))


def _packages(suite):
    lines = (_LISTS / f"{_PREFIX}{suite}.txt").read_text(encoding="utf-8").splitlines()
    return sorted({word for line in lines for word in line.split("#")[0].split()})


def _recipe(suite):
    """What a root was made from; one that was made from anything else is out of date."""
    return "\n".join([suite, *_packages(suite), *_FILES.values()])


def _run(root, *argv):
    subprocess.run(["chroot", root, "/usr/bin/env", "-i", "PATH=/usr/sbin:/usr/bin:/sbin:/bin",
                    "LANG=C.UTF-8", "DEBIAN_FRONTEND=noninteractive", *argv], check=True,
                   stdout=subprocess.DEVNULL)


def _make(suite, root):
    release = suite.partition("-")[0]
    subprocess.run(["debootstrap", "--variant=minbase", release, root, mirror()], check=True,
                   stdout=subprocess.DEVNULL)
    for name, text in _FILES.items():
        (root / name).write_text(text, encoding="utf-8")
        (root / name).chmod(0o755)
    names = root / "etc/resolv.conf"
    names.write_bytes(pathlib.Path("/etc/resolv.conf").read_bytes())
    proc = root / "proc"
    subprocess.run(["mount", "-t", "proc", "proc", proc], check=True)
    try:
        _run(root, "apt-get", "-q", "update")
        _run(root, "apt-get", "-q", "-y", "install", *_packages(suite))
        _run(root, "apt-get", "clean")
    finally:
        subprocess.run(["umount", "--lazy", proc], check=True)
    for folder in ("var/lib/apt/lists", "usr/share/doc", "usr/share/man", "usr/share/locale"):
        shutil.rmtree(root / folder, ignore_errors=True)


def _keep_up_to_date(suite, folder):
    root, recipe = folder / suite, folder / f"{suite}.recipe"
    if root.is_dir() and recipe.exists() and recipe.read_text(encoding="utf-8") == _recipe(suite):
        return
    print(f"Making {root}", file=sys.stderr, flush=True)
    started = time.monotonic()
    unfinished = folder / f"{suite}.unfinished"
    for old in (unfinished, root):
        shutil.rmtree(old, ignore_errors=True)
    recipe.unlink(missing_ok=True)
    _make(suite, unfinished)
    unfinished.rename(root)
    recipe.write_text(_recipe(suite), encoding="utf-8")
    print(f"Made {root} ({time.monotonic() - started:.0f} s)", file=sys.stderr, flush=True)


def main():
    folder = pathlib.Path(sys.argv[1])
    folder.mkdir(parents=True, exist_ok=True)
    # A large one that was asked for once is kept up to date.
    suites = sys.argv[2:] or [suite for suite in _suites() if "-" not in suite or (folder / suite).is_dir()]
    unknown = [suite for suite in suites if suite not in _suites()]
    if unknown:
        print(f"Not among {' '.join(_suites())}: {' '.join(unknown)}", file=sys.stderr)
        return 2
    status = 0
    for suite in suites:
        try:
            _keep_up_to_date(suite, folder)
        except (OSError, subprocess.CalledProcessError) as error:
            # The other roots are still of use.
            print(f"No root of {suite}: {error}", file=sys.stderr, flush=True)
            status = 1
    return status


if __name__ == "__main__":
    sys.exit(main())
