"""Other programs that are typed into, and what they have heard of it."""

import pathlib
import sys

from processes import wait_until


class _Program:
    """A program of the desktop with one window and a file that it writes what it hears to."""

    def __init__(self, desktop, title):
        self._desktop = desktop
        self.title = title
        self.window = None

    def _await_window(self):
        self.window = self._desktop.wait_for_window(self.title)

    def focus(self):
        self._desktop.activate(self.window)
        wait_until(f"{self.title!r} has the keyboard", self.has_keyboard)

    def has_keyboard(self):
        return self._desktop.active_window() == self.window.number


class Typing(_Program):
    """A program that writes down every line that is typed into it: an xterm, or what `start` starts, from a
    title and the file to write to."""

    def __init__(self, desktop, title, start=None):
        super().__init__(desktop, title)
        self.path = desktop.directory / f"{title.replace(' ', '-')}.typed"
        if start:
            start(title, self.path)
        else:
            desktop.start_xterm(title, "sh", "-c", f"cat > {self.path}")
        self._await_window()

    def lines(self):
        return self.path.read_text().splitlines() if self.path.exists() else []

    def type_sentinel(self, word):
        """What was pressed before has been seen by everybody once this has arrived."""
        self._desktop.type(word + "\n")
        wait_until(f"{word!r} is typed into the terminal", lambda: word in "".join(self.lines()))


class KeyLog(_Program):
    """A window that writes down every key that comes to it."""

    def __init__(self, desktop, title):
        super().__init__(desktop, title)
        self._log = desktop.directory / f"{title.replace(' ', '-')}.keys"
        program = pathlib.Path(__file__).with_name("key_log.py")
        desktop.start(sys.executable, "-B", program, title, log=self._log)
        self._await_window()
        self._seen = 0

    def _events(self):
        return self._log.read_text().splitlines()

    def check_next(self, expected):
        """That exactly these come next: "+" before a key that is pressed, "-" before one that is
        released."""
        def heard():
            return self._events()[self._seen:]

        try:
            wait_until("the keys have come", lambda: len(heard()) >= len(expected))
        finally:
            assert heard() == expected, f"{expected}, but {heard()}"
        self._seen += len(expected)

    def forget(self):
        """What has come until now is not looked at."""
        self._desktop.key("f")
        wait_until("the last key has come", lambda: self._events()[-1:] == ["-f"])
        self._seen = len(self._events())

    def check_strokes(self, *keys):
        """That the next keys are these, each pressed and released."""
        self.check_next([sign + key for key in keys for sign in "+-"])
