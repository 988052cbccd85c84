"""The way from the start to the first frame."""

import re
import socket
import threading

import board as boards
import settings
from kelpa import Kelpa

_LOGGED = {"QT_LOGGING_RULES": "kelpa.*.debug=true;kelpa.debug=true"}
_TITLES = ("First", "Second", "Third")


def _windows_in_first_frame(kelpa):
    """None before the first frame."""
    found = re.search(r"first frame shows (\d+) windows", kelpa.output())
    return found and int(found[1])


def the_first_frame_shows_the_windows(desktop, binary):
    path = desktop.directory / "board.sqlite"
    settings.write(path, goals=[("Errands", ["Buy milk"])])
    desktop.open_xterms(*_TITLES)
    with Kelpa(desktop, binary, path, env=_LOGGED) as kelpa:
        assert _windows_in_first_frame(kelpa) == len(_TITLES), kelpa.output()


class _SlowServer:
    """Passes everything on between programs and the X server, but what Kelpa asks about windows, on
    connections of its own: that waits for `answer`, while the toolkit draws and gets its events."""

    # Interned by these connections alone.
    _MARK = b"_KELPA_WINDOW_NUMBER"

    def __init__(self, display):
        self._target = f"/tmp/.X11-unix/X{display.removeprefix(':')}"
        self._answering = threading.Event()
        self.held = threading.Event()
        self._listening, self.display = self._listen()
        threading.Thread(target=self._accept, daemon=True).start()

    @staticmethod
    def _listen():
        listening = socket.socket(socket.AF_UNIX)
        for number in range(300, 400):
            try:
                # Not a file: the name goes with the socket.
                listening.bind(f"\0/tmp/.X11-unix/X{number}")
            except OSError:
                continue
            listening.listen()
            return listening, f":{number}"
        raise AssertionError("there is no free display number")

    def answer(self):
        self._answering.set()

    def _accept(self):
        while True:
            client, _ = self._listening.accept()
            server = socket.socket(socket.AF_UNIX)
            server.connect(self._target)
            threading.Thread(target=self._forward, args=(client, server, True), daemon=True).start()
            threading.Thread(target=self._forward, args=(server, client, False), daemon=True).start()

    def _forward(self, source, target, are_requests):
        try:
            while data := source.recv(65536):
                if are_requests and self._MARK in data and not self._answering.is_set():
                    self.held.set()
                    self._answering.wait()
                target.sendall(data)
        except OSError:
            pass
        for end in (source, target):
            try:
                end.shutdown(socket.SHUT_RDWR)
            except OSError:
                pass


def a_window_server_that_does_not_answer_does_not_hold_the_first_frame_back(desktop, binary):
    path = desktop.directory / "board.sqlite"
    settings.write(path, goals=[("Errands", ["Buy milk"])])
    desktop.open_xterms(*_TITLES)
    server = _SlowServer(desktop.env["DISPLAY"])
    # Without shared memory, which does not pass through.
    env = _LOGGED | {"DISPLAY": server.display, "QT_XCB_NO_MITSHM": "1"}
    with Kelpa(desktop, binary, path, env=env) as kelpa:
        assert server.held.is_set()
        assert _windows_in_first_frame(kelpa) == 0, kelpa.output()
        kelpa.wait_for_todos("Errands", [("Buy milk", boards.TODO)])
        assert kelpa.board.cards() == {}
        server.answer()
        for title in _TITLES:
            kelpa.wait_for_card(boards.UNSORTED, title)
