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


def check_goal_opens_one(desktop, binary, terminal, env=None, start=None):
    """A goal's menu starts `terminal`, whose window has the keyboard and belongs to the goal. `env` is told to
    Kelpa; `start` opens another window, of foot if it is absent."""
    path = desktop.directory / "board.sqlite"
    settings.write(path, goals=[("Release", [])])
    (start or desktop.start_foot)("Already there")
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
        stored = settings.StoredBoard(settings.read(path))
        assert stored.window_counts == {"Release": 1}, stored


def check_another_run_mixes_nothing(desktop, binary, env=None):
    """A window of another run of sway is none of an earlier one, though it has its name. `env` is told to Kelpa."""
    path = desktop.directory / "board.sqlite"
    settings.write(path, goals=[("Release", [])])
    terminal = desktop.start_foot("Of the first run")
    container = desktop.wait_for_window("Of the first run").number
    with Kelpa(desktop, binary, path, env=env or {}) as kelpa:
        kelpa.wait_for_card(boards.UNSORTED, "Of the first run")
        Assistant(desktop, kelpa).assign("Release", "Foot: Of the first run")
        kelpa.wait_for_card("Release", "Of the first run")
        kelpa.quit()

        desktop.kill_sway()
        terminal.wait()
        desktop.start_sway()
        desktop.start_foot("Of the second run")
        # sway begins to count anew, so the name alone would be that of the first window.
        assert desktop.wait_for_window("Of the second run").number == container
        kelpa.start()
        kelpa.wait_for_card(boards.UNSORTED, "Of the second run")
        assert kelpa.board.card("Release", "Of the second run") is None


def check_one_on_x11_is_a_card(desktop, binary, env=None):
    """One on X11 is a card once, named after its program, and brought forward by it. `env` is told to Kelpa."""
    path = desktop.directory / "board.sqlite"
    settings.write(path)
    desktop.start_foot("On Wayland")
    desktop.start("env", f"DISPLAY={desktop.x_display()}", "xterm", "-T", "On X11", "-e", "cat")
    window = desktop.wait_for_window("On X11")
    with Kelpa(desktop, binary, path, env=env or {}) as kelpa:
        kelpa.wait_for_card(boards.UNSORTED, "On Wayland")
        card = kelpa.wait_for_card(boards.UNSORTED, "On X11")
        assert card.node.name == "XTerm: On X11", card.node.name
        assert len(kelpa.board.cards()) == 2, kelpa.board.cards()
        Assistant(desktop, kelpa).press(lambda: kelpa.board.card(boards.UNSORTED, "On X11").node,
                                        "the card is pressed")
        desktop.wait_for_active(window)
