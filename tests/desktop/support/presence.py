"""Closing the board and having it back, which is the same on every desktop."""

import time

import board as boards
import settings
from assistant import Assistant
from front import await_front, start_kelpa
from notifications import Notifications
from processes import wait_until

STAYS = "show Kelpa keeps running: Press Super twice, or start Kelpa again, to get the board back."
STAYS_FOR_LAUNCHER = "show Kelpa keeps running: Start Kelpa again to get the board back."

# A command for a terminal, which then changes all the time.
CLOCK = ("sh", "-c", "while date +%N; do sleep 0.2; done")

_QUIT = "Quit Kelpa"
_CAPTURED = "captured a window of"
# Several times the least time between two pictures of windows.
_PICTURES_WITHIN = 3


def close(desktop, kelpa):
    desktop.close(kelpa.window)
    wait_until("Kelpa's window is closed", lambda: kelpa.shown_window() is None)
    kelpa.check_alive()


def await_window(kelpa):
    def shown():
        kelpa.check_alive()
        return kelpa.shown_window()

    kelpa.window = wait_until("Kelpa's window is shown", shown)


def is_active(kelpa):
    """Whether the board has the keyboard, as the toolkit knows after a while: until then it does not know its
    shortcuts. None while that cannot be told."""
    try:
        windows = [node.has_state(boards.Atspi.StateType.ACTIVE)
                   for node, depth in kelpa.board.walk() if depth == 1 and node.name == boards.WINDOW]
    except boards.Gone:
        return None
    return any(windows) if windows else None


def _call_back(desktop, kelpa, what, call, may_lose_keys):
    def comes():
        call()
        try:
            return wait_until("Kelpa's window is shown", kelpa.shown_window, 10)
        except AssertionError:
            kelpa.check_alive()
            return None

    if may_lose_keys:
        kelpa.window = wait_until(f"the board comes by {what}", comes)
    else:
        call()
        await_window(kelpa)
    await_front(desktop, kelpa)
    wait_until("the board knows that it is in front", lambda: is_active(kelpa) is True)


def _check_no_pictures(kelpa):
    """While the board is closed. One may have been under way."""
    time.sleep(1)
    before = kelpa.output().count(_CAPTURED)
    time.sleep(_PICTURES_WITHIN)
    taken = kelpa.output().count(_CAPTURED) - before
    assert taken == 0, f"{taken} pictures of windows for a board that is closed"


def _create_goal(desktop, kelpa, title):
    desktop.key("ctrl+n")
    wait_until("the new goal's title can be typed", kelpa.board.focused_field)
    desktop.type(title)
    desktop.key("Return")
    wait_until(f"the goal {title!r} is on the board", lambda: kelpa.board.column(title))


def _quit_by_menu(desktop, kelpa):
    def opens():
        # Goals have menus of their own; the first target has that of the board.
        if kelpa.board.menu_item(_QUIT) is None:
            desktop.key("Escape", "Up", "Left", "Menu")
            time.sleep(0.5)
        return kelpa.board.menu_item(_QUIT)

    wait_until("the menu is open", opens)
    Assistant(desktop, kelpa).choose(_QUIT)


def check_board_comes_back(desktop, binary, terminal, open_clock, calls, stays=STAYS, has_previews=True,
                           may_lose_keys=False):
    """The board is closed and comes back, by each of the `calls` (pairs of what is done and a function) and by
    another start. `open_clock` opens a window that changes all the time, with a title; `stays` is what the
    desktop shows when the board is closed for the first time. `may_lose_keys`: the first keys of a session
    of this desktop may be lost, and are pressed again."""
    notifications = Notifications(desktop)
    kelpa, path = start_kelpa(desktop, binary, goals=(("Taxes", ["Pay"]),),
                              env={"QT_LOGGING_RULES": "kelpa.store.debug=true"})
    kelpa.wait_for_card(boards.UNSORTED, terminal.title)
    if has_previews:
        kelpa.wait_for_previews(boards.UNSORTED)
        assert kelpa.output().count(_CAPTURED) > 0, "pictures are told as they are taken"
    goals = ["Taxes"]
    for at, (what, call) in enumerate(
            (*calls, ("another start", lambda: desktop.run(binary, "--settings", path)))):
        close(desktop, kelpa)
        own = [window for window in desktop.windows() if window.pid == kelpa.process_id()]
        assert not own, own
        wait_until("it says that it stays", lambda: stays in notifications.lines())
        # What changes meanwhile is there when the board is.
        open_clock(f"Clock {at}")
        if has_previews:
            _check_no_pictures(kelpa)
        terminal.focus()
        _call_back(desktop, kelpa, what, call, may_lose_keys)
        kelpa.wait_for_goals(*goals)
        kelpa.wait_for_todos("Taxes", [("Pay", boards.TODO)])
        for title in (terminal.title, f"Clock {at}"):
            kelpa.wait_for_card(boards.UNSORTED, title)
        if has_previews:
            kelpa.wait_for_previews(boards.UNSORTED)
        wait_until("the notification is over", lambda: "close" in notifications.lines())
        goals.append(f"Garden {at}")
        _create_goal(desktop, kelpa, goals[-1])
    assert notifications.lines().count(stays) == 1, "it says so once"

    _quit_by_menu(desktop, kelpa)
    assert kelpa.wait() == 0
    kelpa.check_output()
    assert settings.StoredBoard(settings.read(path)).goal_titles == goals
