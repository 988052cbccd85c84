"""What other programs have on the clipboard."""

import time

import board as boards
import settings
from clipboard import hold_clipboard
from kelpa import Kelpa
from processes import wait_until
from selection import Selection

# Less than the toolkit waits for a program that does not answer.
_PROMPT_SECONDS = 4
# It waits once where something is pasted, but for no second answer.
_ONE_WAIT_SECONDS = 9


def a_program_that_keeps_its_clipboard_to_itself_does_not_stop_the_board(desktop, binary):
    path = desktop.directory / "board.sqlite"
    settings.write(path, goals=[("Home", ["One"]), ("Garden", [])], is_auto_sorting=False)
    with Kelpa(desktop, binary, path) as kelpa:
        kelpa.focus()
        selection = Selection(desktop, kelpa)
        desktop.click(*kelpa.head("Home"))
        selection.is_column("Home")
        holder = hold_clipboard(desktop)
        began = time.monotonic()
        selection.press("Right")
        selection.is_column("Garden")
        assert time.monotonic() - began < _PROMPT_SECONDS, "the board stood still"
        # Nor does it ask before something is to be pasted.
        place = kelpa.centre(lambda: kelpa.board.field(boards.SEARCH), "the search field")
        began = time.monotonic()
        desktop.click(*place)
        desktop.type("a")
        desktop.click(*place, button=3)
        wait_until("the field's menu is open", lambda: kelpa.board.menu_item("Paste"))
        assert time.monotonic() - began < _PROMPT_SECONDS, "the field stood still"
        desktop.key("Escape")
        wait_until("the menu is closed", lambda: kelpa.board.menu_item("Paste") is None)
        for text, paste in (("ab", lambda: desktop.key("ctrl+v")),
                            ("abc", lambda: desktop.click(*place, button=2))):
            began = time.monotonic()
            paste()
            desktop.key("End", text[-1])
            wait_until("the next letter is typed", lambda text=text: kelpa.board.written() == text)
            assert time.monotonic() - began < _ONE_WAIT_SECONDS, "it waited more than once"

        holder.kill()
        holder.wait()
        hold_clipboard(desktop, "Taxes")
        desktop.click(*place, button=3)
        kelpa.click(lambda: kelpa.board.menu_item("Paste"), "the menu entry to paste")
        wait_until("the text is pasted", lambda: kelpa.board.written() == "abcTaxes")
        desktop.key("ctrl+v")
        wait_until("the text is pasted by key", lambda: kelpa.board.written() == "abcTaxesTaxes")
