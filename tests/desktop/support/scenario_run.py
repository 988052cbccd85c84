"""Runs one scenario on a desktop that has started, and prints what helps to understand its failure."""

import sys
import traceback

# Of a log, on failure.
_LAST_CHARACTERS = 4000


def run(desktop, binary, scenario, checks=(), logs=(), has_picture=True):
    """The exit status of the process. `checks` are called after the scenario and fail with it; `logs` are
    patterns of files in the desktop's folder that are shown besides Kelpa's last log, and `has_picture` whether
    the desktop has a screen to show."""
    # Connects to the session of the desktop.
    import board

    board.connect()
    try:
        scenario(desktop, binary)
        for check in checks:
            check()
    except Exception:
        traceback.print_exc()
        _report(desktop, board, logs, has_picture)
        return 1
    return 0


def _report(desktop, board, logs, has_picture):
    try:
        found = sorted(desktop.directory.glob("kelpa-*.log"))[-1:]
        for pattern in logs:
            found += sorted(desktop.directory.glob(pattern))
        for log in found:
            print(f"{log}:\n{log.read_text(errors='replace')[-_LAST_CHARACTERS:]}", file=sys.stderr)
        print("windows:", *desktop.windows(), sep="\n  ", file=sys.stderr)
        if has_picture:
            print(f"picture: {desktop.screenshot(desktop.directory / 'failure.png')}", file=sys.stderr)
        print(board.outline_of_window(), file=sys.stderr)
    except Exception:
        traceback.print_exc()
