"""The board by assistive programs alone: every part is found and acted on through the accessibility
bus. Only words are typed, into the field that has the keyboard."""

import board as boards
import settings
from assistant import Assistant
from board import COMPLETED, IN_PROGRESS, TODO
from kelpa import Kelpa
from processes import wait_until

_TODO_ACTIONS = "More todo actions"


def a_days_work_is_done_through_the_accessibility_bus(desktop, binary):
    path = desktop.directory / "board.sqlite"
    settings.write(path, goals=[("Idle", [])])
    desktop.open_xterms("First terminal", "Second terminal", "Third terminal")
    with Kelpa(desktop, binary, path) as kelpa:
        board = kelpa.board
        kelpa.focus()
        assistant = Assistant(desktop, kelpa)
        for title in ("First terminal", "Second terminal", "Third terminal"):
            kelpa.wait_for_card(boards.UNSORTED, title)

        assistant.press_button(boards.NEW_GOAL)
        assistant.write("Release", lambda: assistant.press_button(boards.CREATE))
        wait_until("the goal is there", lambda: board.column("Release"))

        assistant.press_button(boards.ADD_TODO, "Release")
        for todo in ("Write", "Build", "Tell"):
            assistant.write(todo, assistant.confirm_field)
        kelpa.wait_for_todos("Release", [("Write", TODO), ("Build", TODO), ("Tell", TODO)])
        assistant.press_button(boards.CANCEL, "Release")
        for status in (IN_PROGRESS, COMPLETED):
            assistant.press(lambda: kelpa.todo_button("Release", "Build")[0](), "a status is pressed")
            wait_until(f"the todo is {status!r}",
                       lambda status=status: ("Build", status) in (board.todos("Release") or ()))

        assistant.press_button(boards.ADD_WINDOWS, "Release")
        for title in ("First terminal", "Third terminal"):
            assistant.press(lambda title=title: board.choice(f"XTerm: {title}"), f"{title!r} is chosen")
        assistant.press_button("Add 2 windows")
        kelpa.wait_for_card("Release", "First terminal")
        kelpa.wait_for_card("Release", "Third terminal")
        kelpa.wait_for_card(boards.UNSORTED, "Second terminal")

        assistant.press_button(boards.GOAL_ACTIONS, "Release")
        assistant.choose("Rename goal")
        assistant.write("Release 0.1", lambda: assistant.press_button("Save"))
        wait_until("the goal has its new name", lambda: board.column("Release 0.1"))

        assistant.press_button("Priority: P2", "Release 0.1")
        assistant.press(lambda: _chosen(board, "P2"), "the chosen priority is pressed again")
        assistant.press_button("Priority: P2", "Release 0.1")
        assistant.choose("P0")
        wait_until("the goal has its priority", lambda: board.button("Priority: P0"))

        assistant.press_button("Hide Empty")
        wait_until("only one goal is shown", lambda: board.goal_titles() == ["Release 0.1"])
        assistant.press_button("Language")
        assistant.choose("Deutsch")
        wait_until("the buttons speak German", lambda: board.button("Alle anzeigen"))
        assistant.press_button("Alle anzeigen")
        wait_until("both goals are shown", lambda: board.column("Idle"))
        assistant.press_button("Sprache")
        wait_until("the menu tells which language it is", lambda: _chosen(board, "Deutsch"))
        assistant.choose("English")
        wait_until("the buttons speak English", lambda: board.button("Hide Empty"))

        kelpa.check_stored(path)
        stored = settings.StoredBoard(settings.read_live(path))
        assert stored.goal_titles == ["Release 0.1", "Idle"], stored
        assert stored.window_counts == {"Release 0.1": 2, "Idle": 0}, stored


def goals_todos_and_windows_are_moved_deleted_and_closed_through_the_accessibility_bus(desktop, binary):
    path = desktop.directory / "board.sqlite"
    settings.write(path, goals=[("Home", ["One", "Two"]), ("Work", ["Three"]), ("Rest", [])],
                   is_auto_sorting=False)
    terminal = desktop.start_xterm("First terminal")
    desktop.wait_for_window("First terminal")
    with Kelpa(desktop, binary, path) as kelpa:
        board = kelpa.board
        kelpa.focus()
        assistant = Assistant(desktop, kelpa)
        kelpa.wait_for_card(boards.UNSORTED, "First terminal")

        def press_todo(column, title, name=None):
            find, what = kelpa.todo_button(column, title, name)
            assistant.press(find, what)

        def goals_are(*titles):
            wait_until(f"the goals are {titles}", lambda: board.goal_titles() == list(titles))

        # Goals, in their own order.
        assistant.press_button(boards.GOAL_ACTIONS, "Home")
        assistant.choose("Move goal right")
        goals_are("Work", "Home", "Rest")
        assistant.press_button(boards.GOAL_ACTIONS, "Rest")
        assistant.choose("Move goal left")
        goals_are("Work", "Rest", "Home")

        # Todos, within their goal and to another one.
        press_todo("Home", "Two", _TODO_ACTIONS)
        assistant.choose("Move todo up")
        kelpa.wait_for_todos("Home", [("Two", TODO), ("One", TODO)])
        press_todo("Home", "One", _TODO_ACTIONS)
        assistant.choose(boards.MOVE_TO_GOAL)
        assistant.choose("Rest")
        kelpa.wait_for_todos("Rest", [("One", TODO)])
        kelpa.wait_for_todos("Home", [("Two", TODO)])

        # From the list of the whole board.
        press_todo(boards.ALL_TODOS, "One")
        kelpa.wait_for_todos("Rest", [("One", IN_PROGRESS)])
        press_todo(boards.ALL_TODOS, "One", boards.GO_TO_TODO)
        wait_until("the todo's goal is chosen", lambda: board.selected_column() == "Rest")

        # What is deleted comes back.
        press_todo("Rest", "One", _TODO_ACTIONS)
        assistant.choose(boards.DELETE_TODO)
        kelpa.wait_for_todos("Rest", [])
        assistant.press_button("Undo")
        kelpa.wait_for_todos("Rest", [("One", IN_PROGRESS)])
        assistant.press(lambda: _card_button(board, boards.MOVE_TO_GOAL), "the card's menu is opened")
        assistant.choose("Rest")
        kelpa.wait_for_card("Rest", "First terminal")
        assistant.press_button(boards.GOAL_ACTIONS, "Rest")
        assistant.choose(boards.DELETE_GOAL)
        goals_are("Work", "Home")
        kelpa.wait_for_card(boards.UNSORTED, "First terminal")
        assistant.press_button("Undo")
        goals_are("Work", "Rest", "Home")
        kelpa.wait_for_card("Rest", "First terminal")
        kelpa.wait_for_todos("Rest", [("One", IN_PROGRESS)])

        assistant.press(lambda: _card_button(board, boards.CLOSE_PROCESS), "the card's program is closed")
        wait_until("the program has ended", lambda: terminal.poll() is not None)
        wait_until("its card is gone", lambda: not board.cards())
        kelpa.check_stored(path)


def _card_button(board, name):
    """The button of the only card, or None."""
    found = [button for column in board.columns().values() for card in column.cards
             for button in card.node.find(boards.BUTTON_ROLES, lambda each: each == name)]
    return found[0] if found else None


def _chosen(board, entry):
    """The entry of an open menu if it has the check mark."""
    found = board.menu_item(entry)
    return found if found is not None and found.is_checked else None
