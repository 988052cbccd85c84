"""gnome_frames.py DIRECTORY: how long GNOME Shell takes from one frame to the next while 200 windows are open,
one of which draws all the time, alone and with a caller of the extension that lists at every change and wants
pictures of all windows without a pause. Prints milliseconds for each; run it while nothing else runs."""

import pathlib
import sys
import threading
import time

_ROOT = pathlib.Path(__file__).resolve().parent.parent
sys.path.insert(0, str(_ROOT / "tests" / "gnome"))
sys.dont_write_bytecode = True

import run_scenario  # noqa: E402

_WINDOWS = 200
_SECONDS = 10

_START = """
globalThis.kelpaFrames = [];
globalThis.kelpaFrameSignal = global.stage.connect('after-paint',
    () => globalThis.kelpaFrames.push(imports.gi.GLib.get_monotonic_time()));
true
"""
_STOP = "global.stage.disconnect(globalThis.kelpaFrameSignal); globalThis.kelpaFrames"


def _drawing(plain, window, ends):
    colour = 0
    while not ends.is_set():
        colour = (colour + 0x010203) & 0xFFFFFF
        plain.paint(window, colour)
        plain.rename(window, b"%d" % colour)
        plain.settle()
        time.sleep(0.01)


def _intervals(desktop, meanwhile):
    desktop.evaluate(_START)
    end = time.monotonic() + _SECONDS
    while time.monotonic() < end:
        meanwhile()
    times = desktop.evaluate(_STOP)
    return sorted((later - sooner) / 1000 for sooner, later in zip(times, times[1:]))


def _print(what, intervals):
    def at(part):
        return intervals[min(len(intervals) - 1, int(len(intervals) * part))]

    print(f"{what}: {len(intervals)} frames in {_SECONDS} s, median {at(0.5):.1f}, 95 % {at(0.95):.1f}, "
          f"99 % {at(0.99):.1f}, longest {intervals[-1]:.1f}", flush=True)


def measure(desktop, _program):
    from caller import Caller, Refused
    from plain_windows import PlainWindows

    plain, drawn = PlainWindows(), PlainWindows()
    for number in range(_WINDOWS - 1):
        plain.open(b"Window %d" % number)
    window = drawn.open(b"Drawing")
    caller = Caller(desktop.bus)
    caller.row("Drawing")
    caller.detach()
    ends = threading.Event()
    thread = threading.Thread(target=_drawing, args=(drawn, window, ends))
    thread.start()
    time.sleep(3)
    _print("alone", _intervals(desktop, lambda: time.sleep(0.1)))
    caller.attach()
    rows, taken, listed = caller.list(), 0, 0

    def look():
        nonlocal rows, taken, listed
        caller.spin(0.02)
        if caller.signals:
            caller.signals.clear()
            rows = caller.list()
            listed += 1
        try:
            caller.picture(rows[taken % len(rows)]["id"], 256, 144, 0)
            taken += 1
        except Refused:
            pass

    _print("looked on", _intervals(desktop, look))
    print(f"  {listed} lists and {taken} pictures")
    ends.set()
    thread.join()


if __name__ == "__main__":
    sys.modules["measure"] = sys.modules["__main__"]
    # The runner starts this file anew, as another person and by another Python, with all its arguments.
    folder = sys.argv[1] if len(sys.argv) == 2 else sys.argv[2]
    sys.argv = [__file__, "self", str(pathlib.Path(folder).resolve()), "measure", "measure"]
    sys.exit(run_scenario.main())
