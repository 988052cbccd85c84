"""Every change of the board is taken back and done again, down to the very same records."""

import json

import board as boards
import settings
from board import COMPLETED, IN_PROGRESS, TODO
from kelpa import Kelpa
from processes import wait_until

_UNDO = "Undo"


def _records(path):
    """The goals with their todos, the todos of no goal, and which window is in which goal."""
    values = settings.read_live(path)
    # What was never stored is as empty as what was taken back.
    return [json.loads(values.get(key) or empty)
            for key, empty in (("kelpa.goals", b"[]"), ("kelpa.unassignedTodos", b"[]"),
                               ("kelpa.windowAssignments", b"{}"))]


class _History:
    def __init__(self, desktop, kelpa, path):
        self._desktop = desktop
        self._kelpa = kelpa
        self._path = path

    def records(self):
        return _records(self._path)

    def are(self, what, records):
        try:
            wait_until(what, lambda: self.records() == records, seconds=10)
        except AssertionError:
            raise AssertionError(f"{what}: {self.records()} instead of {records}") from None

    def step(self, what, act, is_done):
        """Does something, and takes it back and does it again by each of the keys."""
        before = self.records()
        act()
        wait_until(what, is_done)
        wait_until(f"{what}, on the disk", lambda: self.records() != before)
        after = self.records()
        for redo in ("ctrl+shift+z", "ctrl+y"):
            self._desktop.key("ctrl+z")
            self.are(f"{what}, undone", before)
            wait_until(f"{what}, no longer shown", lambda: not is_done())
            self._desktop.key(redo)
            self.are(f"{what}, redone by {redo}", after)
            wait_until(f"{what}, shown again", is_done)


def every_change_is_undone_and_redone_by_key(desktop, binary):
    path = desktop.directory / "board.sqlite"
    settings.write(path, goals=[("Home", ["One", "Two"]), ("Work", ["Three"])], is_auto_sorting=False)
    desktop.open_xterms("First", "Second")
    with Kelpa(desktop, binary, path) as kelpa:
        kelpa.focus()
        board = kelpa.board
        history = _History(desktop, kelpa, path)
        for title in ("First", "Second"):
            kelpa.wait_for_card(boards.UNSORTED, title)

        def titles_are(*titles):
            return lambda: board.goal_titles() == list(titles)

        def rename():
            kelpa.open_goal_menu("Work", "Rename goal")()
            wait_until("the title can be typed", board.focused_field)
            desktop.key("ctrl+a")
            desktop.type("Office")
            desktop.key("Return")

        history.step("a new goal", lambda: kelpa.create_goal("Sail"), titles_are("Home", "Work", "Sail"))
        history.step("a new name", rename, titles_are("Home", "Office", "Sail"))
        history.step("another order of goals",
                     lambda: desktop.drag(kelpa.head("Sail"), kelpa.head("Home")),
                     titles_are("Sail", "Home", "Office"))
        history.step("a window in a goal", lambda: kelpa.open_move_menu("First", boards.UNSORTED, "Home")(),
                     lambda: board.card("Home", "First"))
        history.step("a window in a goal by hand",
                     lambda: kelpa.drag_card("Second", boards.UNSORTED, "Home"),
                     lambda: board.card("Home", "Second"))
        history.step("another order of todos",
                     lambda: desktop.drag(kelpa.centre(*kelpa.todo_node("Home", "Two")),
                                          kelpa.centre(*kelpa.todo_node("Home", "One"))),
                     lambda: board.todos("Home") == [("Two", TODO), ("One", TODO)])
        history.step("a todo that is begun", lambda: kelpa.click(*kelpa.todo_button("Home", "One")),
                     lambda: board.todos("Home") == [("Two", TODO), ("One", IN_PROGRESS)])
        history.step("a todo in another goal",
                     lambda: kelpa.choose_in_todo_menu("Office", "Three", boards.MOVE_TO_GOAL, "Sail"),
                     lambda: board.todos("Sail") == [("Three", TODO)])
        history.step("a goal with todos and windows that is deleted",
                     lambda: kelpa.open_goal_menu("Home", boards.DELETE_GOAL)(),
                     titles_are("Sail", "Office"))
        kelpa.wait_for_card(boards.UNSORTED, "First")
        kelpa.wait_for_card(boards.UNSORTED, "Second")
        # Back through all of it, and the board is the first one.
        for _ in range(9):
            desktop.key("ctrl+z")
        wait_until("the first board", lambda: _is_first(board))
        kelpa.check_stored(path)


def _is_first(board):
    return (board.goal_titles() == ["Home", "Work"]
            and board.todos("Home") == [("One", TODO), ("Two", TODO)]
            and board.todos("Work") == [("Three", TODO)]
            and board.cards() == {"First": boards.UNSORTED, "Second": boards.UNSORTED})


def what_is_deleted_comes_back_by_the_button_of_the_toast(desktop, binary):
    path = desktop.directory / "board.sqlite"
    settings.write(path, goals=[("Home", ["One", "Two", "Open"]), ("Work", [])], is_auto_sorting=False)
    desktop.open_xterms("First")
    with Kelpa(desktop, binary, path) as kelpa:
        kelpa.focus()
        history = _History(desktop, kelpa, path)
        kelpa.drag_card("First", boards.UNSORTED, "Home")
        kelpa.wait_for_card("Home", "First")
        for expected in (IN_PROGRESS, COMPLETED):
            kelpa.click(*kelpa.todo_button("Home", "Two"))
            kelpa.wait_for_todos("Home", [("One", TODO), ("Two", expected),
                                           ("Open", TODO)])
        before = history.records()

        kelpa.open_goal_menu("Home", boards.DELETE_GOAL)()
        wait_until("the goal is gone", lambda: kelpa.board.goal_titles() == ["Work"])
        wait_until("the goal is gone from the disk", lambda: history.records() != before)
        kelpa.click(lambda: kelpa.board.button(_UNDO), "the toast's button")
        history.are("the goal is back", before)
        kelpa.wait_for_card("Home", "First")
        kelpa.wait_for_todos("Home", [("One", TODO), ("Two", COMPLETED), ("Open", TODO)])
        wait_until("the toast offers nothing more", lambda: kelpa.board.button(_UNDO) is None)

        kelpa.choose_in_todo_menu("Home", "One", boards.DELETE_TODO)
        kelpa.wait_for_todos("Home", [("Two", COMPLETED), ("Open", TODO)])
        kelpa.click(lambda: kelpa.board.button(_UNDO), "the toast's button")
        history.are("the todo is back", before)
        kelpa.wait_for_todos("Home", [("One", TODO), ("Two", COMPLETED), ("Open", TODO)])
        kelpa.check_stored(path)
