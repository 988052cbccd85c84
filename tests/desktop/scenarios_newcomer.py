"""What a person who has just met the board trips over: words and places that say what happens."""

import board as boards
import settings
from kelpa import Kelpa
from processes import wait_until


def a_goal_says_that_there_is_nothing_to_open(desktop, binary):
    path = desktop.directory / "board.sqlite"
    settings.write(path, goals=[("Taxes", [])])
    bare = desktop.directory / "bare"
    bare.mkdir()
    nothing = {"PATH": str(bare), "XDG_DATA_HOME": str(bare), "XDG_DATA_DIRS": str(bare), "TERMINAL": ""}
    with Kelpa(desktop, binary, path, env=nothing) as kelpa:
        for entry, text in ((boards.OPEN_CHROME, "No browser found to open"),
                            (boards.OPEN_TERMINAL, "No terminal found to open")):
            kelpa.open_goal_menu("Taxes", entry)()
            wait_until("it says so", lambda: kelpa.board.has_text(text))
