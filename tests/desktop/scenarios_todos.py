"""Todos by mouse, and what is on the disk afterwards."""

import board as boards
import settings
from board import COMPLETED, IN_PROGRESS, TODO
from kelpa import Kelpa
from processes import wait_until


def todos_are_advanced_edited_deleted_and_copied_by_mouse(desktop, binary):
    path = desktop.directory / "board.sqlite"
    settings.write(path, goals=[("Errands", ["Buy milk", "XTerm: Terminal", "Call back"])],
                   is_auto_sorting=False)
    desktop.open_xterms("Terminal")
    with Kelpa(desktop, binary, path) as kelpa:
        kelpa.focus()
        kelpa.wait_for_card(boards.UNSORTED, "Terminal")

        def errands(*expected):
            kelpa.wait_for_todos("Errands", list(expected))

        # A todo with the name of a window's card is a todo.
        errands(("Buy milk", TODO), ("XTerm: Terminal", TODO), ("Call back", TODO))
        assert kelpa.board.cards() == {"Terminal": boards.UNSORTED}

        status = kelpa.todo_button("Errands", "Buy milk")
        for expected in (IN_PROGRESS, COMPLETED, TODO, IN_PROGRESS):
            kelpa.click(*status)
            errands(("Buy milk", expected), ("XTerm: Terminal", TODO), ("Call back", TODO))

        kelpa.click(*kelpa.todo_node("Errands", "XTerm: Terminal"))
        wait_until("the title can be typed", kelpa.board.focused_field)
        assert kelpa.board.focused_field().text() == "XTerm: Terminal"
        desktop.key("ctrl+a")
        desktop.type("  Close terminal ")
        desktop.key("Return")
        wait_until("the title is no longer typed", lambda: not kelpa.board.focused_field())
        edited = [("Buy milk", IN_PROGRESS), ("Close terminal", TODO), ("Call back", TODO)]
        errands(*edited)

        # A blank title keeps the field, and Escape the title.
        kelpa.click(*kelpa.todo_node("Errands", "Call back"))
        wait_until("the title can be typed", kelpa.board.focused_field)
        desktop.key("ctrl+a", "space", "Return", "x")
        wait_until("the field took all that was typed", lambda: _typed(kelpa) == " x")
        desktop.key("Escape")
        wait_until("the title is no longer typed", lambda: not kelpa.board.focused_field())
        errands(*edited)

        kelpa.click(*kelpa.todo_button("Errands", "Close terminal", boards.HANDLE))
        wait_until("the board says that it copied", lambda: kelpa.board.has_text(boards.COPIED))
        assert desktop.clipboard() == "Close terminal"

        kelpa.choose_in_todo_menu("Errands", "Buy milk", boards.DELETE_TODO)
        errands(("Close terminal", TODO), ("Call back", TODO))

        # The same by the list of the whole board.
        kelpa.click(*kelpa.todo_button(boards.ALL_TODOS, "Call back"))
        errands(("Close terminal", TODO), ("Call back", IN_PROGRESS))
        kelpa.click(*kelpa.todo_button(boards.ALL_TODOS, "Call back", boards.GO_TO_TODO))
        wait_until("the todo's goal is chosen", lambda: kelpa.board.selected_column() == "Errands")
        # A completed todo shows in its goal alone.
        kelpa.click(*kelpa.todo_button(boards.ALL_TODOS, "Call back"))
        errands(("Close terminal", TODO), ("Call back", COMPLETED))
        kelpa.wait_for_todos(boards.ALL_TODOS, [("Close terminal", TODO)])
        kelpa.check_stored(path)


def _typed(kelpa):
    field = kelpa.board.focused_field()
    return field and field.text()


