"""Several windows are moved into a goal at once."""

import board as boards
import settings
from kelpa import Kelpa
from processes import wait_until

_TITLES = ("Alpha", "Beta", "Gamma", "Delta")


def windows_are_chosen_in_a_sheet_by_mouse_and_by_keyboard(desktop, binary):
    path = desktop.directory / "board.sqlite"
    settings.write(path, goals=[("Home", []), ("Work", [])], is_auto_sorting=False)
    desktop.open_xterms(*_TITLES)
    with Kelpa(desktop, binary, path) as kelpa:
        board = kelpa.board
        kelpa.focus()

        def places(**cards):
            wait_until(f"the cards are {cards}", lambda: board.cards() == cards)

        def is_chosen(title):
            choice = board.choice(f"XTerm: {title}")
            return choice is not None and choice.is_checked

        def button(name):
            return lambda: board.button(name)

        places(**dict.fromkeys(_TITLES, boards.UNSORTED))
        kelpa.open_sheet("Home")
        # Nothing is chosen, so there is nothing to confirm.
        desktop.key("Return")
        assert board.choice("XTerm: Alpha") is not None
        for title in ("Alpha", "Gamma"):
            kelpa.click(lambda title=title: board.choice(f"XTerm: {title}"), f"{title!r} in the sheet")
            wait_until(f"{title!r} is chosen", lambda title=title: is_chosen(title))
        # A click beside the search field leaves the keyboard to it.
        assert board.focused_field() is not None
        kelpa.click(button("Add 2 windows"), "the button that confirms")
        places(Alpha="Home", Beta=boards.UNSORTED, Gamma="Home", Delta=boards.UNSORTED)

        # By keyboard: the search narrows the list, Down goes into it, Space chooses, Return confirms.
        kelpa.open_sheet("Work")
        desktop.type("gamm")
        wait_until("one window is left", lambda: board.choice("XTerm: Alpha") is None)
        desktop.key("Down", "space")
        wait_until("the window is chosen", lambda: is_chosen("Gamma"))
        desktop.key("Return")
        places(Alpha="Home", Beta=boards.UNSORTED, Gamma="Work", Delta=boards.UNSORTED)

        # Escape leaves everything as it was.
        kelpa.open_sheet("Work")
        kelpa.click(lambda: board.choice("XTerm: Beta"), "a window in the sheet")
        wait_until("the window is chosen", lambda: is_chosen("Beta"))
        desktop.key("Escape")
        wait_until("the sheet is gone", lambda: board.choice("XTerm: Beta") is None)
        places(Alpha="Home", Beta=boards.UNSORTED, Gamma="Work", Delta=boards.UNSORTED)

        # A window that is closed while the sheet is open drops out; the others are moved.
        kelpa.open_sheet("Work")
        for title in ("Beta", "Delta"):
            kelpa.click(lambda title=title: board.choice(f"XTerm: {title}"), f"{title!r} in the sheet")
            wait_until(f"{title!r} is chosen", lambda title=title: is_chosen(title))
        desktop.close(desktop.wait_for_window("Delta"))
        wait_until("the window is gone from the sheet", lambda: board.choice("XTerm: Delta") is None)
        kelpa.click(button("Add 1 windows"), "the button that confirms")
        places(Alpha="Home", Beta="Work", Gamma="Work")

        # When none is left, the sheet stays and says why.
        kelpa.open_sheet("Work")
        kelpa.click(lambda: board.choice("XTerm: Alpha"), "a window in the sheet")
        wait_until("the window is chosen", lambda: is_chosen("Alpha"))
        desktop.close(desktop.wait_for_window("Alpha"))
        wait_until("the window is gone from the sheet", lambda: board.choice("XTerm: Alpha") is None)
        kelpa.click(button("Add 0 windows"), "the button that confirms")
        wait_until("the sheet says why nothing was moved", lambda: board.has_text(
            "The window list changed. Please select again."))
        desktop.key("Escape")
        wait_until("the sheet is gone", lambda: list(board.columns()) == [
            boards.ALL_TODOS, boards.UNSORTED, "Home", "Work"])
        places(Beta="Work", Gamma="Work")
        kelpa.check_stored(path)
