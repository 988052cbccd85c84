"""A goal that is pinned to a virtual desktop: its windows are sent there, and so is who works on it."""

import board as boards
import settings
from command_line import CommandLine
from kelpa import Kelpa
from processes import wait_until

_TITLES = ("Form", "Receipts", "Mail")
_PINNED_TO_FIRST = "Pinned to: Desktop 1"


def a_pinned_goal_has_its_windows_on_its_desktop_and_is_worked_on_there(desktop, binary):
    path = desktop.directory / "board.sqlite"
    settings.write(path, goals=[("Taxes", [])])
    desktop.add_desktop()
    windows = {}
    for title in _TITLES:
        desktop.start_program(title)
        windows[title] = desktop.wait_for_window(title)

    def places():
        return {title: desktop.desktop_of(window) for title, window in windows.items()}

    command = CommandLine(desktop, binary, path)

    def assign(title):
        command.assign(title, "Taxes")
        kelpa.wait_for_card("Taxes", title)

    with Kelpa(desktop, binary, path) as kelpa:
        for title in _TITLES:
            kelpa.wait_for_card(boards.UNSORTED, title)
        assign("Form")
        assert places() == {"Form": 1, "Receipts": 1, "Mail": 1}
        command("pin", "Taxes", "Second")
        wait_until("its window is sent there", lambda: places() == {"Form": 2, "Receipts": 1, "Mail": 1})
        wait_until("the header says so", lambda: kelpa.board.has_text("Pinned to: Second"))
        assert desktop.current_desktop() == 1, "nobody has gone there"

        assign("Receipts")
        wait_until("what joins the goal follows", lambda: places() == {"Form": 2, "Receipts": 2, "Mail": 1})
        desktop.move(windows["Form"], 1)
        wait_until("the person moves one back", lambda: places()["Form"] == 1)

        # Another window is in the way there.
        desktop.move(windows["Mail"], 2)
        wait_until("the board knows", lambda: "Second" in kelpa.board.card(
            boards.UNSORTED, "Mail").node.description)
        assert places() == {"Form": 1, "Receipts": 2, "Mail": 2}, "it stays"
        command("work", "Taxes")
        wait_until("Kelpa goes to the desktop", lambda: desktop.current_desktop() == 2)
        wait_until("the goal's window is active", lambda: desktop.active_window() == windows["Receipts"].number)
        wait_until("the other is minimised", lambda: desktop.window(windows["Mail"].number).is_minimized)
        assert places() == {"Form": 1, "Receipts": 2, "Mail": 2}

        # The desktop goes, and comes back.
        desktop.show_desktop(1)
        desktop.remove_desktop()
        wait_until("the desktop is gone",
                   lambda: kelpa.board.has_text("Pinned to: Desktop 2 (not there now)"))
        desktop.add_desktop()
        wait_until("it is back", lambda: kelpa.board.has_text("Pinned to: Second"))

        # KWin has moved the one window, and the person the other.
        assert places() == {"Form": 1, "Receipts": 1, "Mail": 1}
        for title in ("Form", "Receipts"):
            desktop.move(windows[title], 2)
            wait_until("the board knows", lambda title=title: "Second" in kelpa.board.card(
                "Taxes", title).node.description)
        assert places() == {"Form": 2, "Receipts": 2, "Mail": 1}
        command("pin", "Taxes", "1")
        wait_until("the header names the other desktop", lambda: kelpa.board.has_text(_PINNED_TO_FIRST))
        wait_until("all of them go there", lambda: places() == {"Form": 1, "Receipts": 1, "Mail": 1})
        command("pin", "Taxes", "none")
        wait_until("it is pinned no more", lambda: not kelpa.board.has_text(_PINNED_TO_FIRST))
        assert '"desktop": 0' in command("goals", "--json")
        kelpa.quit()
