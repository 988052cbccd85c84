"""A keyboard and a pointer of the Shell's own interface for remote desktops."""

import time

from gi.repository import Gio, GLib

from key_codes import codes_of, codes_of_letter

_NAME = "org.gnome.Mutter.RemoteDesktop"
_DESKTOP = (1600, 1000)
# As long as a finger holds a key.
_HELD = 0.015


class Keyboard:
    def __init__(self, bus):
        self._bus = bus
        # Where it is, once it has been moved.
        self._pointer = None
        self._session = self._call("/org/gnome/Mutter/RemoteDesktop", _NAME, "CreateSession").unpack()[0]
        self._say("Start")
        # The first key only creates the device.
        self._change(183, True)
        self._change(183, False)
        time.sleep(0.3)

    def type(self, text):
        for letter in text:
            self.press(*codes_of_letter(letter))

    def key(self, *names):
        """Presses and releases keys one after the other; those of a name with "+" together."""
        for name in names:
            self.press(*codes_of(name))

    def press(self, *codes, held=_HELD):
        for code in codes:
            self._change(code, True)
        time.sleep(held)
        for code in reversed(codes):
            self._change(code, False)

    def at_once(self, *names):
        """The same as `key`, sent without waiting for the Shell, which draws between two keys otherwise. A
        click of the pointer is called "click"."""
        for name in names:
            if name == "click":
                for is_down in (True, False):
                    self._send("NotifyPointerButton", "(ib)", 0x110, is_down)
                continue
            codes = codes_of(name)
            for code, is_down in [*((code, True) for code in codes), *((code, False) for code in reversed(codes))]:
                self._send("NotifyKeyboardKeycode", "(ub)", code, is_down)
        self._bus.flush_sync()

    def move_to(self, x, y):
        """Moves the pointer there, in points from the upper left corner of the desktop."""
        if self._pointer is None:
            # The corner in which nothing opens.
            self._say("NotifyPointerMotionRelative", "(dd)", 100000.0, 100000.0)
            self._pointer = (_DESKTOP[0] - 1, _DESKTOP[1] - 1)
        was_x, was_y = self._pointer
        self._say("NotifyPointerMotionRelative", "(dd)", float(x - was_x), float(y - was_y))
        self._pointer = (x, y)

    def _send(self, method, types, *values):
        self._bus.call(_NAME, self._session, f"{_NAME}.Session", method, GLib.Variant(types, values), None,
                       Gio.DBusCallFlags.NONE, 20000, None, None)

    def _change(self, code, is_down):
        self._say("NotifyKeyboardKeycode", "(ub)", code, is_down)

    def _say(self, method, types=None, *values):
        self._call(self._session, f"{_NAME}.Session", method, types, *values)

    def _call(self, path, interface, method, types=None, *values):
        return self._bus.call_sync(
            _NAME, path, interface, method, GLib.Variant(types, values) if types else None, None,
            Gio.DBusCallFlags.NONE, 20000, None)
