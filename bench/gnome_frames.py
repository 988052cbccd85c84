"""gnome_frames.py FOLDER [KELPA]: how GNOME Shell draws while 200 windows are open, or KELPA_BENCH_WINDOWS, one
of which changes a hundred times a second: alone, and with somebody who looks on. That is the program KELPA,
with its board behind the window that changes, after a window of the board's size that draws as often, without
and with an alpha channel. Without KELPA it is a caller of the extension that lists at every change, and one
that wants pictures of all windows without a pause besides. Prints for each the time from one frame to the
next, in milliseconds, the part of a processor that the Shell takes, that which KELPA takes, and what the
Shell does for who looks on; run it while nothing else runs."""

import importlib
import os
import pathlib
import sys
import time

_ROOT = pathlib.Path(__file__).resolve().parent.parent
sys.path.insert(0, str(_ROOT / "tests" / "gnome"))
sys.dont_write_bytecode = True

import run_scenario  # noqa: E402

_WINDOWS = int(os.environ.get("KELPA_BENCH_WINDOWS", "200"))
_SECONDS = 10

_START = """
globalThis.kelpaFrames = [];
globalThis.kelpaFrameSignal = global.stage.connect('after-paint',
    () => globalThis.kelpaFrames.push(imports.gi.GLib.get_monotonic_time()));
true
"""
_STOP = "global.stage.disconnect(globalThis.kelpaFrameSignal); globalThis.kelpaFrames"


def _used(process):
    """Seconds of the processor, of all threads of the process."""
    fields = pathlib.Path(f"/proc/{process}/stat").read_text(encoding="utf-8").rpartition(")")[2].split()
    return (int(fields[11]) + int(fields[12])) / os.sysconf("SC_CLK_TCK")


def _measure(what, desktop, meanwhile, kelpa=None):
    shell = desktop.evaluate("new imports.gi.Gio.Credentials().get_unix_pid()")
    work = shell_work().done(desktop)
    desktop.evaluate(_START)
    processes = [shell] if kelpa is None else [shell, kelpa]
    before, began = [_used(process) for process in processes], time.monotonic()
    while time.monotonic() < began + _SECONDS:
        meanwhile()
    used = [_used(process) - sooner for process, sooner in zip(processes, before)]
    seconds = time.monotonic() - began
    times = desktop.evaluate(_STOP)
    parts = " and ".join(f"{each / seconds:.0%}" for each in used)
    intervals = sorted((later - sooner) / 1000 for sooner, later in zip(times, times[1:]))
    pictures, size, lists, *_ = (now - before for now, before in zip(shell_work().done(desktop), work))

    def at(part):
        return intervals[min(len(intervals) - 1, int(len(intervals) * part))]

    print(f"{what}: {len(intervals) / seconds:.0f} frames a second, median {at(0.5):.1f}, 95 % {at(0.95):.1f}, "
          f"99 % {at(0.99):.1f}, longest {intervals[-1]:.1f}; {parts} of a processor; "
          f"{pictures / seconds:.1f} pictures of {size / seconds / 1000:.1f} kB together and "
          f"{lists / seconds:.1f} lists a second", flush=True)


def shell_work():
    """Found once the runner has said where it lies."""
    return importlib.import_module("shell_work")


def _open_windows(desktop):
    from plain_windows import PlainWindows

    shell_work().count(desktop)
    plain = PlainWindows()
    for number in range(_WINDOWS - 1):
        plain.open(b"Window %d" % number)
    shell_work().start_drawing(desktop)
    # The Shell is still busy with so many new windows.
    time.sleep(20)
    return plain


def _rest():
    time.sleep(0.1)


def measure(desktop, program):
    plain = _open_windows(desktop)
    _measure("alone", desktop, _rest)
    if pathlib.Path(program).name == "kelpa":
        _measure_kelpa(desktop, program)
    else:
        _measure_caller(desktop)
    plain.end()


def _measure_window(what, desktop, has_alpha):
    """A window as large as the board that draws four times a second, as the board does, and nobody who looks on."""
    from plain_windows import PlainWindows

    plain = PlainWindows(1600, 968, has_alpha)
    window = plain.open(b"As large as the board")
    desktop.wait_for_window("As large as the board")
    desktop.activate(desktop.wait_for_window("Drawing"))
    # Until the Shell is at rest again.
    time.sleep(5)

    def draw():
        plain.paint(window, 0xFFEAECEF)
        time.sleep(0.25)

    _measure(what, desktop, draw)
    plain.close(window)
    plain.settle()
    plain.end()


def _measure_kelpa(desktop, program):
    import settings
    from kelpa import Kelpa

    _measure_window("with an opaque window behind it", desktop, has_alpha=False)
    _measure_window("with a window with an alpha channel behind it", desktop, has_alpha=True)
    path = desktop.directory / "board.sqlite"
    settings.write(path, is_unsorted_unfolded=True)
    with Kelpa(desktop, program, path) as kelpa:
        kelpa.focus()
        # Before the board, which would hide what it draws.
        desktop.activate(desktop.wait_for_window("Drawing"))
        # The first pictures of all that shows.
        time.sleep(15)
        _measure("with Kelpa", desktop, _rest, kelpa.window.pid)


def _measure_caller(desktop):
    from caller import Caller, Refused

    caller = Caller(desktop.bus)
    rows, taken = caller.list(), 0

    def follow():
        nonlocal rows
        caller.spin(0.02)
        if caller.signals:
            caller.signals.clear()
            rows = caller.list()

    def look():
        nonlocal taken
        follow()
        try:
            caller.picture(rows[taken % len(rows)]["id"], 256, 144, 0)
            taken += 1
        except Refused:
            pass

    _measure("with a caller that lists alone", desktop, follow)
    _measure("with a caller that never pauses", desktop, look)


if __name__ == "__main__":
    sys.modules["measure"] = sys.modules["__main__"]
    # The runner starts this file anew, as another person and by another Python, with all its arguments.
    if len(sys.argv) < 4:
        program = str(pathlib.Path(sys.argv[2]).resolve()) if len(sys.argv) == 3 else "self"
        sys.argv[1:] = [program, str(pathlib.Path(sys.argv[1]).resolve()), "measure", "measure"]
    sys.exit(run_scenario.main())
