"""file_portal.py ANSWER CALLS: the part of a desktop's portal that has files chosen. It chooses the path
that the file ANSWER holds, or cancels where that is empty, and writes each call to the file CALLS."""

import json
import pathlib
import sys

from gi.repository import Gio, GLib

_NAME = "org.freedesktop.portal.Desktop"
_PATH = "/org/freedesktop/portal/desktop"
_METHOD = """<method name="{}">
    <arg type="s" direction="in"/><arg type="s" direction="in"/><arg type="a{{sv}}" direction="in"/>
    <arg type="o" direction="out"/>
  </method>"""
_DESCRIPTION = f"""<node><interface name="org.freedesktop.portal.FileChooser">
  {_METHOD.format("OpenFile")}{_METHOD.format("SaveFile")}
</interface></node>"""


class _Portal:
    def __init__(self, answer, calls):
        self._answer = pathlib.Path(answer)
        self._calls = pathlib.Path(calls)

    def serve(self, connection, _name):
        interface = Gio.DBusNodeInfo.new_for_xml(_DESCRIPTION).interfaces[0]
        connection.register_object(_PATH, interface, self._choose, None, None)

    def _choose(self, connection, sender, _path, _interface, method, arguments, invocation):
        parent, title, options = arguments.unpack()
        with self._calls.open("a", encoding="utf-8") as calls:
            calls.write(json.dumps([method, parent, title, options.get("current_name", ""),
                                    options["current_filter"][0]]) + "\n")
        request = f"{_PATH}/request/{sender[1:].replace('.', '_')}/{options['handle_token']}"
        invocation.return_value(GLib.Variant("(o)", (request,)))
        chosen = self._answer.read_text(encoding="utf-8")
        results = {"uris": GLib.Variant("as", [pathlib.Path(chosen).as_uri()])} if chosen else {}
        connection.emit_signal(sender, request, "org.freedesktop.portal.Request", "Response",
                               GLib.Variant("(ua{sv})", (0 if chosen else 1, results)))


def main():
    portal = _Portal(*sys.argv[1:])
    Gio.bus_own_name(Gio.BusType.SESSION, _NAME, Gio.BusNameOwnerFlags.NONE, portal.serve, None, None)
    GLib.MainLoop().run()


main()
