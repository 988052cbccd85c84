"""Working on a goal and going back, which is the same on every Wayland desktop that minimises windows."""

import time

import board as boards
import settings
from assistant import Assistant
from command_line import CommandLine
from kelpa import Kelpa
from presence import is_active
from processes import wait_until

_TITLES = ("Form", "Receipts", "Seeds", "Mail")


def _come_forward(kelpa):
    """Until Kelpa knows it, too: a menu that opens before that closes then."""
    kelpa.focus()
    wait_until("the board knows that it is in front", lambda: is_active(kelpa) is True)


class _Windows:
    """Those of the programs that `start` starts by their titles. `is_minimized` tells of one, `set_minimized`
    changes it as a person does."""

    def __init__(self, desktop, start, is_minimized, set_minimized):
        for title in _TITLES:
            start(title)
        self._windows = {title: desktop.wait_for_window(title) for title in _TITLES}
        self._desktop = desktop
        self._is_minimized = is_minimized
        self._set_minimized = set_minimized

    def wait_for_minimized(self, what, *titles):
        wait_until(what, lambda: {title for title, window in self._windows.items()
                                  if self._is_minimized(window)} == set(titles))

    def set_minimized(self, title, is_minimized):
        self._set_minimized(self._windows[title], is_minimized)

    def wait_for_active(self, *titles):
        """One of them is active."""
        numbers = [self._windows[title].number for title in titles]
        wait_until(f"one of {titles} is active", lambda: self._desktop.active_window() in numbers)


def check_others_are_minimised_and_back_restores_them(desktop, binary, start, is_minimized, set_minimized):
    path = desktop.directory / "board.sqlite"
    settings.write(path, goals=[("Taxes", []), ("Garden", [])])
    windows = _Windows(desktop, start, is_minimized, set_minimized)
    command = CommandLine(desktop, binary, path)
    with Kelpa(desktop, binary, path) as kelpa:
        def minimised_cards(column=boards.UNSORTED):
            found = kelpa.board.column(column)
            return [card.title for card in found.cards if card.is_minimised] if found else None

        for title in _TITLES:
            kelpa.wait_for_card(boards.UNSORTED, title)
        for title, goal in (("Form", "Taxes"), ("Receipts", "Taxes"), ("Seeds", "Garden")):
            command.assign(title, goal)
            kelpa.wait_for_card(goal, title)
        # One of the goal's own is minimised, too: it comes forward.
        windows.set_minimized("Receipts", True)
        wait_until("the board knows", lambda: minimised_cards("Taxes") == ["Receipts"])
        _come_forward(kelpa)
        assistant = Assistant(desktop, kelpa)
        assistant.press_button(boards.GOAL_ACTIONS, "Taxes")
        assistant.choose("Work on this goal")
        windows.wait_for_minimized("the others are minimised, and none of the goal's", "Seeds", "Mail")
        windows.wait_for_active("Form", "Receipts")
        wait_until("the board knows that", lambda: minimised_cards() == ["Mail"])

        windows.set_minimized("Mail", False)
        windows.wait_for_minimized("one is restored by hand", "Seeds")
        wait_until("the board knows that, too", lambda: minimised_cards() == [])
        windows.set_minimized("Mail", True)
        wait_until("and minimised by hand", lambda: minimised_cards() == ["Mail"])
        command("back")
        windows.wait_for_minimized("each is as it was, but what the person has minimised", "Receipts", "Mail")
        wait_until("the board shows it", lambda: minimised_cards("Taxes") == ["Receipts"])
        assert minimised_cards() == ["Mail"] and minimised_cards("Garden") == []

        # Who goes back on the board stays there.
        assistant.press_button(boards.GOAL_ACTIONS, "Taxes")
        assistant.choose("Work on this goal")
        windows.wait_for_minimized("the others are minimised again", "Seeds", "Mail")
        windows.wait_for_active("Form", "Receipts")
        _come_forward(kelpa)
        assistant.press_button(boards.GOAL_ACTIONS, "Taxes")
        assistant.choose("Back")
        windows.wait_for_minimized("each is as it was again", "Receipts", "Mail")
        wait_until("the board is in front", lambda: desktop.active_window() == kelpa.window.number)
        # No late request brings one of them up: the board was in front before, too.
        time.sleep(1)
        assert desktop.active_window() == kelpa.window.number, "another window is in front"
