"""Kelpa as an application among others: brought forward from them, started again, ended."""

import os
import pathlib
import signal
import socket
import subprocess
import sys

import board as boards
import settings
from front import BETWEEN, TAP, await_front, await_monitor, start_kelpa, tap_twice
from harness import on_desktop
from kelpa import Kelpa
from processes import wait_until
from typists import Typing

_XFWM4 = ("xfwm4", "--replace", "--compositor=off")


def _double_taps_bring_it_forward(desktop, binary):
    kelpa, _ = start_kelpa(desktop, binary)
    terminal = Typing(desktop, "Typist")
    await_monitor(desktop, kelpa, terminal)
    for sentence in ("first", "second", "third"):
        terminal.focus()
        desktop.type(sentence + "\n")
        tap_twice(desktop)
        await_front(desktop, kelpa)
    wait_until("the terminal got every key", lambda: terminal.lines()[-3:] == ["first", "second", "third"])
    # Out of sight altogether.
    desktop.run("xdotool", "windowminimize", kelpa.window.number)
    terminal.focus()
    tap_twice(desktop)
    await_front(desktop, kelpa)
    kelpa.quit()


def a_double_tap_of_super_brings_kelpa_forward_from_a_program_that_is_typed_into(desktop, binary):
    _double_taps_bring_it_forward(desktop, binary)


def under_xfwm4_a_double_tap_of_super_brings_kelpa_forward_too(desktop, binary):
    _replace_window_manager(desktop, *_XFWM4)
    _double_taps_bring_it_forward(desktop, binary)


def under_kwin_a_double_tap_and_a_second_start_bring_kelpa_forward_too(desktop, binary):
    config = pathlib.Path(desktop.env["XDG_CONFIG_HOME"]) / "kwinrc"
    config.write_text("[Compositing]\nEnabled=false\n", encoding="utf-8")
    _replace_window_manager(desktop, "kwin_x11", "--replace")
    _comes_forward_in_every_way(desktop, binary)


def under_mutter_a_double_tap_and_a_second_start_bring_kelpa_forward_too(desktop, binary):
    _replace_window_manager(desktop, "mutter", "--x11", "--replace", "--sm-disable")
    _comes_forward_in_every_way(desktop, binary)


def _comes_forward_in_every_way(desktop, binary):
    _double_taps_bring_it_forward(desktop, binary)
    kelpa, path = start_kelpa(desktop, binary)
    _second_starts_bring_it_forward(desktop, binary, kelpa, path)
    kelpa.quit()


def _replace_window_manager(desktop, *command):
    root = desktop.x.screen().root
    before = list(desktop.property(root, "_NET_SUPPORTING_WM_CHECK"))

    def is_there():
        now = desktop.property(root, "_NET_SUPPORTING_WM_CHECK")
        window = now is not None and list(now) != before and \
            desktop.x.create_resource_object("window", now[0])
        return window and desktop.property(window, "_NET_WM_NAME") is not None

    desktop.start(*command)
    wait_until(f"{command[0]} has taken over", is_there)


def _start_beside_panel(desktop, binary):
    """Kelpa with a panel above it, and the area that this leaves."""
    panel = os.path.join(os.path.dirname(__file__), "support", "panel.py")
    desktop.start(sys.executable, "-B", panel, "40")
    root = desktop.x.screen().root
    screen = desktop.x.screen()
    area = (0, 40, screen.width_in_pixels, screen.height_in_pixels - 40)
    wait_until("the panel has its room", lambda: tuple((desktop.property(root, "_NET_WORKAREA") or ())[:4]) == area)
    kelpa, _ = start_kelpa(desktop, binary)
    return kelpa, area


def _resize(desktop, kelpa, x, y, width, height):
    number = hex(kelpa.window.number)
    desktop.run("wmctrl", "-i", "-r", number, "-b", "remove,maximized_vert,maximized_horz")
    desktop.run("wmctrl", "-i", "-r", number, "-e", f"0,{x},{y},{width},{height}")

    def is_taken():
        # The window manager decides whether this means the frame or its contents.
        frame = _frame(desktop, kelpa)
        return abs(frame[0] - x) < 10 and abs(frame[2] - width) < 20

    wait_until("the window has its new size and place", is_taken)
    return _frame(desktop, kelpa)


