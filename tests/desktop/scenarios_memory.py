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
