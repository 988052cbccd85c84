"""idle.py BINARY [SECONDS]: what a board costs that nobody touches, on a desktop where nothing happens.
Processor time and wake-ups with 50 windows once every window has its preview, the same once the board is
closed, and what the previews of 50 and of 200 windows take in memory above the same board before it had
them; and what a selected goal costs whose title is so long that it moves, in front and wholly behind
another window."""

import pathlib
import sys
import tempfile
import time

root = pathlib.Path(__file__).resolve().parents[3]
sys.path.insert(0, str(root / "tests" / "desktop" / "support"))
sys.path.insert(0, str(root / "bench" / "live"))
sys.dont_write_bytecode = True

import processes  # noqa: E402
import settings  # noqa: E402
import usage  # noqa: E402
from harness import Desktop  # noqa: E402
from processes import wait_until  # noqa: E402

_WIDTH, _HEIGHT = 800, 600
# One preview is taken every 0.6 s.
_PREVIEW_INTERVAL = 0.6
_NUMBER = "_KELPA_WINDOW_NUMBER"


def _open_windows(desktop, count):
    """Windows with stripes, each in a colour of its own: a plain one would pass for not drawn yet."""
    from Xlib import X

    root = desktop.x.screen().root
    windows = []
    for index in range(count):
        color = (index * 2654435761) & 0xFFFFFF
        stripes = root.create_pixmap(128, 128, desktop.x.screen().root_depth)
        context = stripes.create_gc(foreground=color)
        stripes.fill_rectangle(context, 0, 0, 128, 128)
        context.change(foreground=color ^ 0xFFFFFF)
        stripes.fill_rectangle(context, 0, 0, 128, 64)
        window = root.create_window(
            index * 7 % 400, index * 11 % 300, _WIDTH, _HEIGHT, 0, X.CopyFromParent,
            background_pixmap=stripes)
        context.free()
        stripes.free()
        window.set_wm_name(f"Window {index}")
        window.set_wm_class("bench", "Bench")
        window.map()
        windows.append(window)
    desktop.x.sync()
    wait_until("the window manager lists all windows", lambda: len(desktop.windows()) >= count)
    return windows


def _start(desktop, binary, windows, goals=()):
    """Kelpa with all windows listed."""
    path = desktop.directory / f"board-{len(windows)}.sqlite"
    settings.write(path, goals=goals)
    kelpa = desktop.start(binary, "--settings", path)
    wait_until("every window is listed", lambda: all(
        desktop.property(window, _NUMBER) is not None for window in windows), 60)
    wait_until("Kelpa's window is shown", lambda: any(
        window.pid == kelpa.pid for window in desktop.windows()), 60)
    return kelpa


def _thread_name(pid, thread):
    return pathlib.Path(f"/proc/{pid}/task/{thread}/comm").read_text(encoding="utf-8").strip()


def _end(kelpa):
    kelpa.terminate()
    wait_until("Kelpa ends", lambda: kelpa.poll() is not None)


def _measure_closed(desktop, kelpa, seconds):
    """The board closed, while Kelpa goes on listening."""
    desktop.close(next(window for window in desktop.windows() if window.pid == kelpa.pid))
    wait_until("the board is closed", lambda: all(window.pid != kelpa.pid for window in desktop.windows()))
    # What a window leaves to be done when it goes.
    time.sleep(5)
    print(f"closed: {usage.resident(kelpa.pid):.1f} MiB", flush=True)
    _observe(kelpa, "closed", seconds)


def _observe(kelpa, what, seconds):
    began, processor, counts = time.monotonic(), usage.processor_seconds(kelpa.pid), usage.wake_ups(kelpa.pid)
    time.sleep(seconds)
    passed = time.monotonic() - began
    used = usage.processor_seconds(kelpa.pid) - processor
    woken = {thread: now - counts.get(thread, 0) for thread, now in usage.wake_ups(kelpa.pid).items()}
    print(f"{what} for {passed:.0f} s: {100 * used / passed:.2f} % of a core, "
          f"{sum(woken.values()) / passed:.1f} wake-ups a second", flush=True)
    for thread, times in sorted(woken.items(), key=lambda each: -each[1]):
        if times:
            print(f"  {_thread_name(kelpa.pid, thread):16} {times / passed:6.2f} a second")


def _changes(desktop):
    """Whether the screen shows something else half a second later."""
    pictures = []
    for name in ("before.ppm", "after.ppm"):
        pictures.append(desktop.screenshot(desktop.directory / name).read_bytes())
        time.sleep(0.5)
    return pictures[0] != pictures[1]


def _measure_moving_title(desktop, binary, seconds):
    windows = _open_windows(desktop, 1)
    title = "A goal whose title is a good deal longer than the place that its card has for it"
    kelpa = _start(desktop, binary, windows, goals=[(title, [])])
    number = next(window.number for window in desktop.windows() if window.pid == kelpa.pid)
    desktop.run("wmctrl", "-i", "-a", hex(number))
    wait_until("Kelpa has the keyboard", lambda: desktop.active_window() == number)
    # The preview and what a start has left to do. The window manager also names a window active
    # before keys reach it.
    time.sleep(5)
    # Past the list of all todos and the unsorted column.
    for _ in range(3):
        desktop.key("Right")
    # The card that grows.
    time.sleep(2)
    wait_until("the title moves", lambda: _changes(desktop))
    _observe(kelpa, "a title that moves in front", seconds)
    desktop.run("wmctrl", "-i", "-r", hex(windows[0].id), "-b", "add,maximized_vert,maximized_horz")
    desktop.run("wmctrl", "-i", "-a", hex(windows[0].id))
    wait_until("Kelpa is behind", lambda: desktop.active_window() == windows[0].id)
    time.sleep(5)
    _observe(kelpa, "the same, wholly behind another window", seconds)
    _end(kelpa)
    windows[0].destroy()
    desktop.x.sync()


def _measure(desktop, binary, count, seconds):
    windows = _open_windows(desktop, count)
    kelpa = _start(desktop, binary, windows)
    before = usage.resident(kelpa.pid)
    time.sleep(count * _PREVIEW_INTERVAL + 5)
    after = usage.resident(kelpa.pid)
    print(f"{count} windows: {before:.1f} MiB before previews, {after:.1f} MiB with them, "
          f"{(after - before) * 1024 / count:.0f} KiB a preview of {_WIDTH} x {_HEIGHT}", flush=True)
    if seconds:
        _observe(kelpa, f"{count} windows, idle", seconds)
        _measure_closed(desktop, kelpa, seconds)
    _end(kelpa)
    for window in windows:
        window.destroy()
    desktop.x.sync()


def main():
    binary = pathlib.Path(sys.argv[1]).resolve()
    seconds = float(sys.argv[2]) if len(sys.argv) > 2 else 60
    processes.exit_on_signals()
    with tempfile.TemporaryDirectory(prefix="kelpa-idle-") as directory, \
            Desktop(pathlib.Path(directory) / "desktop") as desktop:
        _measure_moving_title(desktop, binary, seconds)
        _measure(desktop, binary, 50, seconds)
        _measure(desktop, binary, 200, 0)


if __name__ == "__main__":
    sys.exit(main())
