"""churn.py PROGRAM [PROGRAM...] [--rounds N] [--seconds S] [--life MS]: what windows cost that open and close
thirty times a second, on a board at rest and on one that is scrolled with the wheel. The programs take
turns on one desktop, so that whatever else the machine does meets all of them. Prints the median of the
rounds: processor time with windows that come and go, with scrolling, and with both; what one window costs
the program, its main thread and the X server on a board at rest, how often the program's threads wake up
for it, and its discovery passes and round trips where the program's log tells them; and how long the main
thread left a ping unanswered at most, at rest and scrolling, and how much processor time it used before
it answered one, which a busy machine does not lengthen."""

import argparse
import collections
import os
import pathlib
import re
import statistics
import sys
import tempfile
import time

root = pathlib.Path(__file__).resolve().parents[3]
sys.path.insert(0, str(root / "tests" / "desktop" / "support"))
sys.path.insert(0, str(root / "bench" / "live"))
sys.dont_write_bytecode = True

import processes  # noqa: E402
import settings  # noqa: E402
from harness import Desktop  # noqa: E402
from pings import Pings, main_thread  # noqa: E402
from processes import wait_until  # noqa: E402

_PER_SECOND = 30
_STANDING = 6
_GOALS = [(f"Goal {index}", [f"Todo {todo}" for todo in range(5)]) for index in range(20)]
_WHEEL_INTERVAL = 1 / 60
# Turns of the wheel in one direction: from the top of the board to somewhere near its end.
_TURNS = 25
_PASS = re.compile(r"pass read \d+ windows in [\d.]+ ms, (\d+) round trips")


class Churn:
    """Windows of this process that open and, some time later, close."""

    def __init__(self, display, life):
        from Xlib import X

        self._display = display
        self._life = life
        self._open = collections.deque()
        self._inherited = X.CopyFromParent
        screen = display.screen()
        # A plain window would pass for one that is not drawn yet.
        self._stripes = screen.root.create_pixmap(128, 128, screen.root_depth)
        context = self._stripes.create_gc(foreground=0x3366CC)
        self._stripes.fill_rectangle(context, 0, 0, 128, 128)
        context.change(foreground=0xCC9933)
        self._stripes.fill_rectangle(context, 0, 0, 128, 64)
        context.free()
        self.count = 0

    def open(self, title):
        window = self._display.screen().root.create_window(
            self.count * 7 % 200, self.count * 11 % 200, 400, 300, 0, self._inherited,
            background_pixmap=self._stripes)
        window.set_wm_name(title)
        window.set_wm_class("churn", "Churn")
        window.map()
        self.count += 1
        return window

    def step(self, now):
        self._open.append((now + self._life, self.open(f"new {self.count}")))
        while self._open and self._open[0][0] <= now:
            self._open.popleft()[1].destroy()

    def close(self):
        while self._open:
            self._open.popleft()[1].destroy()
        self._display.sync()


def _used(pid):
    fields = pathlib.Path(f"/proc/{pid}/stat").read_text(encoding="utf-8").rpartition(")")[2].split()
    return (int(fields[11]) + int(fields[12])) / os.sysconf("SC_CLK_TCK")


def _wake_ups(pid):
    return sum(
        int(line.split()[1])
        for task in pathlib.Path(f"/proc/{pid}/task").iterdir()
        for line in (task / "status").read_text(encoding="utf-8").splitlines()
        if line.startswith("voluntary_ctxt_switches:"))


class Usage:
    """What the program and the X server have used by now."""

    def __init__(self, desktop, kelpa, log):
        self.time = time.monotonic()
        self.program = _used(kelpa.pid)
        self.main, _ = main_thread(kelpa.pid)
        self.server = _used(desktop.x_server.pid)
        self.wake_ups = _wake_ups(kelpa.pid)
        trips = [int(trip) for trip in _PASS.findall(log.read_text(encoding="utf-8"))]
        self.passes, self.round_trips = len(trips), sum(trips)

    def since(self, before):
        """The differences by name."""
        return {name: value - getattr(before, name) for name, value in vars(self).items()}