def the_first_window_fills_what_the_panel_leaves_and_the_next_tap_keeps_the_persons_size(desktop, binary):
    kelpa, area = _start_beside_panel(desktop, binary)
    wait_until("the frame fills the work area", lambda: _frame(desktop, kelpa) == area)
    placed = _resize(desktop, kelpa, 300, 200, 1000, 700)
    await_monitor(desktop, kelpa, Typing(desktop, "Typist"))
    if _frame(desktop, kelpa) != placed:
        raise AssertionError(f"{_frame(desktop, kelpa)} is not {placed}")
    kelpa.quit()


def _is_within(desktop, kelpa, area):
    """Whether the window and its title are; window managers put the border beyond the edge."""
    x, y, width, height = _frame(desktop, kelpa)
    window = desktop.x.create_resource_object("window", kelpa.window.number)
    border = desktop.property(window, "_NET_FRAME_EXTENTS")[0]
    return area[0] <= x + border and area[1] <= y + border and \
        x + width - border <= area[0] + area[2] and y + height - border <= area[1] + area[3]


def _fits_when_it_is_no_longer_maximised(desktop, binary, expected):
    kelpa, area = _start_beside_panel(desktop, binary)
    wait_until("the frame fills the work area", lambda: _frame(desktop, kelpa) == area)
    number = hex(kelpa.window.number)
    desktop.run("wmctrl", "-i", "-r", number, "-b", "remove,maximized_vert,maximized_horz")
    window = desktop.x.create_resource_object("window", kelpa.window.number)

    def size():
        geometry = window.get_geometry()
        return geometry.width, geometry.height

    try:
        wait_until("the window has the size that fits", lambda: size() == expected)
        wait_until("it is within the work area", lambda: _is_within(desktop, kelpa, area))
    except AssertionError as error:
        raise AssertionError(f"{error}: {size()}, {_frame(desktop, kelpa)}, {area}") from None
    kelpa.quit()


@on_desktop(size="1366x768x24")
def on_a_low_screen_a_window_that_is_no_longer_maximised_fits(desktop, binary):
    _fits_when_it_is_no_longer_maximised(desktop, binary, (1200, 688))


@on_desktop(size="1024x768x24")
def on_a_small_screen_a_window_that_is_no_longer_maximised_fits(desktop, binary):
    _fits_when_it_is_no_longer_maximised(desktop, binary, (1000, 688))


def under_xfwm4_the_first_window_fills_what_the_panel_leaves(desktop, binary):
    _replace_window_manager(desktop, *_XFWM4)
    kelpa, area = _start_beside_panel(desktop, binary)
    wait_until("the frame fills the work area", lambda: _frame(desktop, kelpa) == area)
    kelpa.quit()


def a_window_off_the_screen_comes_back_to_its_middle(desktop, binary):
    kelpa, _ = start_kelpa(desktop, binary)
    _resize(desktop, kelpa, 300, 200, 1000, 700)
    await_monitor(desktop, kelpa, Typing(desktop, "Typist"))
    # No window manager lets a window leave the screen, but one that starts later may find it there.
    root = desktop.x.screen().root
    manager = desktop.property(root, "_NET_SUPPORTING_WM_CHECK")[0]
    desktop.x.create_resource_object("window", manager).kill_client()
    desktop.x.sync()
    width, height = desktop.x.screen().width_in_pixels, desktop.x.screen().height_in_pixels
    window = desktop.x.create_resource_object("window", kelpa.window.number)
    wait_until("the window is without a frame", lambda: window.query_tree().parent == root)
    window.configure(x=width + 200, y=300)
    wait_until("the window is off the screen", lambda: _place(desktop, kelpa)[0] == width + 200)
    tap_twice(desktop)

    def is_centred():
        x, y = _place(desktop, kelpa)
        size = window.get_geometry()
        # The frame that it had counts still.
        return abs(x + size.width / 2 - width / 2) <= 20 and abs(y + size.height / 2 - height / 2) <= 20

    wait_until("the window is in the middle", is_centred)
    os.kill(kelpa.process_id(), signal.SIGTERM)
    if kelpa.wait() != 0:
        raise AssertionError("it did not end well")


def _place(desktop, kelpa):
    """Where the window's content begins on the screen."""
    window = desktop.x.create_resource_object("window", kelpa.window.number)
    place = window.translate_coords(desktop.x.screen().root, 0, 0)
    return (-place.x, -place.y)


