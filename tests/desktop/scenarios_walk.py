"""What assistive programs are told of every part of the board, in each of its states."""

import contextlib

import board as boards
import inspection
import settings
from disks import Disk
from harness import on_desktop
from kelpa import Kelpa
from processes import wait_until

_GOALS = [("Home", ["Water the plants", "Call back"]), ("Work", [])]
_SHEET = "Add windows to “Home”"


class _Walk:
    def __init__(self, desktop, kelpa):
        self._desktop = desktop
        self.kelpa = kelpa
        self.board = kelpa.board

    def look(self, state, holds, marked=(), unavailable=()):
        """Waits until nothing is wrong with any part, parts with the names `holds` show, and none but
        `marked` are checked or selected and none but `unavailable` cannot be gone to."""
        seen = None

        def is_as_wanted():
            nonlocal seen
            self.kelpa.check_alive()
            try:
                parts = inspection.parts(self.kelpa)
            except boards.Gone:
                return False
            names = {part.name for part in parts}
            seen = (inspection.faults(parts), [name for name in holds if name not in names],
                    sorted(part.name for part in parts if part.states & {"checked", "selected"}),
                    sorted(part.name for part in parts if part.is_control and not part.is_focusable))
            return seen == ([], [], sorted(marked), sorted(unavailable))

        try:
            wait_until(state, is_as_wanted, seconds=10)
        except AssertionError:
            faults, missing, found, closed = seen or ("nothing was found",) * 4
            raise AssertionError(f"{state}: wrong: {faults}; missing: {missing}; marked: {found}; "
                                 f"unavailable: {closed}") from None

    def press(self, name, column=None):
        def find():
            held = self.board.column(column) if column else None
            found = held and held.node.find(boards.BUTTON_ROLES, lambda each: each == name)
            return found[0] if found else self.board.button(name) if column is None else None

        wait_until(f"{name!r} is there", find).press()

    def close_menu(self, entry):
        self._desktop.key("Escape")
        wait_until("the menu is closed", lambda: self.board.menu_item(entry) is None)


@on_desktop(size="2100x1000x24")
def every_part_of_an_empty_board_is_told_well(desktop, binary):
    path = desktop.directory / "board.sqlite"
    settings.write(path)
    with Kelpa(desktop, binary, path) as kelpa:
        kelpa.focus()
        walk = _Walk(desktop, kelpa)
        walk.look("an empty board", [
            boards.SEARCH, "Refresh windows", "Hide Empty", "Language", boards.NEW_GOAL, boards.ALL_TODOS,
            boards.UNSORTED, boards.ADD_TODO, "No todos yet", "Drag a window here", "Add goal",
            "Getting started", "Type what you are working on", "Drag a window’s card onto the goal"],
            marked=[boards.AUTO_SORT])
        wait_until("auto-sort", lambda: kelpa.board.choice(boards.AUTO_SORT)).press()
        walk.look("goals in their own order", [boards.AUTO_SORT])
        walk.press(boards.NEW_GOAL)
        walk.look("the sheet for a new goal", ["Create a goal", "Goal name", boards.CANCEL],
                  unavailable=[boards.CREATE])
        # What cannot be pressed does nothing when it is pressed all the same.
        walk.press(boards.CREATE)
        wait_until("the title can be typed", kelpa.board.focused_field)
        desktop.type("Sail")
        walk.look("the sheet with a title", ["Create a goal", "Goal name", boards.CREATE])
        walk.press(boards.CREATE)
        wait_until("the goal is there", lambda: kelpa.board.goal_titles() == ["Sail"])
        walk.press("Hide Empty")
        # The text says what a press would do, so that it is not checked as well.
        walk.look("a board that hides empty goals", ["Show All"])


@contextlib.contextmanager
def _walk_over_full_board(desktop, binary):
    """Two goals, and two windows, the first of which is assigned to the first goal."""
    path = desktop.directory / "board.sqlite"
    settings.write(path, goals=_GOALS, is_auto_sorting=False)
    desktop.open_xterms("First", "Second")
    with Kelpa(desktop, binary, path) as kelpa:
        kelpa.focus()
        kelpa.open_move_menu("First", boards.UNSORTED, "Home")()
        kelpa.wait_for_card("Home", "First")
        yield _Walk(desktop, kelpa)


