"""The program under test: starting it on a desktop, driving it as a person would, ending it."""

import os
import signal

import board as boards
import processes
import settings
from processes import wait_until

# What a sanitizer or the toolkit says when something is wrong with the program.
_COMPLAINTS = ("ERROR: AddressSanitizer", "WARNING: ThreadSanitizer", "runtime error:", "ReferenceError:",
               "TypeError:", "Binding loop detected")


class Kelpa:
    """`with Kelpa(desktop, binary, settings) as kelpa:` — running, its window shown, its board
    on the accessibility bus. Without `settings` the arguments say where the board is."""

    def __init__(self, desktop, binary, settings, arguments=()):
        self._desktop = desktop
        self._binary = str(binary)
        self._arguments = list(arguments)
        if settings is not None:
            self._arguments += ["--settings", str(settings)]
        self._process = None
        self._starts = 0
        self.log = None
        self.board = None
        self.window = None

    def __enter__(self):
        self.start()
        return self

    def __exit__(self, kind, *_exception):
        if kind is None and self.is_running():
            self.quit()

    def start(self):
        self._starts += 1
        self.log = self._desktop.directory / f"kelpa-{self._starts:03}.log"
        self._process = processes.start(
            [self._binary, *self._arguments], self._desktop.env, self.log, cwd=self._desktop.env["HOME"])
        self.board = boards.Board(self._process.pid)
        self.window = wait_until("Kelpa's window is shown", self._own_window, 60)
        wait_until("Kelpa's board is on the accessibility bus", self._has_board, 60)

    def _own_window(self):
        self.check_alive()
        windows = (self._desktop.windows() if self._desktop.has_window_manager()
                   else self._desktop.windows_without_manager())
        return next((window for window in windows
                     if window.title == boards.WINDOW and window.pid in (0, self._process.pid)), None)

    def _has_board(self):
        self.check_alive()
        return bool(self.board.columns())

    def is_running(self):
        return self._process is not None and self._process.poll() is None

    def check_alive(self):
        if not self.is_running():
            raise AssertionError(f"Kelpa ended with {self._process.returncode}:\n{self.output()[-4000:]}")

    def output(self):
        """What this run has written to its standard streams."""
        return self.log.read_text(encoding="utf-8", errors="replace")

    def check_output(self):
        found = [line for line in self.output().splitlines()
                 if any(complaint in line for complaint in _COMPLAINTS)]
        if found:
            raise AssertionError("Kelpa complained:\n" + "\n".join(found[:20]))

    def quit(self):
        """Closes the window politely; the program has to end by itself, and well."""
        self._desktop.close(self.window)
        wait_until("Kelpa ends after its window was closed", lambda: not self.is_running(), 30)
        if self._process.returncode != 0:
            raise AssertionError(f"Kelpa ended with {self._process.returncode}")
        self.check_output()

    def kill(self):
        """Ends it at once, as a power cut would."""
        os.kill(self._process.pid, signal.SIGKILL)
        self._process.wait()

    # Gestures

    def focus(self):
        """Makes Kelpa's window the active one."""
        if self._desktop.active_window() != self.window.number:
            self._desktop.run("wmctrl", "-i", "-a", hex(self.window.number))
            wait_until("Kelpa's window is active",
                       lambda: self._desktop.active_window() == self.window.number)

    def type_new_goal(self, title):
        """Opens the sheet for a new goal and types its title, without confirming it."""
        self.focus()
        self.click(lambda: self.board.button(boards.NEW_GOAL), "the button for a new goal")
        wait_until("the new goal's title can be typed", self.board.focused_field)
        self._desktop.type(title)

    def create_goal(self, title):
        self.type_new_goal(title)
        self._desktop.key("Return")
        wait_until(f"the goal {title!r} is on the board", lambda: self.board.column(title))

    def wait_for_card(self, column, title, seconds=30.0):
        def look():
            self.check_alive()
            return self.board.card(column, title)

        return wait_until(f"the card {title!r} is in {column!r}", look, seconds)

    def wait_for_preview(self, column, title):
        def look():
            self.check_alive()
            try:
                card = self.board.card(column, title)
                return card and card.has_preview
            except boards.Gone:
                return False

        wait_until(f"the card {title!r} in {column!r} has a preview", look)

    def click_card(self, column, title):
        """Clicks on the middle of a card, as on a window that one wants to have."""
        self.click(lambda: self._card_node(column, title), f"the card {title!r}")

    def close_card(self, column, title):
        """Clicks on the button of a card that closes its program; it shows below the pointer."""
        def button():
            card = self._card_node(column, title)
            found = card and card.find(boards.BUTTON_ROLES, lambda name: name == boards.CLOSE_PROCESS)
            return found[0] if found else None

        self._desktop.hover(*self.centre(lambda: self._card_node(column, title), f"the card {title!r}"))
        self.click(button, f"the close button of {title!r}")

    def drag_card(self, title, source, target):
        """Drags a card by hand from one column onto another."""
        self.focus()
        start = self.centre(lambda: self._card_node(source, title), f"the card {title!r}")
        end = self.centre(lambda: self._column_node(target), f"the column {target!r}")
        self._desktop.drag(start, end)

    def click(self, find, what, button=1):
        """Clicks on the part that `find` returns, as soon as it is there and does not move."""
        self._desktop.click(*self.centre(find, what), button=button)

    def wait_for_todos(self, column, expected):
        """Waits until the column has these todos: pairs of title and status, from top to bottom."""
        def look():
            self.check_alive()
            return self.board.todos(column) == expected

        try:
            wait_until(f"the todos of {column!r}", look)
        except AssertionError as error:
            raise AssertionError(f"{error}: {expected}, but {self.board.todos(column)}") from None

    def todo_node(self, column, title):
        """A function that finds the todo's row, and what to call it."""
        def find():
            found = self._column(column)
            todo = found and found.todo(title)
            return todo and todo.node

        return find, f"the todo {title!r} in {column!r}"

    def todo_button(self, column, title, name=None):
        """A function that finds a button of the todo's row, that of its status without a name."""
        def find():
            found = self._column(column)
            todo = found and found.todo(title)
            return todo and (todo.button(name) if name else todo.status_button)

        return find, f"the button {name or 'of the status'!r} of {title!r} in {column!r}"

    def choose_in_todo_menu(self, column, title, *entries):
        """Opens a todo's menu and chooses an entry, or one of the menu that an entry opens."""
        self.focus()
        self.click(*self.todo_node(column, title), button=3)
        for entry in entries:
            self._chooser(entry)()

    def check_stored(self, path):
        """Quits, compares the file with what the board showed, starts again, and compares again."""
        shown = self._shown()
        self.quit()
        stored = settings.StoredBoard(settings.read(path))
        for title in (*stored.goal_titles, boards.UNSORTED):
            todos = stored.todos(None if title == boards.UNSORTED else title)
            assert shown[title] == todos, f"{title!r}: shown {shown[title]}, stored {todos}"
        assert [title for title in shown if title not in (boards.UNSORTED, *boards.NOT_GOALS)] == \
            stored.goal_titles, f"shown {list(shown)}, stored {stored.goal_titles}"
        self.start()
        try:
            wait_until("the board is as it was", lambda: self._shown() == shown)
        except AssertionError as error:
            raise AssertionError(f"{error}: {shown}, but {self._shown()}") from None

    def _shown(self):
        """The todos of every column."""
        return {title: self.board.todos(title) for title in self.board.columns()}

    def _column(self, title):
        return self.board.column(title)

    def head(self, title):
        """A point in the head of a column, beside its title and away from its buttons."""
        x, y = 0, 0

        def look():
            nonlocal x, y
            column = self._column_node(title)
            place = column and column.frame()
            if not place or place[2] <= 0 or column.frame() != place:
                return False
            x, y = place[0] + 40, place[1] + 28
            return True

        wait_until(f"the column {title!r} has its place", look)
        return x, y

    def _card_node(self, column, title):
        card = self.board.card(column, title)
        return card and card.node

    def _column_node(self, title):
        column = self.board.column(title)
        return column and column.node

    def centre(self, find, what):
        """Where on the screen the part is, once it has stopped moving."""
        def still():
            self.check_alive()
            try:
                part = find()
                place = part and part.frame()
                return part.centre() if place and place[2] > 0 and part.frame() == place else None
            except boards.Gone:
                return None

        return wait_until(f"{what} has its place", still)

    def open_move_menu(self, title, source, target):
        """Opens a card's menu; returns a function that chooses the column `target` in it."""
        self.focus()
        self.click(lambda: self._card_node(source, title), f"the card {title!r}", button=3)
        return self._chooser(target)

    def open_goal_menu(self, goal, entry):
        """Opens a goal's menu; returns a function that chooses `entry` in it."""
        self.focus()

        def menu_button():
            column = self._column_node(goal)
            found = column and column.find(boards.BUTTON_ROLES, lambda n: n == boards.GOAL_ACTIONS)
            return found[0] if found else None

        self.click(menu_button, f"the menu of {goal!r}")
        return self._chooser(entry)

    def _chooser(self, entry):
        x, y = self.centre(lambda: self.board.menu_item(entry), f"the menu entry {entry!r}")
        return lambda: self._desktop.click(x, y)
