"""run_scenario.py BINARY DIRECTORY MODULE FUNCTION: one scenario on a sway of its own, which has no
screen. Skipped where sway or what the scenario shows is not installed."""

import importlib
import os
import pathlib
import pwd
import shutil
import sys
import traceback

_HERE = pathlib.Path(__file__).resolve().parent
sys.path[:0] = [str(_HERE / "support"), str(_HERE.parent / "desktop" / "support")]

_SKIPPED = 77
_NEEDED = ("sway", "swaymsg", "foot", "grim")


def main():
    missing = [program for program in _NEEDED if shutil.which(program) is None]
    if missing:
        print("not installed:", *missing)
        return _SKIPPED
    binary, directory, module, function = sys.argv[1:]
    directory = pathlib.Path(directory)
    if os.getuid() == 0:
        return _run_as_somebody_else(directory)
    return _run(binary, directory / "desktop", module, function)


def _run_as_somebody_else(directory):
    """sway refuses to run as root, and all its clients are of its own user. They may read what root
    may: the sources may lie in a folder of root's alone."""
    user = pwd.getpwnam("nobody")
    shutil.rmtree(directory, ignore_errors=True)
    directory.mkdir(parents=True)
    os.chown(directory, user.pw_uid, user.pw_gid)
    os.execvp("setpriv", ["setpriv", f"--reuid={user.pw_uid}", f"--regid={user.pw_gid}",
                          "--clear-groups", "--no-new-privs", "--inh-caps=+dac_read_search",
                          "--ambient-caps=+dac_read_search", sys.executable, "-B", *sys.argv])


def _run(binary, directory, module, function):
    import processes
    from sway import SwayDesktop

    processes.exit_on_signals()
    scenario = getattr(importlib.import_module(module), function)
    with SwayDesktop(directory, **getattr(scenario, "desktop", {})) as desktop:
        import board

        board.connect()
        try:
            scenario(desktop, binary)
        except Exception:
            traceback.print_exc()
            _report(desktop, board)
            return 1
    return 0


def _report(desktop, board):
    """Everything that helps to understand a failure, on the standard error stream."""
    try:
        for log in sorted(desktop.directory.glob("kelpa-*.log"))[-1:]:
            print(f"{log}:\n{log.read_text(errors='replace')[-4000:]}", file=sys.stderr)
        print("windows:", *desktop.windows(), sep="\n  ", file=sys.stderr)
        print(f"picture: {desktop.screenshot(desktop.directory / 'failure.png')}", file=sys.stderr)
        print(board.outline_of_window(), file=sys.stderr)
    except Exception:
        traceback.print_exc()


if __name__ == "__main__":
    sys.exit(main())
