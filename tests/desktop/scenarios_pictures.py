"""How the board looks in its main states, in light and in dark."""

import os
import pathlib
import signal

import board as boards
import settings
from harness import on_desktop
from kelpa import Kelpa
from pictures import Pictures
from processes import wait_until

_PORTAL = pathlib.Path(__file__).with_name("portal.py")
_SIZE = (1280, 800)
_GOALS = [("Ship release 0.1", ["Write the release notes", "Build the package", "Tell the testers"]),
          ("Prepare Friday’s proposal for the whole committee", ["Collect the figures"]),
          ("Learn Japanese", ["日本語の本を読む", "قراءة الكتاب"])]
_PROGRAMS = [("Notes", "#fdf6e3"), ("Build log", "#002b36"), ("Figures", "#eee8d5"),
             ("Mail", "#268bd2")]


class _Looks:
    """Each look twice: first in the light, then in the dark, which the desktop switches to while
    the program runs."""

    def __init__(self, desktop, size=_SIZE, scale=1):
        self._desktop = desktop
        self._corner = size[0] - 1, size[1] - 1
        desktop.env["QT_QUICK_BACKEND"] = "software"
        desktop.env["QT_SCALE_FACTOR"] = str(scale)
        self._portal = desktop.start("/usr/bin/python3", _PORTAL)
        wait_until("the portal is there", self._has_portal)
        self._pictures = Pictures(desktop)

    def are(self, name):
        # Nothing below the pointer shows that it could be pressed.
        self._desktop.hover(*self._corner)
        self._pictures.shows(f"{name}-light")
        os.kill(self._portal.pid, signal.SIGUSR1)
        self._pictures.shows(f"{name}-dark")
        os.kill(self._portal.pid, signal.SIGUSR2)

    def _has_portal(self):
        return "org.freedesktop.portal.Desktop" in self._desktop.run(
            "dbus-send", "--session", "--print-reply", "--dest=org.freedesktop.DBus", "/",
            "org.freedesktop.DBus.ListNames")


def _open_windows(desktop):
    for title, color in _PROGRAMS:
        desktop.start_xterm(title, color=color)
        desktop.wait_for_window(title)


def _write_board(path, language="en"):
    settings.write(path, language=language, goals=_GOALS, is_auto_sorting=False)


@on_desktop(size="1280x800x24")
def the_board_looks_as_it_did(desktop, binary):
    path = desktop.directory / "board.sqlite"
    _write_board(path)
    _open_windows(desktop)
    looks = _Looks(desktop)
    with Kelpa(desktop, binary, path) as kelpa:
        kelpa.focus()
        kelpa.wait_for_previews(boards.UNSORTED)
        looks.are("board")
        kelpa.drag_card("Notes", boards.UNSORTED, "Ship release 0.1")
        kelpa.drag_card("Figures", boards.UNSORTED, "Ship release 0.1")
        kelpa.click(*kelpa.todo_button("Ship release 0.1", "Write the release notes"))
        desktop.click(*kelpa.head("Ship release 0.1"))
        wait_until("the goal is chosen", lambda: kelpa.board.selected_column() == "Ship release 0.1")
        desktop.key("space")
        wait_until("a card is chosen", kelpa.board.selected_card)
        looks.are("card-chosen")
        kelpa.open_goal_menu("Ship release 0.1", boards.DELETE_GOAL)
        looks.are("goal-menu")
        desktop.key("Escape")
        kelpa.open_sheet("Learn Japanese")
        kelpa.click(lambda: kelpa.board.choice("XTerm: Mail"), "a window in the sheet")
        looks.are("window-sheet")


@on_desktop(size="1280x800x24")
def an_empty_board_and_its_sheet_look_as_they_did(desktop, binary):
    path = desktop.directory / "board.sqlite"
    settings.write(path)
    looks = _Looks(desktop)
    with Kelpa(desktop, binary, path) as kelpa:
        kelpa.focus()
        looks.are("empty")
        kelpa.type_new_goal("Learn to sail")
        looks.are("goal-sheet")
        desktop.key("Return")
        wait_until("the goal is there", lambda: kelpa.board.column("Learn to sail"))
        kelpa.open_goal_menu("Learn to sail", boards.DELETE_GOAL)()
        wait_until("the goal is gone", lambda: not kelpa.board.goal_titles())
        looks.are("goal-deleted")


@on_desktop(size="900x641x24", missing_extension="Composite")
def the_smallest_board_in_german_with_its_banner_looks_as_it_did(desktop, binary):
    path = desktop.directory / "board.sqlite"
    _write_board(path, language="de")
    looks = _Looks(desktop, (900, 641))
    with Kelpa(desktop, binary, path) as kelpa:
        kelpa.focus()
        wait_until("the board is there", lambda: kelpa.board.column("Unsortiert"))
        looks.are("german-small")


@on_desktop(size="2560x1600x24")
def the_board_in_japanese_at_twice_the_size_looks_as_it_did(desktop, binary):
    path = desktop.directory / "board.sqlite"
    _write_board(path)
    _open_windows(desktop)
    looks = _Looks(desktop, (2560, 1600), scale=2)
    with Kelpa(desktop, binary, path) as kelpa:
        kelpa.focus()
        kelpa.wait_for_previews(boards.UNSORTED)
        kelpa.board.button("Language").press()
        wait_until("the menu is open", lambda: kelpa.board.menu_item("日本語")).press()
        wait_until("the board speaks Japanese", lambda: kelpa.board.column("すべてのタスク"))
        looks.are("japanese-2x")