def every_part_of_a_full_board_and_its_menus_is_told_well(desktop, binary):
    with _walk_over_full_board(desktop, binary) as walk:
        kelpa = walk.kelpa
        full = ["(2)Home", "(0)Work", "XTerm: First", "XTerm: Second", boards.PREVIEW, boards.MOVE_TO_GOAL,
                boards.CLOSE_PROCESS, "Water the plants", "Todo status: Todo", "More todo actions",
                boards.GO_TO_TODO, boards.HANDLE, "2 unfinished todos", "Priority: P2",
                boards.ADD_WINDOWS, boards.GOAL_ACTIONS, "Add goal"]
        walk.look("a full board", full)
        desktop.click(*kelpa.head("Home"))
        # The goal's column and its entry beside the board.
        walk.look("a goal that is chosen", full, marked=["Home", "(2)Home"])
        desktop.key("space")
        walk.look("a card that is chosen", full, marked=["Home", "(2)Home", "XTerm: First"])
        desktop.key("Escape")
        chosen = ["Home", "(2)Home"]

        walk.press("Priority: P2", "Home")
        walk.look("the priority menu", ["Priority", "P0", "P3"], marked=[*chosen, "P2"])
        walk.close_menu("P0")
        walk.press(boards.GOAL_ACTIONS, "Home")
        walk.look("the menu of the first goal", [boards.GOAL_ACTIONS, "Rename goal", "Move goal right"],
                  marked=chosen, unavailable=["Move goal left", "Move to the beginning"])
        wait_until("the entry", lambda: kelpa.board.menu_item("Pin to desktop")).press()
        walk.look("the desktops for a goal", ["Pin to desktop", "Not pinned"],
                  marked=[*chosen, "Not pinned"], unavailable=["Move goal left", "Move to the beginning"])
        walk.close_menu("Not pinned")
        if kelpa.board.menu_item(boards.DELETE_GOAL):
            walk.close_menu(boards.DELETE_GOAL)
        walk.press(boards.MOVE_TO_GOAL, boards.UNSORTED)
        # Its heading is an entry that cannot be chosen.
        walk.look("a window's menu", ["Home", "Work", boards.NEW_GOAL],
                  marked=[*chosen, boards.UNSORTED], unavailable=[boards.MOVE_TO_GOAL])
        walk.close_menu("Work")
        walk.press("More todo actions", "Home")
        walk.look("the menu of the first todo", ["More todo actions", "Delete todo", "Move todo down"],
                  marked=chosen, unavailable=["Move todo up", "Move to the beginning"])
        wait_until("the entry", lambda: kelpa.board.menu_item(boards.MOVE_TO_GOAL)).press()
        walk.look("the goals for a todo", [boards.MOVE_TO_GOAL, "Work", boards.UNSORTED],
                  marked=chosen, unavailable=["Move todo up", "Move to the beginning"])
        walk.close_menu("Work")
        if kelpa.board.menu_item(boards.DELETE_TODO):
            walk.close_menu(boards.DELETE_TODO)
        walk.press("Language")
        walk.look("the language menu", ["Language", "Deutsch", "日本語"], marked=[*chosen, "English"])
        walk.close_menu("Deutsch")


def every_part_of_sheets_fields_and_the_toast_is_told_well(desktop, binary):
    with _walk_over_full_board(desktop, binary) as walk:
        kelpa = walk.kelpa

        kelpa.open_goal_menu("Home", "Rename goal")()
        wait_until("the title can be typed", kelpa.board.focused_field)
        walk.look("the sheet that renames", ["Rename goal", "Goal name", boards.CANCEL, "Save"])
        desktop.key("ctrl+a", "space")
        walk.look("a blank name", ["Rename goal"], unavailable=["Save"])
        desktop.key("Escape")

        kelpa.open_sheet("Home")
        # The window that is in the goal already is checked for good.
        walk.look("the sheet of windows", [_SHEET, boards.SEARCH, "XTerm: Second", "0 windows selected"],
                  marked=["XTerm: First"], unavailable=["Add 0 windows"])
        in_goal = kelpa.board.choice("XTerm: First")
        assert in_goal.has_state(boards.Atspi.StateType.READ_ONLY)
        in_goal.press()
        kelpa.board.choice("XTerm: Second").press()
        walk.look("a window that is chosen", ["1 windows selected", "Add 1 windows"],
                  marked=["XTerm: First", "XTerm: Second"])
        desktop.key("Escape")
        wait_until("the sheet is gone", lambda: kelpa.board.choice("XTerm: First") is None)

        kelpa.click(*kelpa.todo_node("Home", "Call back"))
        wait_until("the title can be typed", kelpa.board.focused_field)
        walk.look("a todo that is edited", ["Edit todo", boards.CANCEL])
        desktop.key("Escape")
        for column in ("Home", boards.ALL_TODOS, boards.UNSORTED):
            walk.press(boards.ADD_TODO, column)
            wait_until("a todo can be typed", kelpa.board.focused_field)
            # The goal for which a todo was asked last stays chosen.
            walk.look(f"a todo that is added to {column!r}", [boards.ADD_TODO, boards.CANCEL],
                      marked=["Home", "(2)Home"])
            desktop.key("Escape")
            wait_until("nothing is typed", lambda: not kelpa.board.focused_field())

        kelpa.open_goal_menu("Work", boards.DELETE_GOAL)()
        walk.look("the toast of a deletion", ["Undo"], marked=["Home", "(2)Home"])


@on_desktop(has_window_manager=False)
def every_part_of_the_banner_is_told_well(desktop, binary):
    path = desktop.directory / "board.sqlite"
    settings.write(path, goals=_GOALS, is_auto_sorting=False)
    with Kelpa(desktop, binary, path) as kelpa:
        _Walk(desktop, kelpa).look("the banner", [boards.NEEDS_WINDOW_MANAGER])
        # Somebody has to close its window.
        desktop.start_window_manager()
        kelpa.focus()


def every_part_of_trouble_with_the_file_is_told_well(desktop, binary):
    path = desktop.directory / "board.sqlite"
    settings.write(path, goals=_GOALS, is_auto_sorting=False)
    disk = Disk(desktop, binary)
    with Kelpa(desktop, binary, path, env=disk.env) as kelpa:
        walk = _Walk(desktop, kelpa)
        disk.fill()
        kelpa.click(*kelpa.todo_button("Home", "Call back"))
        walk.look("the banner", [boards.DISK_FULL, boards.TRY_AGAIN])
        desktop.close(kelpa.window)
        walk.look("the question", [boards.CHANGES_UNSAVED, boards.CLOSE_ANYWAY, boards.CANCEL])
        desktop.key("Escape")
        wait_until("the question is gone", lambda: not kelpa.board.button(boards.CLOSE_ANYWAY))
        disk.make_room()
