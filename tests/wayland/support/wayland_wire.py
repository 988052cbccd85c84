"""A Wayland client in plain Python, for what no program does on demand: it sends any bytes. It knows
objects, requests and events by their numbers; who uses it knows what they mean."""

import array
import os
import socket
import struct
import threading
import time

DISPLAY = 1


class Refused(AssertionError):
    """The compositor has ended the connection."""


class Client:
    """A connection to the compositor of this process's environment. Events are handled on a thread
    of its own, each by the function that was given for its object and number."""

    def __init__(self):
        path = os.path.join(os.environ["XDG_RUNTIME_DIR"], os.environ["WAYLAND_DISPLAY"])
        self._socket = socket.socket(socket.AF_UNIX)
        self._socket.connect(path)
        self._lock = threading.Lock()
        self._last = DISPLAY
        self._handlers = {}
        self._globals = {}
        # Why the compositor has ended the connection, or that it has; None while it has not.
        self._end = None
        self.on(DISPLAY, 0, self._fail)
        self.registry = self.new()
        self.on(self.registry, 0, self._add_global)
        threading.Thread(target=self._read, daemon=True).start()
        self.send(DISPLAY, 1, self.registry)
        self.round_trip()

    def new(self):
        """The number of a new object. Objects are created in the order of their numbers."""
        with self._lock:
            self._last += 1
            return self._last

    def on(self, number, event, handler):
        """`handler` is given the bytes of the event's arguments."""
        self._handlers[number, event] = handler

    def send(self, number, request, *arguments, descriptor=None):
        """Numbers are sent as they are, bytes as a string, which may be no text."""
        body = b"".join(_encoded(argument) for argument in arguments)
        message = struct.pack("=II", number, (8 + len(body)) << 16 | request) + body
        passed = [] if descriptor is None else [
            (socket.SOL_SOCKET, socket.SCM_RIGHTS, array.array("i", [descriptor]))]
        try:
            with self._lock:
                sent = self._socket.sendmsg([message], passed)
                self._socket.sendall(message[sent:])
        except OSError as error:
            # Also for who waits while this is the thread of events, which ends by it.
            self._end = self._end or str(error)
            raise Refused(self._end) from error

    def bind(self, interface, version):
        """A new object for the compositor's global of that name."""
        name = self._globals[interface]
        number = self.new()
        self.send(self.registry, 0, name, interface.encode(), version, number)
        return number

    def round_trip(self):
        """Returns when the compositor has handled all requests so far."""
        done = threading.Event()
        callback = self.new()
        self.on(callback, 0, lambda _: done.set())
        self.send(DISPLAY, 0, callback)
        end = time.monotonic() + 30
        while not done.wait(0.05):
            if self._end:
                raise Refused(self._end)
            if time.monotonic() > end:
                raise AssertionError("the compositor does not reply")

    def close(self):
        self._socket.shutdown(socket.SHUT_RDWR)

    def _read(self):
        data = b""
        while received := self._receive():
            data += received
            while len(data) >= 8:
                number, word = struct.unpack_from("=II", data)
                size = word >> 16
                if len(data) < size:
                    break
                handler = self._handlers.get((number, word & 0xFFFF))
                if handler:
                    handler(data[8:size])
                data = data[size:]
        self._end = self._end or "it has ended the connection"

    def _receive(self):
        try:
            data, passed, _, _ = self._socket.recvmsg(65536, socket.CMSG_SPACE(16))
        except OSError:
            return b""
        for _, _, numbers in passed:
            for number in array.array("i", numbers[:len(numbers) // 4 * 4]):
                os.close(number)
        return data

    def _add_global(self, arguments):
        name, length = struct.unpack_from("=II", arguments)
        self._globals[arguments[8:8 + length - 1].decode()] = name

    def _fail(self, arguments):
        self._end = f"the compositor refuses a request: {arguments[12:]!r}"


def _encoded(argument):
    if isinstance(argument, bytes):
        text = argument + b"\0"
        return struct.pack("=I", len(text)) + text + bytes(-len(text) % 4)
    return struct.pack("=i" if argument < 0 else "=I", argument)
