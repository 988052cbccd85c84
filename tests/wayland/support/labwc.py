"""A private labwc without a screen: a compositor of sway's family of which nobody knows more than the
protocols tell."""

import struct

from harness import Window
from wayland_wire import Client
from wlroots_desktop import WlrootsDesktop

# Events and requests of a window's handle in wlroots' list, and one of its states.
_TITLE, _STATE, _CLOSED = 0, 4, 6
_MINIMISE, _ACTIVATE, _CLOSE = 2, 4, 5
_ACTIVATED = 2


class LabwcDesktop(WlrootsDesktop):
    """A window's number is that of its handle, and no process is known."""

    name = "labwc"

    def __init__(self, directory, root=None):
        super().__init__(directory, root)
        self._client = None
        self._seat = None
        self._titles = {}
        self._active = 0

    def _start_compositor(self):
        self._launch("labwc")
        self._attach()
        self._client = Client()
        self._seat = self._client.bind("wl_seat", 1)
        manager = self._client.bind("zwlr_foreign_toplevel_manager_v1", 3)
        self._client.on(manager, 0, self._opened)

    def _opened(self, arguments):
        handle, = struct.unpack("=I", arguments)
        self._titles[handle] = ""
        self._client.on(handle, _TITLE, lambda text: self._titles.update({handle: _text(text)}))
        self._client.on(handle, _STATE, lambda states: self._note(handle, states))
        self._client.on(handle, _CLOSED, lambda _: self._titles.pop(handle))

    def _note(self, handle, states):
        if _ACTIVATED in struct.unpack(f"={len(states) // 4}I", states)[1:]:
            self._active = handle
        elif self._active == handle:
            self._active = 0

    def windows(self):
        return [Window(handle, title, 0) for handle, title in list(self._titles.items())]

    def active_window(self):
        return self._active

    def activate(self, window):
        self._client.send(window.number, _ACTIVATE, self._seat)

    def minimise(self, window):
        self._client.send(window.number, _MINIMISE)

    def close(self, window):
        self._client.send(window.number, _CLOSE)


def _text(argument):
    length, = struct.unpack_from("=I", argument)
    return argument[4:3 + length].decode(errors="replace")
