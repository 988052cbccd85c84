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
    on the accessibility bus. Without `settings` the arguments say where the board is. `env` is
    told to this program alone, beside what all programs of the desktop are told."""

    def __init__(self, desktop, binary, settings, arguments=(), env=None):
        self._desktop = desktop
        self._env = env or {}
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
        self.launch()
        self.await_board()

    def launch(self, seconds=60):
        """Starts it, until its window is shown; the board may not be on the accessibility bus."""
        self.begin()
        self.window = wait_until("Kelpa's window is shown", self._own_window, seconds)

    def begin(self):
        """Starts it, and waits for nothing."""
        self._starts += 1
        self.log = self._desktop.directory / f"kelpa-{self._starts:03}.log"
        self._process = processes.start(
            [self._binary, *self._arguments], self._desktop.env | self._env, self.log,
            cwd=self._desktop.env["HOME"])
        self.board = boards.Board(self._process.pid)

    def await_board(self, seconds=60):
        wait_until("Kelpa's board is on the accessibility bus", self._has_board, seconds)

    def _own_window(self):
        self.check_alive()
        return self.shown_window()

    def shown_window(self):
        """Kelpa's window as the desktop lists it; None while it is closed."""
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
        """Closes the window politely, then ends the program where it goes on listening; it has to end by
        itself, and well."""
        self._desktop.close(self.window)
        wait_until("Kelpa's window is closed", self._is_closed, 30)
        if self.is_running():
            self.terminate()
        wait_until("Kelpa ends", lambda: not self.is_running(), 30)
        if self._process.returncode != 0:
            raise AssertionError(f"Kelpa ended with {self._process.returncode}")
        self.check_output()

    def _is_closed(self):
        return not self.is_running() or self.shown_window() is None

    def kill(self):
        """Ends it at once, as a power cut would."""
        os.kill(self._process.pid, signal.SIGKILL)
        self._process.wait()

    def terminate(self):
        """Asks it to end, as a session that ends does."""
        self._process.terminate()

    def process_id(self):
        return self._process.pid

    def wait(self, seconds=30):
        """The status that the program ends with, by itself."""
        return self._process.wait(timeout=seconds)

    def forget(self):
        """Its process, for whoever waits for its end; `start` begins another."""
        process, self._process = self._process, None
        return process

    # Gestures

    def focus(self):
        """Makes Kelpa's window the active one."""
        if self._desktop.active_window() != self.window.number:
            self._desktop.activate(self.window)
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

    def open_sheet(self, goal):
        """Opens the sheet that chooses windows for the goal; its search field has the keyboard."""
        self.click(*self.column_button(goal, boards.ADD_WINDOWS))
        wait_until("the sheet's search field can be typed into", self._is_sheet_ready)

    def _is_sheet_ready(self):
        try:
            field = self.board.focused_field()
            return field is not None and field.name == boards.SEARCH
        except boards.Gone:
            return False

    def wait_for_card(self, column, title, seconds=30.0):
        def look():
            self.check_alive()
            return self.board.card(column, title)

        return wait_until(f"the card {title!r} is in {column!r}", look, seconds)

    def wait_for_goals(self, *titles):
        """Waits until these goals are shown, in this order."""
        wait_until(f"the goals are {titles}", lambda: self.board.goal_titles() == list(titles))

    def wait_for_previews(self, column):
        """Waits until every card of the column has a preview. Until then the cards change places,
        for those without one come last, and a click would hit another card than it was meant for."""
        def look():
            self.check_alive()
            try:
                found = self.board.column(column)
                return found and found.cards and all(card.has_preview for card in found.cards)
            except boards.Gone:
                return False

        wait_until(f"every card in {column!r} has a preview", look)

    def click_card(self, column, title):
        """Clicks on the middle of a card, as on a window that one wants to have."""
        self.wait_for_previews(column)
        self.click(lambda: self._card_node(column, title), f"the card {title!r}")

    def close_card(self, column, title):
        """Clicks on the button of a card that closes its program; it shows below the pointer."""
        def button():
            card = self._card_node(column, title)
            found = card and card.find(boards.BUTTON_ROLES, lambda name: name == boards.CLOSE_PROCESS)
            return found[0] if found else None

        self.wait_for_previews(column)
        self._desktop.hover(*self.centre(lambda: self._card_node(column, title), f"the card {title!r}"))
        self.click(button, f"the close button of {title!r}")

    def drag_card(self, title, source, target):
        """Drags a card by hand from one column onto another."""
        self.focus()
        start = self.card_centre(source, title)
        end = self.centre(lambda: self._column_node(target), f"the column {target!r}")
        self._desktop.drag(start, end)

    def card_centre(self, column, title):
        self.wait_for_previews(column)
        return self.centre(lambda: self._card_node(column, title), f"the card {title!r}")

    def ground(self, title):
        """A point of a column where nothing stands, at its left edge."""
        return self._place(lambda: self._column_node(title), f"the column {title!r}", _at_edge)

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

    def column_button(self, column, name):
        """A function that finds a button in a column, and what to call it."""
        def find():
            node = self._column_node(column)
            found = node and node.find(boards.BUTTON_ROLES, lambda found: found == name)
            return found[0] if found else None

        return find, f"the button {name!r} of {column!r}"

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
        assert [title for title in shown if title not in (boards.UNSORTED, boards.ALL_TODOS)] == \
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
        return self._place(lambda: self._column_node(title), f"the column {title!r}", _in_head)

    def _card_node(self, column, title):
        card = self.board.card(column, title)
        return card and card.node

    def _column_node(self, title):
        column = self.board.column(title)
        return column and column.node

    def centre(self, find, what):
        """The middle of the part that `find` returns, on the screen."""
        return self._place(find, what, _in_middle)

    def _place(self, find, what, point):
        """The part's `point` on the screen, once the part has stopped moving and shows it."""
        before = None

        def reachable():
            nonlocal before
            self.check_alive()
            try:
                part = find()
                frame = part and part.frame()
                # Looks in one go are not enough: what opens or moves may rest for a frame.
                before, previous = frame, before
                if not frame or frame[2] <= 0 or frame != previous:
                    return None
                return point(frame) if self._is_revealed(part, *point(frame)) else None
            except boards.Gone:
                return None

        return wait_until(f"{what} has its place", reachable)

    def _is_revealed(self, part, x, y):
        """Whether a point of the part is to be seen. Otherwise makes a step towards it: turns the
        wheel over the board, or clicks on the head of a column that does not show all it has."""
        board = part.board_around()
        if board is None:
            return True
        frame = board.frame()
        column = part.column_around()
        if column is not None and _wheel_towards(column.frame(), x, y) is not None:
            x, y = _in_head(column.frame())
            if _wheel_towards(frame, x, y) is None:
                self._desktop.click(x, y)
                return False
        turn = _wheel_towards(frame, x, y)
        if turn is not None:
            # At the edge, where no list within the board takes the wheel for itself.
            self._desktop.click(frame[0] + frame[2] - 6, frame[1] + frame[3] - 6, button=turn)
        return turn is None

    def open_move_menu(self, title, source, target):
        """Opens a card's menu; returns a function that chooses the column `target` in it."""
        self.focus()
        self.wait_for_previews(source)
        self.click(lambda: self._card_node(source, title), f"the card {title!r}", button=3)
        return self._chooser(target)

    def open_goal_menu(self, goal, entry):
        """Opens a goal's menu; returns a function that chooses `entry` in it."""
        self.focus()
        self.click(*self.column_button(goal, boards.GOAL_ACTIONS))
        return self._chooser(entry)

    def _chooser(self, entry):
        x, y = self.centre(lambda: self.board.menu_item(entry), f"the menu entry {entry!r}")
        return lambda: self._desktop.click(x, y)


def _in_middle(frame):
    x, y, width, height = frame
    return x + width // 2, y + height // 2


def _in_head(frame):
    return frame[0] + 40, frame[1] + 28


def _at_edge(frame):
    return frame[0] + 4, frame[1] + frame[3] // 2


def _wheel_towards(frame, x, y):
    """The button of the wheel that brings the point into the frame, or None where it is inside."""
    left, top, width, height = frame
    if y < top or y >= top + height:
        return 4 if y < top else 5
    if x < left or x >= left + width:
        return 6 if x < left else 7
    return None
