"""What a person who has just met the board trips over: words and places that say what happens."""

import time

import board as boards
import settings
from board import COMPLETED, TODO
from front import await_front, await_monitor, tap_twice
from harness import on_desktop
from kelpa import Kelpa
from processes import wait_until
from selection import Selection
from typists import KeyLog

_FIRST_GOAL = "Type what you are working on"
_DELETE_COMPLETED = "Delete completed todos"


def a_goal_says_that_there_is_nothing_to_open(desktop, binary):
    path = desktop.directory / "board.sqlite"
    settings.write(path, goals=[("Taxes", [])])
    bare = desktop.directory / "bare"
    bare.mkdir()
    nothing = {"PATH": str(bare), "XDG_DATA_HOME": str(bare), "XDG_DATA_DIRS": str(bare), "TERMINAL": ""}
    with Kelpa(desktop, binary, path, env=nothing) as kelpa:
        for entry, text in ((boards.OPEN_CHROME, "No browser could be opened"),
                            (boards.OPEN_TERMINAL, "No terminal could be opened")):
            kelpa.open_goal_menu("Taxes", entry)()
            wait_until("it says so", lambda: kelpa.board.has_text(text))


def _is_iconic(desktop, window):
    return "_NET_WM_STATE_HIDDEN" in desktop.run("xprop", "-id", window.number, "_NET_WM_STATE")


def who_goes_back_on_the_board_stays_there(desktop, binary):
    path = desktop.directory / "board.sqlite"
    settings.write(path, goals=[("Taxes", [])])
    form = KeyLog(desktop, "Form")
    desktop.open_xterms("Mail", "Notes")
    mail, notes = (desktop.wait_for_window(title) for title in ("Mail", "Notes"))
    with Kelpa(desktop, binary, path) as kelpa:
        kelpa.focus()
        kelpa.wait_for_card(boards.UNSORTED, "Form")
        kelpa.drag_card("Form", boards.UNSORTED, "Taxes")
        kelpa.wait_for_card("Taxes", "Form")
        await_monitor(desktop, kelpa, form)
        for go_back in (lambda: desktop.key("ctrl+shift+g"), lambda: kelpa.open_goal_menu("Taxes", "Back")()):
            kelpa.open_goal_menu("Taxes", "Work on this goal")()
            wait_until("the others are minimised",
                       lambda: _is_iconic(desktop, mail) and _is_iconic(desktop, notes))
            wait_until("the goal's window is in front", form.has_keyboard)
            tap_twice(desktop)
            await_front(desktop, kelpa)
            go_back()
            wait_until("the others are back",
                       lambda: not _is_iconic(desktop, mail) and not _is_iconic(desktop, notes))
            await_front(desktop, kelpa)
            # No late request brings one of them up.
            time.sleep(1)
            await_front(desktop, kelpa)


def _check_first_goal_is_typed(desktop, kelpa):
    wait_until("the first goal can be typed", lambda: kelpa.board.field(_FIRST_GOAL)
               and kelpa.board.field(_FIRST_GOAL).has_state(boards.Atspi.StateType.FOCUSED))
    desktop.type("Taxes")
    desktop.key("Return")
    kelpa.wait_for_goals("Taxes")


def what_is_typed_after_the_language_is_the_first_goal(desktop, binary):
    english = {"LC_ALL": "en_US.UTF-8", "LANGUAGE": "en"}
    with Kelpa(desktop, binary, desktop.directory / "by-key.sqlite", env=english) as kelpa:
        kelpa.focus()
        wait_until("English is offered", lambda: kelpa.board.button("Continue in English"))
        desktop.key("Return")
        _check_first_goal_is_typed(desktop, kelpa)
    with Kelpa(desktop, binary, desktop.directory / "by-click.sqlite", env=english) as kelpa:
        kelpa.focus()
        kelpa.click(lambda: kelpa.board.button("Continue in English"), "the offer")
        _check_first_goal_is_typed(desktop, kelpa)
    # Where there are goals, keys stay the board's.
    path = desktop.directory / "goals.sqlite"
    settings.write(path, language=None, goals=[("Home", [])])
    with Kelpa(desktop, binary, path, env=english) as kelpa:
        kelpa.focus()
        wait_until("English is offered", lambda: kelpa.board.button("Continue in English"))
        desktop.key("Return")
        wait_until("the board speaks English", lambda: kelpa.board.button(boards.NEW_GOAL))
        desktop.type("ho")
        wait_until("that is searched", lambda: kelpa.board.written() == "ho")