def _frame(desktop, kelpa):
    """Place and size of the window with its decoration."""
    window = desktop.x.create_resource_object("window", kelpa.window.number)
    left, right, top, bottom = desktop.property(window, "_NET_FRAME_EXTENTS")
    size = window.get_geometry()
    x, y = _place(desktop, kelpa)
    return (x - left, y - top, size.width + left + right, size.height + top + bottom)


def a_shortcut_a_slow_tap_or_a_key_between_does_not_bring_kelpa_forward(desktop, binary):
    kelpa, _ = start_kelpa(desktop, binary)
    terminal = Typing(desktop, "Typist")
    await_monitor(desktop, kelpa, terminal)
    super_and_c = ("keydown", "super", "key", "c", "sleep", "0.04", "keyup", "super")
    super_and_click = ("keydown", "super", "click", "1", "sleep", "0.04", "keyup", "super")
    super_and_wheel = ("keydown", "super", "click", "5", "sleep", "0.04", "keyup", "super")
    attempts = {
        "shortcuts": (*super_and_c, *BETWEEN, *super_and_c),
        "slow": (*TAP, "sleep", "0.5", *TAP),
        "held": ("keydown", "super", "sleep", "0.6", "keyup", "super", *BETWEEN,
                 "keydown", "super", "sleep", "0.6", "keyup", "super"),
        "between": (*TAP, "key", "x", *TAP),
        "shift": ("keydown", "shift", *TAP, *BETWEEN, *TAP, "keyup", "shift"),
        "single": TAP,
        "clicks": (*super_and_click, *BETWEEN, *super_and_click),
        "wheel": (*super_and_wheel, *BETWEEN, *super_and_wheel),
    }
    # The click hits the terminal.
    desktop.run("xdotool", "mousemove", "--window", terminal.window.number, "40", "40")
    for number, (name, moves) in enumerate(attempts.items()):
        terminal.focus()
        desktop.run("xdotool", *moves)
        terminal.type_sentinel(f"{name}{number}")
        if not terminal.has_keyboard():
            raise AssertionError(f"Kelpa came forward: {name}")
    kelpa.quit()


def _second(desktop, binary, *arguments, seconds=30):
    return subprocess.run([str(binary), *map(str, arguments)], env=desktop.env, stdin=subprocess.DEVNULL,
                          capture_output=True, text=True, timeout=seconds, check=False)


def _second_starts_bring_it_forward(desktop, binary, kelpa, path):
    terminal = Typing(desktop, "Second typist")
    for arguments in ((), ("--show",)):
        terminal.focus()
        again = _second(desktop, binary, "--settings", path, *arguments)
        if (again.returncode, again.stderr) != (0, ""):
            raise AssertionError(f"{arguments}: {again}")
        await_front(desktop, kelpa)
    windows = [window for window in desktop.windows() if window.title == boards.WINDOW]
    if len(windows) != 1:
        raise AssertionError(f"more than one board: {windows}")


def a_second_start_brings_the_first_forward_and_ends(desktop, binary):
    kelpa, path = start_kelpa(desktop, binary)
    _second_starts_bring_it_forward(desktop, binary, kelpa, path)

    # Another file is another board.
    other = desktop.directory / "other.sqlite"
    settings.write(other)
    beside = Kelpa(desktop, binary, other)
    beside.start()
    await_front(desktop, beside)
    again = _second(desktop, binary, "--settings", path)
    if again.returncode != 0:
        raise AssertionError(f"{again}")
    await_front(desktop, kelpa)
    beside.quit()
    kelpa.quit()


def a_second_start_does_not_wait_long_for_a_first_that_hangs(desktop, binary):
    kelpa, path = start_kelpa(desktop, binary)
    os.kill(kelpa.process_id(), signal.SIGSTOP)
    try:
        again = _second(desktop, binary, "--settings", path, seconds=15)
    finally:
        os.kill(kelpa.process_id(), signal.SIGCONT)
    if (again.returncode, again.stderr) != (1, "kelpa: Kelpa already runs, but does not answer\n"):
        raise AssertionError(f"{again}")
    # What was asked of it meanwhile is done before this, so that it does not come back after its end.
    if _second(desktop, binary, "--settings", path).returncode != 0:
        raise AssertionError("it does not answer again")
    kelpa.quit()


