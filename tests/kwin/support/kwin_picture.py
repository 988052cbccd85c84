"""Pictures of windows from KWin's screenshot service, for a scenario that looks at them itself."""

import os
import threading

import gi

gi.require_version("Gio", "2.0")
from gi.repository import Gio, GLib  # noqa: E402

_SERVICE = ("org.kde.KWin", "/org/kde/KWin/ScreenShot2", "org.kde.KWin.ScreenShot2")


class Picture:
    """Of 32 bits a pixel, blue first."""

    def __init__(self, form, pixels):
        self.width = form["width"]
        self.height = form["height"]
        self._stride = form["stride"]
        self._pixels = pixels

    def share_of(self, colour, x, y, width, height):
        """How much of a rectangle has that colour, 0xRRGGBB, as a number from 0 to 1."""
        wanted = colour.to_bytes(3, "little")
        lines = range(max(y, 0), min(y + height, self.height))
        columns = range(max(x, 0), min(x + width, self.width))
        found = sum(self._pixels[at:at + 3] == wanted for line in lines
                    for at in (line * self._stride + column * 4 for column in columns))
        return found / (width * height)


def take(bus, uuid):
    """`bus` is a connection; raises GLib.Error where KWin refuses."""
    reading, writing = os.pipe()
    parts = []

    def read():
        with os.fdopen(reading, "rb") as pipe:
            parts.append(pipe.read())

    reader = threading.Thread(target=read)
    reader.start()
    descriptors = Gio.UnixFDList.new()
    try:
        options = {"include-decoration": GLib.Variant("b", True), "include-shadow": GLib.Variant("b", False)}
        position = descriptors.append(writing)
        os.close(writing)
        form, _ = bus.call_with_unix_fd_list_sync(
            *_SERVICE, "CaptureWindow", GLib.Variant("(sa{sv}h)", (uuid, options, position)), None,
            Gio.DBusCallFlags.NONE, 10000, descriptors, None)
    finally:
        # It holds a copy of the end that KWin writes to.
        del descriptors
        reader.join(10)
    return Picture(form.unpack()[0], parts[0])