@on_desktop(size="1280x800x24")
def what_keys_act_on_is_in_view_when_the_board_comes_forward(desktop, binary):
    path = desktop.directory / "board.sqlite"
    settings.write(path, goals=[(f"Goal {number}", []) for number in range(12)], is_auto_sorting=False)
    other = KeyLog(desktop, "Form")
    with Kelpa(desktop, binary, path) as kelpa:
        await_monitor(desktop, kelpa, other)
        kelpa.wait_for_card(boards.UNSORTED, "Form")
        selection = Selection(desktop, kelpa)
        selection.press("Right")
        selection.is_column(boards.ALL_TODOS)
        selection.press("Right", "space")
        selection.is_card("Form")
        view = kelpa.board.column(boards.UNSORTED).node.board_around().frame()

        def is_in_view():
            card = kelpa.board.card(boards.UNSORTED, "Form")
            x, y, width, height = card.node.frame() if card else (0, 0, 0, 0)
            return height > 0 and view[1] <= y and y + height <= view[1] + view[3]

        wait_until("the card is in view", is_in_view)
        # Away from it by the wheel, at the edge of the board.
        for _ in range(30):
            desktop.click(view[0] + view[2] - 6, view[1] + view[3] - 6, button=5)
        wait_until("it is out of view", lambda: not is_in_view())
        # In front already, it stays where the person has scrolled to.
        tap_twice(desktop)
        time.sleep(1)
        assert not is_in_view()
        other.focus()
        tap_twice(desktop)
        await_front(desktop, kelpa)
        wait_until("the card is in view again", is_in_view)
        selection.is_card("Form")


def completed_todos_are_deleted_at_once_and_come_back(desktop, binary):
    path = desktop.directory / "board.sqlite"
    settings.write(path, goals=[("Taxes", ["Ask the bank", "Pay", "File"])], is_auto_sorting=False)
    with Kelpa(desktop, binary, path) as kelpa:
        kelpa.focus()
        kelpa.click(*kelpa.column_button("Taxes", boards.GOAL_ACTIONS))
        kelpa.centre(lambda: kelpa.board.menu_item(boards.DELETE_GOAL), "the menu of the goal")
        assert kelpa.board.menu_item(_DELETE_COMPLETED) is None
        desktop.key("Escape")
        wait_until("the menu is closed", lambda: kelpa.board.menu_item(boards.DELETE_GOAL) is None)

        def circle(title):
            return next(todo for todo in kelpa.board.column("Taxes").todos if todo.title == title).status_button

        for title in ("Ask the bank", "File"):
            assert circle(title).description == \
                "Current status: Todo; click to change\nNext status: In progress"
            kelpa.click(*kelpa.todo_button("Taxes", title))
            wait_until("it is in progress", lambda: circle(title).description.endswith("Next status: Completed"))
            kelpa.click(*kelpa.todo_button("Taxes", title))
            wait_until("it is completed", lambda: circle(title).description.endswith("Next status: Todo"))
        # Of those that are completed, the card shows the last one.
        before = [("Pay", TODO), ("File", COMPLETED)]
        kelpa.wait_for_todos("Taxes", before)
        for choose in (lambda: kelpa.open_goal_menu("Taxes", _DELETE_COMPLETED)(),
                       lambda: kelpa.choose_in_todo_menu("Taxes", "File", _DELETE_COMPLETED)):
            choose()
            kelpa.wait_for_todos("Taxes", [("Pay", TODO)])
            assert kelpa.board.has_text("2 completed todos deleted")
            kelpa.click(lambda: kelpa.board.button("Undo"), "the button of the toast")
            kelpa.wait_for_todos("Taxes", before)
        assert _stored(path, kelpa) == [("Ask the bank", COMPLETED), ("Pay", TODO), ("File", COMPLETED)]
    with Kelpa(desktop, binary, path) as kelpa:
        kelpa.open_goal_menu("Taxes", _DELETE_COMPLETED)()
        kelpa.wait_for_todos("Taxes", [("Pay", TODO)])
        assert _stored(path, kelpa) == [("Pay", TODO)]


def _stored(path, kelpa):
    kelpa.quit()
    return settings.StoredBoard(settings.read(path)).todos("Taxes")
