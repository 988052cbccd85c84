"""Programs that the session bus starts when somebody calls them."""

import pathlib

from gi.repository import Gio, GLib

import processes

_NAME = "org.kelpa.Kelpa"
_SERVICE = pathlib.Path(__file__).resolve().parents[3] / "packaging" / f"{_NAME}.service.in"
_START = """#!/bin/sh
echo started >> '{log}'
exec '{binary}' "$@"
"""


class Activation:
    """The session bus starts the program under test for its name, as the file of the package says, and with the
    environment that a session tells it. `starts` counts that."""

    def __init__(self, desktop, binary):
        folder = desktop.directory / "services"
        folder.mkdir()
        self._log = folder / "starts.log"
        program = folder / "kelpa"
        program.write_text(_START.format(log=self._log, binary=binary), encoding="utf-8")
        program.chmod(0o755)
        text = _SERVICE.read_text(encoding="utf-8")
        assert "@bindir@" in text
        (folder / f"{_NAME}.service").write_text(text.replace("@bindir@", str(folder)), encoding="utf-8")
        self._tell_bus(desktop, folder)

    @staticmethod
    def _tell_bus(desktop, folder):
        config = pathlib.Path(next(word.partition("=")[2] for word in desktop.session_bus.args
                                   if word.startswith("--config-file=")))
        text = config.read_text(encoding="utf-8")
        config.write_text(text.replace("</busconfig>", f"  <servicedir>{folder}</servicedir>\n</busconfig>"),
                          encoding="utf-8")
        bus = Gio.DBusConnection.new_for_address_sync(
            desktop.env["DBUS_SESSION_BUS_ADDRESS"],
            Gio.DBusConnectionFlags.AUTHENTICATION_CLIENT | Gio.DBusConnectionFlags.MESSAGE_BUS_CONNECTION, None,
            None)
        for method, values in (("UpdateActivationEnvironment", GLib.Variant("(a{ss})", (desktop.env,))),
                               ("ReloadConfig", None)):
            bus.call_sync("org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus", method, values,
                          None, Gio.DBusCallFlags.NONE, 20000, None)
        bus.close_sync(None)

    def starts(self):
        return self._log.read_text(encoding="utf-8").count("started") if self._log.exists() else 0


def await_end(desktop, number):
    """Asks the process to end, as the end of a session does. Nobody may wait for one that the bus has started, so
    that its number stays: it has no command line any more."""
    command = pathlib.Path(f"/proc/{number}/cmdline")
    desktop.run("kill", "-TERM", number)
    processes.wait_until("Kelpa has ended", lambda: not command.exists() or not command.read_bytes())
