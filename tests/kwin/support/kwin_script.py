"""Runs short scripts within KWin and returns what they report, on a connection of its own: a scenario's
view of KWin, which shares nothing with Kelpa's."""

import json
import pathlib

import gi

gi.require_version("Gio", "2.0")
from gi.repository import Gio, GLib  # noqa: E402

from processes import wait_until  # noqa: E402

_NAME = "org.kelpa.scenario"
_INTERFACE = """<node><interface name="org.kelpa.Scenario">
<method name="Report"><arg type="s" direction="in"/></method></interface></node>"""
_HELPERS = """
const all = () => workspace.windowList ? workspace.windowList() : workspace.clientList();
const find = id => all().find(each => String(each.internalId) === id);
const report = value => callDBus("%s", "/scenario", "org.kelpa.Scenario", "Report", JSON.stringify(value));
"""


class KwinScript:
    def __init__(self, folder):
        self._file = pathlib.Path(folder) / "scenario.js"
        self._context = GLib.MainContext.new()
        self._context.push_thread_default()
        try:
            self._bus = Gio.DBusConnection.new_for_address_sync(
                Gio.dbus_address_get_for_bus_sync(Gio.BusType.SESSION, None),
                Gio.DBusConnectionFlags.AUTHENTICATION_CLIENT | Gio.DBusConnectionFlags.MESSAGE_BUS_CONNECTION,
                None, None)
            self._reports = []
            self._bus.register_object("/scenario", Gio.DBusNodeInfo.new_for_xml(_INTERFACE).interfaces[0],
                                      self._receive, None, None)
        finally:
            self._context.pop_thread_default()

    @property
    def bus(self):
        return self._bus

    @property
    def context(self):
        """Where what arrives on the bus is handled, while somebody iterates it."""
        return self._context

    def call(self, path, interface, method, arguments=None, name="org.kde.KWin"):
        reply = self._bus.call_sync(name, path, interface, method, arguments, None,
                                    Gio.DBusCallFlags.NO_AUTO_START, 10000, None)
        return reply.unpack()

    def is_there(self):
        """KWin has its name on the bus a while before the object that runs scripts."""
        try:
            self.is_loaded(_NAME)
            return True
        except GLib.Error:
            return False

    def run(self, source):
        """What the script reports, which it does once."""
        self._file.write_text(_HELPERS % self._bus.get_unique_name() + source, encoding="utf-8")
        self._reports.clear()
        number, = self.scripting("loadScript", GLib.Variant("(ss)", (str(self._file), _NAME)))
        assert number >= 0, "KWin did not unload the last script"
        try:
            # Not the script's own object, whose number KWin may have given to Kelpa's script too.
            self.scripting("start", None)
            return wait_until("the script has reported", self._report)[0]
        finally:
            self.unload(_NAME)

    def scripting(self, method, arguments):
        return self.call("/Scripting", "org.kde.kwin.Scripting", method, arguments)

    def unload(self, name):
        return self.scripting("unloadScript", GLib.Variant("(s)", (name,)))[0]

    def is_loaded(self, name):
        return self.scripting("isScriptLoaded", GLib.Variant("(s)", (name,)))[0]

    def _receive(self, _connection, _sender, _path, _interface, _method, arguments, invocation):
        self._reports.append(json.loads(arguments.unpack()[0]))
        invocation.return_value(None)

    def _report(self):
        while self._context.iteration(False):
            pass
        return self._reports or None
