"""Windows of one colour with any title: what no program shows on demand."""

import mmap
import os
import struct
import threading

from wayland_wire import Client

_BYTES_PER_PIXEL = 4
# Formats of wl_shm.
_WITH_ALPHA, _OPAQUE = 0, 1


class PlainWindows:
    """Windows of this process, of one size. Titles and application ids are bytes, which may be no text. With
    `has_alpha` their pixels say how opaque they are, as those of programs that draw their own frames do."""

    def __init__(self, width=200, height=150, has_alpha=False):
        self._client = Client()
        self._width, self._height = width, height
        size = width * height * _BYTES_PER_PIXEL
        # Held while requests about a window are sent, since its surface may be drawn and closed at
        # the same time.
        self._lock = threading.Lock()
        self._open = set()
        self._compositor = self._client.bind("wl_compositor", 1)
        self._shell = self._client.bind("xdg_wm_base", 1)
        self._client.on(self._shell, 0, self._pong)
        memory = os.memfd_create("pixels")
        os.ftruncate(memory, size)
        self._pixels = mmap.mmap(memory, size)
        shared_memory = self._client.bind("wl_shm", 1)
        pool = self._client.new()
        self._client.send(shared_memory, 0, pool, size, descriptor=memory)
        os.close(memory)
        self._buffer = self._client.new()
        self._client.send(pool, 0, self._buffer, 0, width, height, width * _BYTES_PER_PIXEL,
                          _WITH_ALPHA if has_alpha else _OPAQUE)

    def open(self, title, app_id=b"plain", closed=None, parent=None):
        """Shows a window and returns it, for `rename` and `close`. `closed` is called when the
        compositor asks it to close; `parent` is the window that it belongs to."""
        send, new = self._client.send, self._client.new
        with self._lock:
            surface, shape, toplevel = new(), new(), new()
            self._open.add(shape)
            self._client.on(shape, 0, lambda serial: self._draw(surface, shape, serial))
            if closed:
                self._client.on(toplevel, 1, lambda _: closed())
            send(self._compositor, 0, surface)
            send(self._shell, 2, shape, surface)
            send(shape, 1, toplevel)
            if parent:
                send(toplevel, 1, parent[2])
            send(toplevel, 2, title)
            send(toplevel, 3, app_id)
            send(surface, 6)
        return surface, shape, toplevel

    def rename(self, window, title):
        self._client.send(window[2], 2, title)

    def fill(self, colour):
        """Gives the windows that are drawn after this a colour, as 0xRRGGBB."""
        self._pixels[:] = struct.pack("=I", colour) * (self._width * self._height)

    def paint(self, window, colour):
        """As that, and gives it to this window too."""
        self.fill(colour)
        with self._lock:
            self._client.send(window[0], 1, self._buffer, 0, 0)
            self._client.send(window[0], 2, 0, 0, self._width, self._height)
            self._client.send(window[0], 6)

    def activate(self, window, token):
        """Uses an activation token for the window."""
        activation = self._client.bind("xdg_activation_v1", 1)
        with self._lock:
            self._client.send(activation, 2, token, window[0])

    def hear_keys(self, heard):
        """Calls `heard` with the arguments of each event of a key for a window of this process. There has to be
        a keyboard."""
        seat = self._client.bind("wl_seat", 1)
        keyboard = self._client.new()
        self._client.on(keyboard, 3, heard)
        self._client.send(seat, 1, keyboard)

    def close(self, window):
        with self._lock:
            self._open.remove(window[1])
            for part in reversed(window):
                self._client.send(part, 0)

    def settle(self):
        """Returns when the compositor has heard of everything so far."""
        self._client.round_trip()

    def end(self):
        self._client.close()

    def _draw(self, surface, shape, serial):
        with self._lock:
            if shape in self._open:
                self._client.send(shape, 4, *struct.unpack("=I", serial))
                self._client.send(surface, 1, self._buffer, 0, 0)
                self._client.send(surface, 6)

    def _pong(self, serial):
        self._client.send(self._shell, 3, *struct.unpack("=I", serial))
