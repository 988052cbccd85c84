"""run_scenario.py BINARY DIRECTORY MODULE FUNCTION: one scenario on a desktop of its own."""

import importlib
import pathlib
import sys
import traceback

sys.path.insert(0, str(pathlib.Path(__file__).parent / "support"))

import processes
from harness import Desktop


def main():
    binary, directory, module, function = sys.argv[1:]
    processes.exit_on_signals()
    scenario = getattr(importlib.import_module(module), function)
    # Wide enough for six columns, so that few scenarios have to scroll.
    wanted = {"size": "2100x1000x24", **getattr(scenario, "desktop", {})}
    with Desktop(directory, **wanted) as desktop:
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
        print(f"picture: {desktop.screenshot(desktop.directory / 'failure.png')}", file=sys.stderr)
        print("windows:", *desktop.windows(), sep="\n  ", file=sys.stderr)
        logs = sorted(desktop.directory.glob("kelpa-*.log"))[-1:]
        for log in logs + sorted(desktop.directory.glob("session-*.log")):
            print(f"{log}:\n{log.read_text(errors='replace')[-4000:]}", file=sys.stderr)
        print(board.outline_of_window(), file=sys.stderr)
    except Exception:
        traceback.print_exc()


if __name__ == "__main__":
    sys.exit(main())
