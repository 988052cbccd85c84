"""The program under test: starting it on a desktop, driving it as a person would, ending it."""

import os
import signal

import board as boards
import processes
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
        return next((window for window in self._desktop.windows()
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
        wait_until("the button for a new goal", lambda: self.board.button(boards.NEW_GOAL)).press()
        wait_until("the new goal's title can be typed", self.board.focused_field)
        self._desktop.type(title)

    def create_goal(self, title):
        self.type_new_goal(title)
        self._desktop.key("Return")
        wait_until(f"the goal {title!r} is on the board", lambda: self.board.column(title))

    def wait_for_card(self, column, title, seconds=30.0):
        return wait_until(f"the card {title!r} is in {column!r}",
                          lambda: self.board.card(column, title), seconds)

    def drag_card(self, title, source, target):
        """Drags a card by hand from one column onto another."""
        self.focus()
        start = wait_until("the card has its place", lambda: self._still(
            lambda: self.wait_for_card(source, title).node.centre()))
        end = wait_until("the column has its place", lambda: self._still(
            lambda: self.board.column(target).node.centre()))
        self._desktop.drag(start, end)

    def _still(self, place):
        """A place on the screen once it has stopped moving; None while it moves."""
        try:
            before = place()
            return before if before == place() else None
        except (boards.Gone, AttributeError):
            return None

    def open_move_menu(self, title, source, target):
        """Opens a card's menu and returns its entry for the column `target`."""
        self.focus()
        x, y = wait_until("the card has its place", lambda: self._still(
            lambda: self.wait_for_card(source, title).node.centre()))
        self._desktop.click(x, y, button=3)
        return wait_until(f"the menu entry {target!r}", lambda: self.board.menu_item(target))

    def open_delete_entry(self, goal):
        """Opens a goal's menu and returns its entry that deletes the goal."""
        self.focus()

        def menu_button():
            column = self.board.column(goal)
            found = column and column.node.find(boards.BUTTON_ROLES, lambda n: n == boards.GOAL_ACTIONS)
            return found[0] if found else None

        wait_until(f"the menu of {goal!r}", menu_button).press()
        return wait_until("the entry that deletes the goal",
                          lambda: self.board.menu_item(boards.DELETE_GOAL))
