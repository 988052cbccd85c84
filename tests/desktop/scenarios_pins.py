"""A goal that is pinned to a virtual desktop: its windows are sent there, and so is who works on it."""

import board as boards
import settings
from command_line import CommandLine
from kelpa import Kelpa
from processes import wait_until

_PIN = "Pin to desktop"


def a_pinned_goal_has_its_windows_on_its_desktop_and_is_worked_on_there(desktop, binary):
    path = desktop.directory / "board.sqlite"
    settings.write(path, goals=[("Taxes", [])])
    titles = ("Form", "Receipts", "Mail")
    desktop.open_xterms(*titles)
    windows = {title: desktop.wait_for_window(title).number for title in titles}
    names = desktop.run("xprop", "-root", "-notype", "_NET_DESKTOP_NAMES").split('"')[1::2]

    def places():
        """The desktops of the windows, counted from 0."""
        return {title: _cardinal(desktop, "-id", number, name="_NET_WM_DESKTOP")
                for title, number in windows.items()}

    command = CommandLine(desktop, binary, path)

    def assign(title):
        command.assign(title, "Taxes")
        kelpa.wait_for_card("Taxes", title)

    with Kelpa(desktop, binary, path) as kelpa:
        for title in titles:
            kelpa.wait_for_card(boards.UNSORTED, title)
        assign("Form")
        assert places() == {"Form": 0, "Receipts": 0, "Mail": 0}

        # By keys: the goal's menu, the menu within it, and there the second desktop.
        kelpa.open_goal_menu("Taxes", _PIN)
        desktop.key("p")
        desktop.key("Right")
        wait_until("the desktops are listed", lambda: kelpa.board.menu_item(names[1]))
        desktop.key("Home")
        desktop.key("Down")
        desktop.key("Down")
        desktop.key("Return")
        wait_until("its window is sent there",
                   lambda: places() == {"Form": 1, "Receipts": 0, "Mail": 0})
        wait_until("the header says so", lambda: kelpa.board.has_text(f"Pinned to: {names[1]}"))
        assert _present(desktop) == 0, "nobody has gone there"

        assign("Receipts")
        wait_until("what joins the goal follows",
                   lambda: places() == {"Form": 1, "Receipts": 1, "Mail": 0})
        desktop.run("wmctrl", "-i", "-r", hex(windows["Form"]), "-t", "2")
        wait_until("the person moves one elsewhere", lambda: places()["Form"] == 2)
        desktop.run("xdotool", "set_window", "--name", "Renamed", windows["Form"])
        kelpa.wait_for_card("Taxes", "Renamed")
        assert places() == {"Form": 2, "Receipts": 1, "Mail": 0}, "it stays"

        # Another window is in the way there.
        desktop.run("wmctrl", "-i", "-r", hex(windows["Mail"]), "-t", "1")
        wait_until("it is there", lambda: places()["Mail"] == 1)
        wait_until("the board knows", lambda: "desktop" in _told(kelpa, boards.UNSORTED, "Mail"))
        command("work", "Taxes")
        wait_until("Kelpa goes to the desktop", lambda: _present(desktop) == 1)
        wait_until("the goal's window is active", lambda: desktop.active_window() == windows["Receipts"])
        wait_until("the other is minimised",
                   lambda: "HIDDEN" in desktop.run("xprop", "-id", windows["Mail"], "_NET_WM_STATE"))
        assert places() == {"Form": 2, "Receipts": 1, "Mail": 1}

        # The desktop goes, and comes back.
        desktop.run("wmctrl", "-s", "0")
        desktop.run("wmctrl", "-n", "1")
        wait_until("the desktop is gone",
                   lambda: kelpa.board.has_text("Pinned to: Desktop 2 (not there now)"))
        desktop.run("wmctrl", "-n", "4")
        wait_until("it is back", lambda: kelpa.board.has_text(f"Pinned to: {names[1]}"))

        command("pin", "Taxes", names[2])
        wait_until("all of them go to another desktop",
                   lambda: places()["Form"] == 2 and places()["Receipts"] == 2)
        command("undo")
        wait_until("undo brings them back", lambda: places()["Receipts"] == 1)
        command("pin", "Taxes", "none")
        wait_until("it is pinned no more",
                   lambda: not kelpa.board.has_text(f"Pinned to: {names[1]}"))
        assert places()["Receipts"] == 1, "its windows stay"
        assert '"desktop": 0' in command("goals", "--json")
        kelpa.quit()


def _cardinal(desktop, *window, name):
    return int(desktop.run("xprop", *window, "-notype", name).split("=")[1])


def _present(desktop):
    return _cardinal(desktop, "-root", name="_NET_CURRENT_DESKTOP")


def _told(kelpa, column, title):
    card = kelpa.board.card(column, title)
    return card.node.description if card else ""
