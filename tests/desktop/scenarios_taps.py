"""The double tap of Super, where Kelpa is in front, has a sheet open, or hears of other keys."""

import board as boards
from front import BETWEEN, TAP, await_front, await_monitor, start_kelpa, tap_twice
from processes import wait_until
from selection import Selection
from typists import KeyLog, Typing

_TAPPED = ["+Super_L", "-Super_L"]
# The number of the key, which has another name where it is Super.
_CAPS_LOCK = "66"


def a_double_tap_in_front_only_brings_kelpa_forward_again(desktop, binary):
    kelpa, _ = start_kelpa(desktop, binary, goals=[("Home", ["One"]), ("Work", [])])
    other = KeyLog(desktop, "Key log")
    await_monitor(desktop, kelpa, other)
    selection = Selection(desktop, kelpa)
    selection.press("Left", "Right")
    selection.is_column(boards.UNSORTED)
    selection.press("space")
    selection.is_card("Key log")
    before = (kelpa.board.todos("Home"), kelpa.board.goal_titles(), kelpa.board.focused_names())
    window = desktop.x.create_resource_object("window", kelpa.window.number)
    size = window.get_geometry()
    for _ in range(3):
        # It lies behind, but has the keyboard.
        desktop.run("xdotool", "windowraise", other.window.number)
        wait_until("the other window is above", lambda: desktop.stacking()[-1] == other.window.number)
        assert desktop.active_window() == kelpa.window.number
        tap_twice(desktop)
        await_front(desktop, kelpa)
        selection.is_card("Key log")
        assert (kelpa.board.todos("Home"), kelpa.board.goal_titles(),
                kelpa.board.focused_names()) == before
    now = window.get_geometry()
    assert (now.x, now.y, now.width, now.height) == (size.x, size.y, size.width, size.height)
    selection.press("Escape", "Right")
    selection.is_column("Home")
    kelpa.quit()


def a_double_tap_keeps_a_sheet_open_and_what_is_written_in_it(desktop, binary):
    kelpa, _ = start_kelpa(desktop, binary, goals=[("Home", [])])
    terminal = Typing(desktop, "Typist")
    await_monitor(desktop, kelpa, terminal)

    def go_and_come_back(word):
        terminal.focus()
        terminal.type_sentinel(word)
        tap_twice(desktop)
        await_front(desktop, kelpa)

    # Typing goes on where it was.
    kelpa.type_new_goal("Half")
    go_and_come_back("first")
    desktop.type(" a title")
    tap_twice(desktop)
    desktop.key("Return")
    wait_until("the goal is on the board", lambda: kelpa.board.column("Half a title"))
    Selection(desktop, kelpa).is_column("Half a title")

    kelpa.open_sheet("Home")
    desktop.type("typ")
    go_and_come_back("second")
    desktop.type("ist")
    desktop.key("Down", "space")
    wait_until("the window is chosen", lambda: kelpa.board.choice("XTerm: Typist").is_checked)
    go_and_come_back("third")
    desktop.key("Return")
    kelpa.wait_for_card("Home", "Typist")

    # Without a field that is typed into, Escape closes it all the same.
    kelpa.open_sheet("Home")
    go_and_come_back("fourth")
    assert kelpa.board.choice("XTerm: Typist")
    desktop.key("Escape")
    wait_until("the sheet is gone", lambda: not kelpa.board.choice("XTerm: Typist"))
    assert kelpa.board.cards() == {"Typist": "Home"}
    assert terminal.lines()[-4:] == ["first", "second", "third", "fourth"]
    kelpa.quit()


def a_key_in_another_program_between_the_taps_cancels_and_no_key_is_lost(desktop, binary):
    kelpa, _ = start_kelpa(desktop, binary)
    other = KeyLog(desktop, "Key log")
    await_monitor(desktop, kelpa, other)
    other.focus()
    other.forget()
    for key in ("x", "Left", "space", "Return", "Escape"):
        desktop.run("xdotool", *TAP, "key", key, *TAP)
        other.check_next([*_TAPPED, f"+{key}", f"-{key}", *_TAPPED])
        # What follows is seen after it.
        desktop.key("z")
        other.check_strokes("z")
        assert other.has_keyboard()
    for key in ("Shift_L", "Control_L", "Alt_L"):
        desktop.run("xdotool", *TAP, "keydown", key, "keyup", key, *TAP)
        other.check_next([*_TAPPED, f"+{key}", f"-{key}", *_TAPPED])
        desktop.key("z")
        other.check_strokes("z")
        assert other.has_keyboard()
    # Typed without a pause before and after it, the program gets all but what is Kelpa's already.
    desktop.run("xdotool", "key", "--delay", "0", "a", "b", "c", *TAP, *BETWEEN, *TAP)
    await_front(desktop, kelpa)
    other.check_next(["+a", "-a", "+b", "-b", "+c", "-c", *_TAPPED, *_TAPPED])
    kelpa.quit()


def two_layouts_and_caps_lock_as_super_leave_the_double_tap_as_it_is(desktop, binary):
    desktop.run("setxkbmap", "us,de", "-option", "grp:win_space_toggle,caps:super")
    kelpa, _ = start_kelpa(desktop, binary)
    terminal = Typing(desktop, "Typist")
    await_monitor(desktop, kelpa, terminal)

    # There and back again; in between and afterwards Kelpa stays where it is.
    change_layout = ("keydown", "super", "key", "space", "sleep", "0.04", "keyup", "super")
    terminal.focus()
    desktop.run("xdotool", *change_layout, *BETWEEN, *change_layout)
    terminal.type_sentinel("there")
    assert terminal.has_keyboard()

    desktop.run("xdotool", *change_layout)
    tap_twice(desktop)
    await_front(desktop, kelpa)
    terminal.focus()
    caps_lock = ("keydown", _CAPS_LOCK, "sleep", "0.04", "keyup", _CAPS_LOCK)
    desktop.run("xdotool", *caps_lock, *BETWEEN, *caps_lock)
    await_front(desktop, kelpa)
    kelpa.quit()
