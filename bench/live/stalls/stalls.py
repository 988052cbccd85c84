"""stalls.py PROGRAM [--seconds S] [--rounds N]: how long the board leaves a ping unanswered at most while somebody
types todos into it and what is around it does not reply: stopped programs, a stopped window manager,
accessibility bus, session bus, and a disk on which each sync takes two seconds longer. Previews and
accessibility are on. Each is measured so many times; prints the longest answer of each round without the
time for which other programs had the processor, the processor time of the main thread until it answered, and
how many todos came to the file. A ping that is not answered while the fault lasts counts with its age. Fails
where a todo that was typed did not come to the file."""

import argparse
import contextlib
import pathlib
import sys
import tempfile
import time

root = pathlib.Path(__file__).resolve().parents[3]
sys.path[:0] = [str(root / "tests" / "desktop" / "support"), str(root / "bench" / "live")]
sys.dont_write_bytecode = True

import processes  # noqa: E402
import settings  # noqa: E402
from disks import Disk  # noqa: E402
from harness import Desktop  # noqa: E402
from pings import Pings  # noqa: E402
from processes import wait_until  # noqa: E402

_GOALS = [(f"Goal {index}", [f"Todo {todo}" for todo in range(5)]) for index in range(20)]
_FIRST = "Goal 0"
_KEY_INTERVAL = 0.05
_LETTERS_OF_TODO = 6
_PLAIN_WINDOWS = 6
_PATIENCE = 60


def _accessibility():
    return [wait_until("the accessibility bus runs", lambda: processes.find("dbus-daemon", "accessibility.conf")),
            wait_until("its service runs", lambda: processes.find("at-spi-bus-launcher"))]


@contextlib.contextmanager
def _slow(disk):
    disk.slow_down()
    try:
        yield
    finally:
        disk.speed_up()


def _type(desktop, pings, seconds):
    """Types todos for so long, a key every 50 ms."""
    from Xlib import X, XK
    from Xlib.ext import xtest

    letter = desktop.x.keysym_to_keycode(XK.string_to_keysym("a"))
    enter = desktop.x.keysym_to_keycode(XK.string_to_keysym("Return"))
    end = time.monotonic() + seconds
    key = ping = time.monotonic()
    count = 0
    # To the end of a todo, so that none is left in the field.
    while (now := time.monotonic()) < end or count % (_LETTERS_OF_TODO + 1):
        if now >= key:
            key = max(key + _KEY_INTERVAL, now)
            count += 1
            code = letter if count % (_LETTERS_OF_TODO + 1) else enter
            xtest.fake_input(desktop.x, X.KeyPress, code)
            xtest.fake_input(desktop.x, X.KeyRelease, code)
            desktop.x.flush()
        if now >= ping:
            ping = now + 0.004
            pings.step(now)
        pings.read()
        time.sleep(0.0005)
    return count // (_LETTERS_OF_TODO + 1)


def _open_windows(desktop):
    from Xlib import X

    for index in range(_PLAIN_WINDOWS):
        window = desktop.x.screen().root.create_window(
            index * 7, index * 11, 400, 300, 0, X.CopyFromParent, background_pixel=0x3366CC)
        window.set_wm_name(f"Plain {index}")
        window.set_wm_class("plain", "Plain")
        window.map()
    desktop.x.sync()
    return [desktop.start_xterm(title) for title in ("First", "Second")]


def _stored(path):
    return len(settings.StoredBoard(settings.read_live(path)).todos(_FIRST))


def _round(desktop, program, number, seconds, terminals):
    """Longest answer, most work, and how many todos were typed and stored, by what does not reply."""
    import Xlib.display

    path = desktop.directory / f"board-{number}.sqlite"
    settings.write(path, goals=_GOALS, is_auto_sorting=False)
    disk = Disk(desktop, program)
    desktop.env |= disk.env
    kelpa = desktop.start(program, "--settings", path)
    own = wait_until("Kelpa's window is shown", lambda: next(
        (each for each in desktop.windows() if each.pid == kelpa.pid), None), _PATIENCE)
    desktop.run("wmctrl", "-i", "-a", hex(own.number))
    wait_until("Kelpa has the keyboard", lambda: desktop.active_window() == own.number)
    # The first pictures, and what a start has left to do.
    time.sleep(5)
    # Past the list of all todos and the unsorted column.
    desktop.key("Right", "Right", "Right", "Return")
    display = Xlib.display.Display(desktop.env["DISPLAY"])
    pings = Pings(display, own.number, kelpa.pid, [desktop.x_server.pid])
    manager = wait_until("there is a window manager", lambda: processes.find("openbox"))
    faults = {
        "nothing fails": contextlib.nullcontext,
        "two programs are stopped": lambda: processes.stopped(*(each.pid for each in terminals)),
        "the window manager is stopped": lambda: processes.stopped(manager),
        "the accessibility bus is stopped": lambda: processes.stopped(*_accessibility()),
        "the session bus is stopped": lambda: processes.stopped(desktop.session_bus.pid),
    }
    if pathlib.Path(disk.env["LD_PRELOAD"]).exists():
        faults["each sync takes two seconds longer"] = lambda: _slow(disk)
    results = {}
    for name, fault in faults.items():
        before = _stored(path)
        with fault():
            pings.restart()
            typed = _type(desktop, pings, seconds)
            pings.settle(_PATIENCE / 2)
            longest, work = 1000 * max(pings.gaps), 1000 * max(pings.work)
        with contextlib.suppress(AssertionError):
            wait_until("all todos are stored", lambda: _stored(path) - before >= typed, 20, 0.5)
        stored = _stored(path) - before
        if stored != typed:
            raise SystemExit(f"{name}: of {typed} todos that were typed {stored} came to the file")
        results[name] = longest, work, typed, stored
    display.close()
    kelpa.terminate()
    wait_until("Kelpa ends", lambda: kelpa.poll() is not None, _PATIENCE)
    return results


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("program", type=lambda text: pathlib.Path(text).resolve())
    parser.add_argument("--seconds", type=float, default=15)
    parser.add_argument("--rounds", type=int, default=3)
    arguments = parser.parse_args()
    processes.exit_on_signals()
    with tempfile.TemporaryDirectory(prefix="kelpa-stalls-") as directory, \
            Desktop(pathlib.Path(directory) / "desktop") as desktop:
        terminals = _open_windows(desktop)
        rounds = [_round(desktop, arguments.program, number, arguments.seconds, terminals)
                  for number in range(arguments.rounds)]
    print(f"{'longest, ms of each round':34}  {'main thread, ms':>22}  typed  stored")
    for name in rounds[0]:
        gaps, work, typed, stored = zip(*(each[name] for each in rounds))
        print(f"{name:34}  " + " ".join(f"{gap:6.1f}" for gap in gaps) + "  "
              + " ".join(f"{each:6.1f}" for each in work) + f"  {sum(typed):5}  {sum(stored):6}", flush=True)


if __name__ == "__main__":
    sys.exit(main())
