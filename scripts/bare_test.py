"""bare_test.py DIRECTORY [COMMAND...]: runs every command of the documents on a bare Debian, each in a
root of its own, so that none lives on packages that another one installed. The sources are copied
to DIRECTORY/kelpa, where builds are kept for the next command. bare_test.py --check fails where the
documents name a command that is not in the table below. bare_test.py --suite SUITE DIRECTORY LINE... runs
whole command lines on another release of Debian."""

import os
import pathlib
import re
import shutil
import subprocess
import sys
import time

sys.dont_write_bytecode = True

from clean_root import DEFAULT_SUITE, USER, USER_ENV, CleanRoot  # noqa: E402

_ROOT = pathlib.Path(__file__).resolve().parent.parent
_HOME = "home/someone/kelpa"

# Each script of the project, and the shortest use of it that needs every package of its lists.
_COMMANDS = {
    "./run": "./run --demo",
    "./test": "./test -R '^desktop.every_part_of_an_empty_board|^QuotedTexts|return_ends_a_composition'",
    "scripts/package": "scripts/package",
    "scripts/lint": "scripts/lint",
    "scripts/bench": "scripts/bench --short",
    "scripts/sanitize": "scripts/sanitize tsan -R '^UnchangedWindows'"
                        " && scripts/sanitize asan -R '^QuotedTexts'",
    "scripts/endurance": "scripts/endurance --short",
    "scripts/fuzz": "scripts/fuzz --executions 1000 drag-text",
    "scripts/window-managers": "scripts/window-managers",
    "scripts/real-programs": "scripts/real-programs",
}

# Scripts that are not tried there, and why.
_LEFT_OUT = {
    "scripts/package-test": "makes a bare Debian itself",
    "scripts/test-roots": "makes a Debian itself",
    "scripts/bare-test": "this one",
    "scripts/debian-13": "makes a bare Debian itself",
    ".ci/run": "runs the others",
}

# Beginnings of lines in the documents' shell blocks that start no script: single steps of ./test, and
# tools for debugging whose packages the documents name.
_OTHER_LINES = ("cmake ", "ctest ", "gdb ", "xtrace ", "git ", "build/", "QT_", "QSG_", "busctl ",
                "gdbus ", "kelpa ")


def _documents():
    return [path for path in (_ROOT / "README.md", _ROOT / "CONTRIBUTING.md",
                              *sorted((_ROOT / "docs").glob("*.md"))) if path.exists()]


def _unknown_commands():
    """Scripts that exist or that a document names, and lines of shell blocks, which no table has."""
    known = _COMMANDS.keys() | _LEFT_OUT.keys()
    scripts = {f"scripts/{path.name}" for path in (_ROOT / "scripts").iterdir()
               if path.is_file() and os.access(path, os.X_OK)}
    for name in sorted(scripts - known):
        yield f"{name} is not in scripts/bare_test.py"
    for document in _documents():
        text = document.read_text(encoding="utf-8")
        for name in sorted(set(re.findall(r"(?<![\w./])(?:\./(?:run|test)|\.ci/run|scripts/[a-z-]+)(?![\w./-])",
                                          text)) - known):
            if not (_ROOT / name).is_dir():
                yield f"{document.name}: {name} is not in scripts/bare_test.py"
        for block in re.findall(r"^```sh\n(.*?)^```", text, re.MULTILINE | re.DOTALL):
            for line in block.replace("\\\n", "").splitlines():
                if line.split()[0] not in known and not line.startswith(_OTHER_LINES):
                    yield f"{document.name}: `{line}` is not in scripts/bare_test.py"


def _copy_sources(target):
    """Every file that is not ignored; files that are the same keep their time, so that builds that
    are kept do not start over."""
    listed = subprocess.run(["git", "-c", "safe.directory=*", "-C", _ROOT, "ls-files", "-z", "--cached",
                             "--others", "--exclude-standard"], check=True, text=True,
                            stdout=subprocess.PIPE).stdout
    wanted = {pathlib.Path(name) for name in listed.split("\0") if name and (_ROOT / name).exists()}
    target.mkdir(parents=True, exist_ok=True)
    for path in sorted(target.rglob("*")):
        inside = path.relative_to(target)
        if path.is_file() and inside.parts[0] != "build" and inside not in wanted:
            path.unlink()
    for name in wanted:
        (target / name).parent.mkdir(parents=True, exist_ok=True)
        shutil.copy2(_ROOT / name, target / name)
    subprocess.run(["chown", "--recursive", f"{USER}:{USER}", target], check=True)


def _try(line, directory, suite):
    """An AssertionError, with the end of what it printed, when the command line fails."""
    started = time.monotonic()
    log = directory / f"{pathlib.Path(line.split()[0]).name}.log"
    with CleanRoot(directory, suite) as clean:
        clean.make_runnable()
        clean.bind(directory / "kelpa", _HOME)
        clean.run("apt-get", "-q", "update")
        # The package that every person who can install packages has.
        clean.run("apt-get", "-q", "-y", "install", "--no-install-recommends", "sudo")
        (clean.path / "etc/sudoers.d/someone").write_text("someone ALL=(ALL) NOPASSWD: ALL\n")
        env = {**USER_ENV, "KELPA_JOBS": os.environ.get("KELPA_JOBS") or str(os.cpu_count())}
        with open(log, "wb") as out:
            status = subprocess.run(
                clean.command("bash", "-c", f"cd /{_HOME} && {line}", user=USER, env=env),
                stdin=subprocess.DEVNULL, stdout=out, stderr=subprocess.STDOUT, check=False).returncode
    if status != 0:
        end = log.read_text(encoding="utf-8", errors="replace").splitlines()[-40:]
        raise AssertionError(f"{line}: {status}, see {log}\n" + "\n".join(end))
    print(f"bare test: {line} ({time.monotonic() - started:.0f} s)", flush=True)


def main():
    if sys.argv[1:] == ["--check"]:
        found = list(_unknown_commands())
        print(*found, sep="\n", end="\n" if found else "")
        return 1 if found else 0
    if sys.argv[1] == "--suite":
        suite, directory, lines = sys.argv[2], pathlib.Path(sys.argv[3]), sys.argv[4:]
        _copy_sources(directory / "kelpa")
        for line in lines:
            _try(line, directory, suite)
        return 0
    directory = pathlib.Path(sys.argv[1])
    names = sys.argv[2:] or list(_COMMANDS)
    unknown = [name for name in names if name not in _COMMANDS]
    if unknown:
        print(f"Not among {' '.join(_COMMANDS)}: {' '.join(unknown)}", file=sys.stderr)
        return 2
    _copy_sources(directory / "kelpa")
    for name in names:
        _try(_COMMANDS[name], directory, DEFAULT_SUITE)
    return 0


if __name__ == "__main__":
    try:
        sys.exit(main())
    except AssertionError as error:
        print(f"The bare test failed: {error}", file=sys.stderr)
        sys.exit(1)
