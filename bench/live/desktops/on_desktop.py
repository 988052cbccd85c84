"""One round on one desktop: a function that the run_scenario.py of each desktop's tests calls in a session that
has started. What to measure comes as JSON in KELPA_BENCH_PLAN; the figures go to standard output, as JSON in a
line that begins with `FIGURES`."""

import json
import os
import pathlib
import re
import statistics
import sys
import time

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parents[1]))

import settings  # noqa: E402
import usage  # noqa: E402
from processes import wait_until  # noqa: E402
from x_windows import XWindows  # noqa: E402

FIGURES = "figures: "
_LINE = re.compile(r"^\s*([\d.]+) (.*)$")
_LISTED = re.compile(r"a pass listed (\d+) windows in ([\d.]+) ms")
_CAPTURED = re.compile(r"captured a window of (\d+) x (\d+) pixels in ([\d.]+) ms")
_RULES = "kelpa.store.debug=true;kelpa.views.debug=true;qt.scenegraph.time.renderloop.debug=true"
_GOALS = [(f"Goal {index}", [f"Todo {todo}" for todo in range(5)]) for index in range(10)]
_PREVIEW = 1920, 1080
# One preview is taken every 0.6 s.
_PREVIEW_INTERVAL = 0.6
# A change that comes sooner than this after another one may wait for it.
_PAUSE = 0.7


class Run:
    """One run of the program, and what its log has told with the times of the system's clock."""

    _count = 0

    def __init__(self, desktop, binary):
        Run._count += 1
        path = desktop.directory / f"board-{Run._count}.sqlite"
        self._log = desktop.directory / f"measured-{Run._count}.log"
        settings.write(path, goals=_GOALS)
        self._read = 0
        self._partial = ""
        self.lines = []
        self.began = time.monotonic()
        self.process = desktop.start(binary, "--settings", path, log=self._log)
        self._desktop = desktop

    def __enter__(self):
        return self

    def __exit__(self, *_exception):
        self.process.terminate()
        wait_until("Kelpa ends", lambda: self.process.poll() is not None)

    def wait_for(self, what, after, matches, seconds=60):
        """The first line after the time `after` for which `matches` gives something: its time and that."""
        place = 0

        def look():
            nonlocal place
            if self.process.poll() is not None:
                raise AssertionError(f"Kelpa ended with {self.process.returncode}")
            self._update()
            while place < len(self.lines):
                at, text = self.lines[place]
                place += 1
                found = at >= after and matches(text)
                if found:
                    return at, found
            return None

        return wait_until(what, look, seconds, 0.005)

    def wait_for_list(self, count, after=0.0):
        """When a pass had listed so many windows, and how long the pass took, in milliseconds."""
        def listed(text):
            found = _LISTED.search(text)
            return found if found and int(found[1]) == count else None

        at, found = self.wait_for(f"{count} windows are listed", after, listed)
        return at, float(found[2])

    def wait_for_frame(self, after):
        """When the first frame that was not begun before then has been drawn."""
        return self.wait_for("a frame is drawn", after,
                             lambda text: "rame rendered" in text or "first frame shown" in text)[0]

    def captures(self, size):
        """The durations of the captures of windows of that size, in milliseconds."""
        self._update()
        found = (_CAPTURED.search(text) for _, text in self.lines)
        return [float(each[3]) for each in found if each and (int(each[1]), int(each[2])) == size]

    def bring_forward(self):
        # labwc knows no processes.
        own = wait_until("Kelpa's window is listed", lambda: next(
            (each for each in self._desktop.windows()
             if each.pid == self.process.pid or (not each.pid and each.title == "Kelpa")), None))
        self._desktop.activate(own)

    def _update(self):
        with self._log.open(encoding="utf-8", errors="replace") as log:
            log.seek(self._read)
            text = log.read()
            self._read = log.tell()
        *lines, self._partial = (self._partial + text).split("\n")
        self.lines += [(float(found[1]), found[2]) for found in map(_LINE.match, lines) if found]


def _windows_of(desktop):
    """What opens windows on the desktop, given their size."""
    if desktop.env["XDG_SESSION_TYPE"] == "x11":
        return lambda *size: XWindows(desktop, *size)
    from plain_windows import PlainWindows

    return PlainWindows


def _prepare(desktop):
    # As without a screen reader.
    for name in ("QT_ACCESSIBILITY", "QT_LINUX_ACCESSIBILITY_ALWAYS_ON"):
        desktop.env.pop(name, None)
    desktop.env |= {
        "QT_LOGGING_RULES": _RULES,
        "QT_MESSAGE_PATTERN": "%{time boot} %{message}",
        # To the log, not to the system's journal.
        "QT_FORCE_STDERR_LOGGING": "1",
        "QT_QUICK_BACKEND": "software",
    }
    if getattr(desktop, "name", "") == "sway":
        # Small windows above Kelpa's, which sway would not draw behind them.
        for rule in ("floating enable", "move position 0 0"):
            desktop.command(f'for_window [app_id="plain"] {rule}')
        desktop.command('no_focus [app_id="plain"]')


