"""lint_changed.py JOBS [BASE]: what scripts/lint checks, of the files that differ from BASE alone. A header
is analysed in the source beside it. Nothing is built: QML is checked where the debug build is there."""

import concurrent.futures
import json
import os
import pathlib
import re
import shlex
import subprocess
import sys
import time

_ROOT = pathlib.Path(__file__).resolve().parent.parent
_BUILD = pathlib.Path("build/lint-changed")


def _output(*argv):
    return subprocess.run(argv, check=True, text=True, stdout=subprocess.PIPE).stdout


def _default_base():
    """Where the branch left main; HEAD on main, or where there is no such branch."""
    found = subprocess.run(["git", "merge-base", "main", "HEAD"], check=False, text=True,
                           stdout=subprocess.PIPE, stderr=subprocess.DEVNULL).stdout.strip()
    return found or "HEAD"


def _changed(base):
    """Files that are there, committed since BASE or not, and those git does not know yet."""
    names = _output("git", "diff", "--name-only", "-z", "--diff-filter=d", base)
    names += _output("git", "ls-files", "-z", "--others", "--exclude-standard")
    return sorted({pathlib.Path(name) for name in names.split("\0") if name})


def _is_shell(path):
    with open(path, "rb") as file:
        return file.readline().strip() == b"#!/usr/bin/env bash"


def _compile_commands():
    """Of each source alone, neither joined nor with the headers that gcc has precompiled."""
    subprocess.run(["cmake", "--preset", "lint", "-B", str(_BUILD), "-DKELPA_FAST_BUILD=OFF",
                    "-DCMAKE_UNITY_BUILD=OFF"], check=True, stdout=subprocess.DEVNULL)
    commands = json.loads((_BUILD / "compile_commands.json").read_text(encoding="utf-8"))
    return {os.path.relpath(each["file"], _ROOT): each for each in commands}


def _analysed(files, commands):
    """The changed sources, and those beside changed headers."""
    sources = set()
    for path in files:
        if path.suffix in (".cpp", ".h") and str(path.with_suffix(".cpp")) in commands:
            sources.add(str(path.with_suffix(".cpp")))
    return sorted(sources)


def _generate(sources, commands):
    """The meta object code and the protocols of Wayland that sources include."""
    targets = set()
    for source in sources:
        text = (_ROOT / source).read_text(encoding="utf-8")
        if re.search(r'#include ".*[.]moc"', text):
            library = re.search(r"CMakeFiles/([^/]+)[.]dir/", commands[source]["command"])[1]
            targets.add(f"{library}_autogen")
        if "/wayland/" in source:
            targets.add("kelpa_wayland_protocols")
    if targets:
        subprocess.run(["cmake", "--build", _BUILD, "--target", *sorted(targets)],
                       check=True, stdout=subprocess.DEVNULL)


def _tidy(source):
    return subprocess.run(["clang-tidy-14", "--quiet", "-p", str(_BUILD), source], check=False, text=True,
                          stdout=subprocess.PIPE, stderr=subprocess.DEVNULL)


def _check_sources(files, jobs):
    commands = _compile_commands()
    sources = _analysed(files, commands)
    _generate(sources, commands)
    with concurrent.futures.ThreadPoolExecutor(jobs) as pool:
        failed = [done.stdout for done in pool.map(_tidy, sources) if done.returncode != 0]
    print(*failed, sep="", end="")
    return not failed


def _lint_commands():
    """The commands that the debug build checks its modules with, as words; none without a build."""
    if not pathlib.Path("build/debug/build.ninja").exists():
        return []
    lines = _output("ninja", "-C", "build/debug", "-t", "commands", "all_qmllint").splitlines()
    commands = [shlex.split(line.split(" && ")[-1]) for line in lines if "/qmllint --bare" in line]
    return [words for words in commands if "--json" not in words]


def _check_qml(files):
    """With the options of the module that a file belongs to, whose types the debug build describes."""
    commands = _lint_commands()
    is_clean = True
    for path in files:
        words = next((words for words in commands if str(_ROOT / path) in words), None)
        if words is None:
            print(f"{path}: not checked, no module of the debug build has it", file=sys.stderr)
            continue
        options = [word for word in words if not word.endswith(".qml")]
        done = subprocess.run([*options, path], check=False, text=True, stdout=subprocess.PIPE,
                              stderr=subprocess.STDOUT)
        if done.returncode != 0 or re.search(r"^(Info|Warning|Error)", done.stdout, re.MULTILINE):
            print(done.stdout, end="")
            is_clean = False
    return is_clean


def main():
    os.chdir(_ROOT)
    jobs = int(sys.argv[1])
    base = sys.argv[2] if len(sys.argv) > 2 else _default_base()
    files = _changed(base)
    code = [path for path in files if path.suffix in (".cpp", ".h")]
    qml = [path for path in files if path.suffix == ".qml" and path.parts[0] == "src"]
    scripts = [path for path in files if not path.suffix and _is_shell(path)]
    python = [path for path in files if path.suffix == ".py"]
    is_clean = True

    def check(what, is_needed, passes):
        nonlocal is_clean
        if not is_needed:
            return
        started = time.monotonic()
        if passes():
            print(f"lint: {what} in order ({time.monotonic() - started:.0f} s)", flush=True)
        else:
            print(f"lint: {what} not in order", flush=True)
            is_clean = False

    def run(*argv):
        return lambda: subprocess.run(argv, check=False).returncode == 0

    check("shell scripts", scripts, run("shellcheck", "--external-sources", *scripts))
    check("Python scripts", python, run("pyflakes3", *python))
    script = [path for path in files if path.suffix == ".js" and path.parts[0] == "data"]
    check("JavaScript", script, run("env", "NODE_PATH=/usr/share/nodejs", "eslint", "--format", "unix", *script))
    layered = [path for path in files
               if path in code + qml or str(path) in ("README.md", "scripts/layering.py")]
    check("layering", layered, run("python3", "scripts/layering.py"))
    check("documented commands", True, run("scripts/bare-test", "--check"))
    check("format", code, run("clang-format-14", "--dry-run", "--Werror", *code))
    check("QML", qml, lambda: _check_qml(qml))
    check("static analysis", code, lambda: _check_sources(code, jobs))
    return 0 if is_clean else 1


if __name__ == "__main__":
    sys.exit(main())