def without_a_session_bus_the_board_is_still_opened_once(desktop, binary):
    del desktop.env["DBUS_SESSION_BUS_ADDRESS"]
    path = desktop.directory / "board.sqlite"
    settings.write(path)
    first = desktop.start(binary, "--settings", path)
    window = desktop.wait_for_window(boards.WINDOW)
    desktop.open_xterms("In front")

    def check_second():
        front = [each for each in desktop.windows() if each.title == "In front"][0]
        desktop.run("xdotool", "windowactivate", "--sync", front.number)
        again = _second(desktop, binary, "--settings", path)
        if (again.returncode, again.stderr) != (0, ""):
            raise AssertionError(f"{again}")
        wait_until("the first is in front", lambda: desktop.active_window() == window.number)

    check_second()
    # Nor does a bus that never answers keep the second start from ending.
    with socket.socket(socket.AF_UNIX) as silent:
        address = pathlib.Path(desktop.env["XDG_RUNTIME_DIR"]) / "silent"
        silent.bind(str(address))
        silent.listen()
        desktop.env["DBUS_SESSION_BUS_ADDRESS"] = f"unix:path={address}"
        check_second()
    desktop.close(window)
    if first.wait(timeout=30) != 0:
        raise AssertionError(f"ended with {first.returncode}")


def signals_end_it_well_and_a_crash_hinders_no_start(desktop, binary):
    kelpa, path = start_kelpa(desktop, binary)
    goals = []
    # A session that ends hangs up and terminates its programs at the same time.
    for numbers in ((signal.SIGTERM,), (signal.SIGINT,), (signal.SIGHUP,),
                    (signal.SIGTERM, signal.SIGHUP, signal.SIGCONT), (signal.SIGKILL,)):
        names = " ".join(number.name for number in numbers)
        goal = f"Before {names}"
        kelpa.create_goal(goal)
        goals.append(goal)
        for number in numbers:
            os.kill(kelpa.process_id(), number)
        expected = -signal.SIGKILL if numbers == (signal.SIGKILL,) else 0
        status = kelpa.wait()
        if status != expected:
            raise AssertionError(f"{names}: ended with {status}\n{kelpa.output()}")
        kelpa.check_output()
        stored = settings.StoredBoard(settings.read(path)).goal_titles
        if stored != goals:
            raise AssertionError(f"{names}: {stored}")
        # At once, and also while the one before is still ending.
        kelpa.start()
        wait_until("every goal is there again", lambda: kelpa.board.goal_titles(kelpa.board.columns()) == goals)
    kelpa.quit()


def a_start_while_the_one_before_is_ending_has_the_board(desktop, binary):
    kelpa, path = start_kelpa(desktop, binary)
    for _ in range(5):
        os.kill(kelpa.process_id(), signal.SIGTERM)
        ending = kelpa.forget()
        kelpa.start()
        if ending.wait(timeout=30) != 0:
            raise AssertionError(f"ended with {ending.returncode}")
    kelpa.quit()


def what_it_is_asked_about_itself_is_answered_without_a_display(desktop, binary):
    env = {name: value for name, value in desktop.env.items() if name != "DISPLAY"}
    for option, expected in (("--version", "kelpa "), ("--help", "--settings"),
                             ("--about-desktop", "none that Kelpa can work on")):
        answer = subprocess.run([str(binary), option], env=env, stdin=subprocess.DEVNULL,
                                capture_output=True, text=True, timeout=30, check=False)
        if answer.returncode != 0 or expected not in answer.stdout or answer.stderr:
            raise AssertionError(f"{option}: {answer}")


def what_the_desktop_can_do_is_answered_also_while_the_display_hangs(desktop, binary):
    def answer():
        told = subprocess.run([str(binary), "--about-desktop"], env=desktop.env,
                              stdin=subprocess.DEVNULL, capture_output=True, text=True, timeout=20,
                              check=False)
        if told.returncode != 0 or told.stderr:
            raise AssertionError(f"--about-desktop: {told}")
        return [" ".join(line.split()) for line in told.stdout.splitlines()]

    lines = answer()
    for expected in ("desktop x11", "windows yes", "previews yes", "double tap yes"):
        if expected not in lines:
            raise AssertionError(f"{expected!r} is not among {lines}")
    desktop.x_server.send_signal(signal.SIGSTOP)
    try:
        lines = answer()
    finally:
        desktop.x_server.send_signal(signal.SIGCONT)
    if "x11 the display does not reply" not in lines:
        raise AssertionError(f"of a display that hangs: {lines}")
