"""recall.py BINARY [ROUNDS]: how long after a window has the title by which it is certainly a remembered one
its goal has it, on a real desktop, until that is on the disk. Windows one after the other, and twenty whose
titles come at once, as at a login; the time of those is that of the last one."""

import json
import pathlib
import sqlite3
import statistics
import sys
import tempfile
import time

root = pathlib.Path(__file__).resolve().parents[3]
sys.path.insert(0, str(root / "tests" / "desktop" / "support"))
sys.dont_write_bytecode = True

import processes  # noqa: E402
import settings  # noqa: E402
from harness import Desktop  # noqa: E402
from processes import wait_until  # noqa: E402

_AT_ONCE = 20
_GOALS = ("Taxes", "Garden", "Travel")
_ASSIGNMENTS = "SELECT value FROM settings WHERE key = 'kelpa.windowAssignments'"
# A title of which nothing is taken off, for each of them.
_SYLLABLES = ("al", "be", "cor", "du", "fen", "gil", "hol", "ims", "jar", "kel")


def _title(index):
    syllables = [_SYLLABLES[int(digit)] for digit in f"{index:03}"]
    return "".join(syllables).capitalize() + " accounts"


def _settle(assigned, remembered):
    """Waits until none of the remembered windows is assigned any more; returns when that was so."""
    keys = {str(number) for number in remembered}
    wait_until("the windows are in their goals", lambda: not keys & assigned().keys(), 60, 0.003)
    return time.monotonic()


def _open(desktop, count):
    """Windows of a terminal that do not have their titles yet."""
    windows = []
    for index in range(count):
        number = desktop.open_window(f"Loading {index}", 300, 200, "XTerm")
        windows.append(desktop.x.create_resource_object("window", number))
    # Listed, and matched in vain.
    time.sleep(2)
    return windows


def _retitle(desktop, windows, remembered):
    for window, number in zip(windows, remembered):
        window.set_wm_name(_title(number))
    desktop.x.sync()
    return time.monotonic()


def _close(desktop, windows):
    for window in windows:
        window.destroy()
    desktop.x.sync()


def main():
    binary = pathlib.Path(sys.argv[1]).resolve()
    rounds = int(sys.argv[2]) if len(sys.argv) > 2 else 10
    count = rounds + rounds * _AT_ONCE
    times = {"one": [], f"{_AT_ONCE} at once": []}
    processes.exit_on_signals()
    with tempfile.TemporaryDirectory(prefix="kelpa-recall-") as directory, \
            Desktop(pathlib.Path(directory) / "desktop") as desktop:
        path = desktop.directory / "board.sqlite"
        settings.write(path, goals=[(goal, []) for goal in _GOALS])
        settings.remember(path, *[(_title(number), _GOALS[number % len(_GOALS)])
                                  for number in range(1, count + 1)], are_certain=True)
        kelpa = desktop.start(binary, "--settings", path)
        wait_until("Kelpa's window is shown", lambda: any(
            each.pid == kelpa.pid for each in desktop.windows()), 60)
        database = sqlite3.connect(f"file:{path}?mode=ro", uri=True, timeout=30)

        def assigned():
            return json.loads(database.execute(_ASSIGNMENTS).fetchone()[0])

        remaining = iter(range(1, count + 1))
        for name, each in [(name, each) for name, each in zip(times, (1, _AT_ONCE)) for _ in range(rounds)]:
            windows = _open(desktop, each)
            remembered = [next(remaining) for _ in range(each)]
            titled = _retitle(desktop, windows, remembered)
            times[name].append(_settle(assigned, remembered) - titled)
            _close(desktop, windows)
        database.close()
        kelpa.terminate()
        wait_until("Kelpa ends", lambda: kelpa.poll() is not None)
    print("| windows    | median, s | worst, s |")
    print("|:-----------|----------:|---------:|")
    for name, seconds in times.items():
        print(f"| {name:10} | {statistics.median(seconds):9.2f} | {max(seconds):8.2f} |")


if __name__ == "__main__":
    sys.exit(main())
