"""This process as a caller of the extension."""

import os
import time

from gi.repository import Gio, GLib

from processes import wait_until

_NAME, _PATH, _INTERFACE = "org.kelpa.Windows", "/org/kelpa/Windows", "org.kelpa.Windows1"
_BUS = ("org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus")
KELPA = "org.kelpa.Kelpa"


class Refused(Exception):
    """The extension's error, by the last part of its name, and what it says."""

    @property
    def reason(self):
        return self.args[0]


class Caller:
    """A caller that has Kelpa's name and is attached unless `is_kelpa` says otherwise. `signals` are the
    extension's, each with when it came."""

    def __init__(self, bus, is_kelpa=True):
        self._bus = bus
        self.signals = []
        bus.signal_subscribe(_NAME, _INTERFACE, None, None, None, Gio.DBusSignalFlags.NONE,
                             lambda *signal: self.signals.append((time.monotonic(), signal[4])))
        if is_kelpa:
            self.take_name()
            self.attach()

    def take_name(self, name=KELPA):
        assert self._ask_bus("RequestName", "(su)", name, 4) == 1, "somebody has Kelpa's name"

    def release_name(self):
        self._ask_bus("ReleaseName", "(s)", KELPA)

    def _ask_bus(self, method, types, *values):
        return self._bus.call_sync(*_BUS, method, GLib.Variant(types, values), None,
                                   Gio.DBusCallFlags.NONE, 20000, None).unpack()[0]

    def version(self):
        return self._bus.call_sync(
            _NAME, _PATH, "org.freedesktop.DBus.Properties", "Get",
            GLib.Variant("(ss)", (_INTERFACE, "Version")), None, Gio.DBusCallFlags.NO_AUTO_START, 20000,
            None).unpack()[0]

    def call(self, method, types=None, *values):
        """The values of the answer, and its descriptors."""
        try:
            reply, descriptors = self._bus.call_with_unix_fd_list_sync(
                _NAME, _PATH, _INTERFACE, method, GLib.Variant(types, values) if types else None, None,
                Gio.DBusCallFlags.NO_AUTO_START, 20000, None, None)
        except GLib.Error as error:
            name = Gio.DBusError.get_remote_error(error) or str(error)
            if not name.startswith(f"{_INTERFACE}.Error."):
                raise
            raise Refused(name.rpartition(".")[2], error.message) from None
        return reply.unpack(), descriptors.steal_fds() if descriptors else []

    def attach(self):
        return self.call("Attach", "(u)", 1)[0]

    def detach(self):
        self.call("Detach")

    def list(self):
        return self.call("List")[0][0]

    def row(self, title):
        """The window's row once it is listed."""
        return wait_until(f"{title!r} is listed", lambda: next(
            (row for row in self.list() if row["title"] == title), None))

    def picture(self, number, width, height, known):
        """Whether it is unchanged, its revision, its size, and what is in the file."""
        (*values, _), (descriptor,) = self.call("Picture", "(tuut)", number, width, height, known)
        try:
            return (*values, os.pread(descriptor, 1 << 22, 0))
        finally:
            os.close(descriptor)

    def spin(self, seconds=0.2):
        """Lets signals arrive."""
        context, end = GLib.MainContext.default(), time.monotonic() + seconds
        while time.monotonic() < end:
            context.iteration(False)
            time.sleep(0.002)

    def names(self):
        """The names of the signals so far, which are forgotten."""
        self.spin()
        names = [name for _, name in self.signals]
        self.signals.clear()
        return names