def _drive(desktop, pings, churn, scrolls, seconds):
    """Lets windows come and go, scrolls, or both, for so long."""
    from Xlib import X
    from Xlib.ext import xtest

    end = time.monotonic() + seconds
    turns = 0
    wheel = window = ping = time.monotonic()
    while (now := time.monotonic()) < end:
        if scrolls and now >= wheel:
            wheel += _WHEEL_INTERVAL
            turns += 1
            button = 5 if turns // _TURNS % 2 == 0 else 4
            xtest.fake_input(desktop.x, X.ButtonPress, button)
            xtest.fake_input(desktop.x, X.ButtonRelease, button)
            desktop.x.flush()
        if churn and now >= window:
            window += 1 / _PER_SECOND
            churn.step(now)
            desktop.x.flush()
        if now >= ping:
            ping = now + 0.004
            pings.step(now)
        pings.read()
        time.sleep(0.0005)
    if churn:
        churn.close()


def _round(desktop, program, number, arguments):
    """The figures of one run of the program by name."""
    import Xlib.display

    path = desktop.directory / f"board-{number}.sqlite"
    log = desktop.directory / f"program-{number}.log"
    settings.write(path, goals=_GOALS)
    kelpa = desktop.start(program, "--settings", path, log=log)
    own = wait_until("Kelpa's window is shown", lambda: next(
        (each for each in desktop.windows() if each.pid == kelpa.pid), None), 60)
    desktop.run("wmctrl", "-i", "-r", hex(own.number), "-e", "0,300,100,1200,850")
    desktop.run("wmctrl", "-i", "-a", hex(own.number))
    desktop.hover(900, 500)
    # The first pictures, and what a start has left to do.
    time.sleep(4)
    display = Xlib.display.Display(desktop.env["DISPLAY"])
    pings = Pings(display, own.number, kelpa.pid)
    churn = Churn(desktop.x, arguments.life / 1000)
    used, gaps, work = {}, {}, {}
    # At rest first: the board still shows its beginning, where the windows are.
    for name, windows, scrolls in (("rest", churn, False), ("scroll", None, True), ("both", churn, True)):
        pings.restart()
        before = Usage(desktop, kelpa, log)
        _drive(desktop, pings, windows, scrolls, arguments.seconds)
        used[name] = Usage(desktop, kelpa, log).since(before)
        gaps[name] = 1000 * max(pings.times)
        work[name] = 1000 * max(pings.work)
        if name == "rest":
            count = churn.count
        time.sleep(1)
    display.close()
    kelpa.terminate()
    wait_until("Kelpa ends", lambda: kelpa.poll() is not None)
    figures = {f"{name} %": 100 * each["program"] / each["time"] for name, each in used.items()}
    for name, key in (("window ms", "program"), ("main ms", "main"), ("server ms", "server")):
        figures[name] = 1000 * used["rest"][key] / count
    for name, key in (("wake-ups", "wake_ups"), ("passes", "passes"), ("trips", "round_trips")):
        figures[name] = used["rest"][key] / count
    figures["gap rest"], figures["gap both"] = gaps["rest"], gaps["both"]
    figures["work rest"], figures["work both"] = work["rest"], work["both"]
    return figures


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("programs", nargs="+", type=lambda text: pathlib.Path(text).resolve())
    parser.add_argument("--rounds", type=int, default=3)
    parser.add_argument("--seconds", type=float, default=10)
    parser.add_argument("--life", type=float, default=300, help="of a window, in milliseconds")
    arguments = parser.parse_args()
    processes.exit_on_signals()
    rows = {program: [] for program in arguments.programs}
    with tempfile.TemporaryDirectory(prefix="kelpa-churn-") as directory, \
            Desktop(pathlib.Path(directory) / "desktop") as desktop:
        desktop.env["QT_LOGGING_RULES"] = "kelpa.x11.discovery.debug=true"
        # To the log, not to the system's journal.
        desktop.env["QT_FORCE_STDERR_LOGGING"] = "1"
        standing = Churn(desktop.x, 0)
        for index in range(_STANDING):
            standing.open(f"Standing {index}")
        desktop.x.sync()
        wait_until("the windows are listed", lambda: len(desktop.windows()) >= _STANDING)
        for number in range(arguments.rounds):
            for index, program in enumerate(rows):
                rows[program].append(_round(desktop, program, f"{number}-{index}", arguments))
    names = list(next(iter(rows.values()))[0])
    print("  ".join(f"{name:>9}" for name in names) + "  program")
    for program, rounds in rows.items():
        print("  ".join(f"{statistics.median(each[name] for each in rounds):9.2f}" for name in names)
              + f"  {program}", flush=True)


if __name__ == "__main__":
    sys.exit(main())