def after_an_edit_by_mouse_the_keys_are_the_boards_again(desktop, binary):
    path = desktop.directory / "board.sqlite"
    settings.write(path, goals=[("Home", ["One"]), ("Work", ["Two"])], is_auto_sorting=False)
    desktop.open_xterms("Terminal")
    with Kelpa(desktop, binary, path) as kelpa:
        kelpa.focus()
        kelpa.wait_for_card(boards.UNSORTED, "Terminal")
        kelpa.click(*kelpa.todo_node("Home", "One"))
        wait_until("the title can be typed", kelpa.board.focused_field)
        desktop.type("Three")
        desktop.key("Return")
        wait_until("the title is no longer typed", lambda: not kelpa.board.focused_field())
        kelpa.wait_for_todos("Home", [("Three", TODO)])

        # Space and Escape enter and leave the column that is chosen by a click.
        desktop.click(*kelpa.head(boards.UNSORTED))
        wait_until("the column is chosen", lambda: kelpa.board.selected_column() == boards.UNSORTED)
        desktop.key("space")
        wait_until("the card is chosen", lambda: kelpa.board.selected_card() == "Terminal")
        desktop.key("Escape")
        wait_until("no card is chosen", lambda: kelpa.board.selected_card() is None)

        # Return is for a new todo of the goal that is chosen, not for the one that was edited.
        desktop.click(*kelpa.head("Work"))
        wait_until("the goal is chosen", lambda: kelpa.board.selected_column() == "Work")
        desktop.key("Return")
        wait_until("a todo can be typed", kelpa.board.focused_field)
        assert kelpa.board.focused_field().text() == ""
        desktop.type("Four")
        desktop.key("Return", "Escape")
        kelpa.wait_for_todos("Work", [("Two", TODO), ("Four", TODO)])

        # A click elsewhere keeps what was written.
        kelpa.click(*kelpa.todo_node("Home", "Three"))
        wait_until("the title can be typed", kelpa.board.focused_field)
        desktop.type("Five")
        desktop.click(*kelpa.head("Work"))
        kelpa.wait_for_todos("Home", [("Five", TODO)])
        kelpa.check_stored(path)


def todos_are_moved_by_mouse_within_a_goal_and_to_another(desktop, binary):
    path = desktop.directory / "board.sqlite"
    settings.write(path, goals=[("Home", ["One", "Two", "Three"]), ("Work", ["Four"])],
                   is_auto_sorting=False)
    with Kelpa(desktop, binary, path) as kelpa:
        kelpa.focus()

        def places(home, work, unsorted, board):
            for column, titles in (("Home", home), ("Work", work), (boards.UNSORTED, unsorted),
                                   (boards.ALL_TODOS, board)):
                kelpa.wait_for_todos(column, [(title, TODO) for title in titles.split()])

        def drag(column, title, target):
            desktop.drag(kelpa.centre(*kelpa.todo_node(column, title)), target)

        def row(column, title):
            return kelpa.centre(*kelpa.todo_node(column, title))

        places("One Two Three", "Four", "", "One Two Three Four")
        drag("Home", "Three", row("Home", "One"))
        places("Three One Two", "Four", "", "Three One Two Four")
        # Between the rows of two goals nothing moves, in neither direction.
        drag("Home", "Two", row("Work", "Four"))
        drag("Work", "Four", row("Home", "One"))
        desktop.drag(kelpa.centre(*kelpa.todo_button("Home", "One", boards.HANDLE)), kelpa.head("Work"))
        places("Three Two", "One Four", "", "Three One Two Four")
        # In the list of the whole board they change their order, not their goal.
        drag(boards.ALL_TODOS, "Four", row(boards.ALL_TODOS, "Three"))
        places("Three Two", "Four One", "", "Four Three One Two")
        kelpa.choose_in_todo_menu("Work", "Four", boards.MOVE_TO_GOAL, "Home")
        places("Four Three Two", "One", "", "Four Three One Two")
        drag("Home", "Two", kelpa.head(boards.UNSORTED))
        places("Four Three", "One", "Two", "Four Three One Two")
        kelpa.choose_in_todo_menu(boards.UNSORTED, "Two", boards.MOVE_TO_GOAL, "Work")
        places("Four Three", "One Two", "", "Four Three One Two")
        kelpa.choose_in_todo_menu("Home", "Three", boards.MOVE_TO_GOAL, boards.UNSORTED)
        places("Four", "One Two", "Three", "Four Three One Two")
        kelpa.check_stored(path)


def a_todo_out_of_view_is_reached_by_the_rail(desktop, binary):
    path = desktop.directory / "board.sqlite"
    goals = [(f"Goal {number}", [f"Todo {number}.{at}" for at in range(8)]) for number in range(20)]
    settings.write(path, goals=goals, is_auto_sorting=False)
    with Kelpa(desktop, binary, path) as kelpa:
        kelpa.focus()
        for number in (19, 0):
            kelpa.click(lambda: kelpa.board.rail_entry(f"Goal {number}"), "the entry in the rail")
            wait_until("the goal is chosen", lambda: kelpa.board.selected_column() == f"Goal {number}")
            kelpa.click(*kelpa.todo_button(f"Goal {number}", f"Todo {number}.7"))
            kelpa.wait_for_todos(f"Goal {number}", [
                (f"Todo {number}.{at}", IN_PROGRESS if at == 7 else TODO) for at in range(8)])
        kelpa.quit()
        stored = settings.StoredBoard(settings.read(path))
        for number in range(20):
            assert stored.todos(f"Goal {number}") == [
                (f"Todo {number}.{at}", IN_PROGRESS if at == 7 and number in (0, 19) else TODO)
                for at in range(8)]
