"""Windows whose properties are nothing that a well-behaved program would write."""

import board as boards
import settings
from kelpa import Kelpa
from processes import wait_until

_TITLES = (
    b"plain",
    b"",
    b"   \t\n  ",
    b"bell\x07 escape\x1b[31m newline\n tab\t delete\x7f",
    b"nul\x00in the middle",
    "\u202eright to left\u202c \u2066isolate\u2069 \u200fmark".encode(),
    b"\xff\xfe\xc3\x28 \xed\xa0\x80 \xf8\x88\x80\x80\x80",
    "<b>bold</b> <img src='file:///etc/hostname'> &amp; %s %n {0}".encode(),
    ("Z" + "\u0335\u0321\u0489" * 2000).encode(),
    b"long " + b"x" * (1024 * 1024),
)


class _Clients:
    """Plain client windows of this process."""

    def __init__(self, desktop):
        self._x = desktop.x

    def show(self, title):
        from Xlib import X

        window = self._x.screen().root.create_window(
            10, 10, 300, 200, 0, self._x.screen().root_depth, X.InputOutput, X.CopyFromParent)
        window.set_wm_class("hostile", "Hostile")
        window.set_wm_protocols([self._x.intern_atom("WM_DELETE_WINDOW")])
        self.set_title(window, title)
        window.map()
        self._x.sync()
        return window

    def set_title(self, window, title):
        from Xlib import X

        name, kind = self._x.intern_atom("_NET_WM_NAME"), self._x.intern_atom("UTF8_STRING")
        window.change_property(name, kind, 8, title[:65536])
        # One request carries no more than a quarter of a megabyte.
        for start in range(65536, len(title), 65536):
            window.change_property(name, kind, 8, title[start:start + 65536], X.PropModeAppend)
        self._x.flush()

    def set_wrong_title(self, window):
        """A title of a type and a format that no title has."""
        from Xlib import Xatom

        window.change_property(self._x.intern_atom("_NET_WM_NAME"), Xatom.CARDINAL, 32, [1, 2, 3])
        window.change_property(Xatom.WM_NAME, Xatom.WINDOW, 16, [1, 2, 3])
        self._x.flush()


def windows_with_hostile_titles_are_listed_and_the_board_lives(desktop, binary):
    path = desktop.directory / "board.sqlite"
    settings.write(path)
    clients = _Clients(desktop)
    windows = [clients.show(title) for title in _TITLES]
    wait_until("the windows are shown", lambda: len(desktop.windows()) == len(_TITLES))
    with Kelpa(desktop, binary, path) as kelpa:
        def cards():
            column = kelpa.board.column(boards.UNSORTED)
            return column.cards if column else []

        kelpa.click(lambda: kelpa.board.button(f"Show {len(_TITLES) - 4} more"), "the fold")
        wait_until("every window has a card", lambda: len(cards()) == len(_TITLES))
        kelpa.wait_for_card(boards.UNSORTED, "plain")
        # Now every window takes every title in turn while it is on the board.
        for turn in range(1, len(_TITLES)):
            for at, window in enumerate(windows):
                clients.set_title(window, _TITLES[(at + turn) % len(_TITLES)])
        kelpa.wait_for_card(boards.UNSORTED, "plain")
        clients.set_wrong_title(windows[0])
        clients.set_title(windows[1], b"renamed at last")
        kelpa.wait_for_card(boards.UNSORTED, "renamed at last")
        assert len(cards()) == len(_TITLES)
        # A title is text: nothing in it is followed or loaded.
        assert "etc/hostname" not in kelpa.output()
        kelpa.create_goal("Still alive")
