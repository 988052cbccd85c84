"""Windows that were in goals find them again when their programs are started anew."""

import board as boards
import settings
from kelpa import Kelpa
from processes import wait_until


def windows_of_a_later_login_are_back_in_their_goals_and_undo_leaves_them(desktop, binary):
    path = desktop.directory / "board.sqlite"
    settings.write(path, goals=[("Taxes", []), ("Garden", [])])
    places = {"Tax return": "Taxes", "Seed list": "Garden"}
    terminals = [desktop.start_xterm(title) for title in places]
    with Kelpa(desktop, binary, path) as kelpa:
        for title, goal in places.items():
            kelpa.drag_card(title, boards.UNSORTED, goal)
            kelpa.wait_for_card(goal, title)
    # Kelpa ends before the login does.
    for terminal in terminals:
        terminal.terminate()
        terminal.wait()
    wait_until("the terminals are gone", lambda: not any(
        window.title in places for window in desktop.windows()))
    with Kelpa(desktop, binary, path) as kelpa:
        for title in reversed([*places, "Something else"]):
            desktop.start_xterm(title)
        wait_until("the windows are back", lambda: kelpa.board.cards() ==
                   {**places, "Something else": boards.UNSORTED})
        kelpa.click(lambda: kelpa.board.button("Undo"), "the toast's button")
        wait_until("the windows are unsorted", lambda: set(kelpa.board.cards().values()) ==
                   {boards.UNSORTED})


def a_window_of_a_goal_is_opened_again_from_the_list_of_what_it_had(desktop, binary):
    path = desktop.directory / "board.sqlite"
    settings.write(path, goals=[("Taxes", [])])
    terminal = desktop.start_xterm("Tax return")
    with Kelpa(desktop, binary, path) as kelpa:
        kelpa.drag_card("Tax return", boards.UNSORTED, "Taxes")
        kelpa.wait_for_card("Taxes", "Tax return")
        terminal.terminate()
        terminal.wait()
        wait_until("the terminal is gone", lambda: kelpa.board.cards() == {})
        line = "1 closed window"
        wait_until("the goal's line", lambda: kelpa.board.button(line)).press()
        wait_until("its button", lambda: kelpa.board.button("Open again")).press()
        wait_until("another terminal is in the goal",
                   lambda: list(kelpa.board.cards().values()) == ["Taxes"])
        wait_until("nothing is left to be opened", lambda: kelpa.board.button(line) is None)