def _start(desktop, binary, count):
    """A start with so many windows: milliseconds to the first frame, to the first one with all of them, and
    processor milliseconds by then."""
    with Run(desktop, binary) as run:
        first, _ = run.wait_for("the first frame is shown", 0.0, lambda text: "first frame shown" in text)
        listed, _ = run.wait_for_list(count)
        complete = first if listed <= first else run.wait_for_frame(listed)
        processor = usage.since({}, usage.processor_times(run.process.pid))
    return 1000 * (first - run.began), 1000 * (complete - run.began), 1000 * processor


def _passes(run, windows, window, count, times):
    """The median of the passes after a window was renamed, in milliseconds."""
    found = []
    for index in range(times):
        time.sleep(_PAUSE)
        renamed = time.monotonic()
        windows.rename(window, b"Renamed %d" % index)
        windows.settle()
        found.append(run.wait_for_list(count, renamed)[1])
    return statistics.median(found)


def _openings(run, windows, count, times):
    """The medians from a window's opening until it is listed and until that is drawn, in milliseconds."""
    listed, drawn = [], []
    for index in range(times):
        time.sleep(_PAUSE)
        opened = time.monotonic()
        window = windows.open(b"New %d" % index)
        at, _ = run.wait_for_list(count + 1, opened)
        listed.append(1000 * (at - opened))
        drawn.append(1000 * (run.wait_for_frame(at) - opened))
        time.sleep(_PAUSE)
        closed = time.monotonic()
        windows.close(window)
        windows.settle()
        run.wait_for_list(count, closed)
    return statistics.median(listed), statistics.median(drawn)


def _idle(run, count, seconds):
    """Percent of a core and wake-ups a second while nothing happens."""
    time.sleep(min(count * _PREVIEW_INTERVAL, 2 * seconds) + min(5, seconds))
    pid = run.process.pid
    began, processor, woken = time.monotonic(), usage.processor_times(pid), usage.wake_ups(pid)
    time.sleep(seconds)
    passed = time.monotonic() - began
    return (100 * usage.since(processor, usage.processor_times(pid)) / passed,
            usage.since(woken, usage.wake_ups(pid)) / passed)


def _previews(desktop, binary, windows_of, seconds):
    """The median of the pictures of a large window that changes, in milliseconds; None without pictures."""
    windows = windows_of(*_PREVIEW)
    window = windows.open(b"Large")
    with Run(desktop, binary) as run:
        run.wait_for_list(1)
        run.bring_forward()
        end = time.monotonic() + seconds
        colour = 0
        while time.monotonic() < end:
            colour = (colour + 0x112233) & 0xFFFFFF
            windows.paint(window, colour)
            windows.settle()
            time.sleep(0.3)
        found = run.captures(_PREVIEW)
    windows.close(window)
    windows.settle()
    windows.end()
    return statistics.median(found) if found else None


def measure(desktop, binary):
    plan = json.loads(os.environ["KELPA_BENCH_PLAN"])
    _prepare(desktop)
    windows_of = _windows_of(desktop)
    figures = {"picture of 1920x1080, ms": _previews(desktop, binary, windows_of, plan["preview_seconds"])}
    windows = windows_of()
    opened = []
    for count in plan["counts"]:
        opened += [windows.open(b"Window %d" % index) for index in range(len(opened), count)]
        windows.settle()
        wait_until("the desktop has all windows", lambda count=count: len(desktop.windows()) >= count)
        starts = [_start(desktop, binary, count) for _ in range(plan["starts"])]
        for place, what in enumerate(("to the first frame", "to all cards", "to all cards, on the processor")):
            figures[f"start {what}, {count} windows, ms"] = statistics.median(each[place] for each in starts)
        with Run(desktop, binary) as run:
            run.wait_for_list(count)
            run.bring_forward()
            time.sleep(2)
            figures[f"pass over {count} windows, ms"] = _passes(run, windows, opened[0], count, plan["passes"])
            if count == plan["usual"]:
                listed, drawn = _openings(run, windows, count, plan["openings"])
                figures["a window opens, until it is listed, ms"] = listed
                figures["a window opens, until its card is drawn, ms"] = drawn
                processor, woken = _idle(run, count, plan["idle_seconds"])
                figures[f"idle with {count} windows, % of a core"] = processor
                figures[f"idle with {count} windows, wake-ups a second"] = woken
                figures[f"memory of its own with {count} windows, MiB"] = usage.resident(run.process.pid)
    windows.end()
    print(FIGURES + json.dumps(figures), flush=True)


def measure_on_x11(desktop, binary):
    measure(desktop, binary)


# As large as the screens of the others.
measure_on_x11.desktop = {"size": "1600x1000x24"}
