"""What the board does alike with terminals on each compositor that tells the processes of its windows."""

import board as boards
import settings
from assistant import Assistant
from kelpa import Kelpa
from processes import wait_until


def check_assigned_one_is_there_after_a_restart(desktop, binary):
    """Two terminals are cards; the one that is assigned to a goal belongs to it after a new start too."""
    path = desktop.directory / "board.sqlite"
    settings.write(path, goals=[("Release", [])])
    desktop.start_foot("First terminal")
    desktop.start_foot("Second terminal")
    with Kelpa(desktop, binary, path) as kelpa:
        for title in ("First terminal", "Second terminal"):
            kelpa.wait_for_card(boards.UNSORTED, title)
        Assistant(desktop, kelpa).assign("Release", "Foot: First terminal")
        kelpa.wait_for_card("Release", "First terminal")
        kelpa.quit()
        stored = settings.StoredBoard(settings.read(path))
        assert stored.window_counts == {"Release": 1}, stored
        kelpa.start()
        kelpa.wait_for_card("Release", "First terminal")
        kelpa.wait_for_card(boards.UNSORTED, "Second terminal")


def check_goal_opens_one(desktop, binary, terminal, env=None):
    """A goal's menu starts `terminal`, whose window has the keyboard and belongs to the goal. `env` is told to
    Kelpa."""
    path = desktop.directory / "board.sqlite"
    settings.write(path, goals=[("Release", [])])
    desktop.start_foot("Already there")
    with Kelpa(desktop, binary, path, env={"TERMINAL": terminal} | (env or {})) as kelpa:
        kelpa.wait_for_card(boards.UNSORTED, "Already there")
        before = {window.number for window in desktop.windows()}
        assistant = Assistant(desktop, kelpa)
        assistant.press_button(boards.GOAL_ACTIONS, "Release")
        assistant.choose(boards.OPEN_TERMINAL)
        opened = wait_until("a terminal is open", lambda: next(
            (window for window in desktop.windows() if window.number not in before), None))
        desktop.wait_for_active(opened)
        # A window that is not shown is not drawn, and so not told anew.
        kelpa.focus()
        wait_until("it is in the goal", lambda: len(kelpa.board.column("Release").cards) == 1)
        assert len(kelpa.board.column(boards.UNSORTED).cards) == 1
