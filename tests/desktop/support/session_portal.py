"""session_portal.py ANSWER CALLS: the part of a desktop's portal that starts programs with the session and
has keys chosen. While the file ANSWER holds "yes", the person agrees to everything, otherwise to nothing.
Each call is a line of the file CALLS. The signals USR1 and USR2 press the keys that the person has chosen
for bringing Kelpa forward and for a new todo."""

import json
import pathlib
import signal
import sys

from gi.repository import Gio, GLib

_NAME = "org.freedesktop.portal.Desktop"
_PATH = "/org/freedesktop/portal/desktop"
_SESSION = f"{_PATH}/session/1_1/kelpa"
_SHORTCUTS = "org.freedesktop.portal.GlobalShortcuts"
_DESCRIPTION = f"""<node>
  <interface name="org.freedesktop.portal.Background">
    <method name="RequestBackground">
      <arg type="s" direction="in"/><arg type="a{{sv}}" direction="in"/><arg type="o" direction="out"/>
    </method>
    <property name="version" type="u" access="read"/>
  </interface>
  <interface name="{_SHORTCUTS}">
    <method name="CreateSession"><arg type="a{{sv}}" direction="in"/><arg type="o" direction="out"/></method>
    <method name="BindShortcuts">
      <arg type="o" direction="in"/><arg type="a(sa{{sv}})" direction="in"/><arg type="s" direction="in"/>
      <arg type="a{{sv}}" direction="in"/><arg type="o" direction="out"/>
    </method>
    <signal name="Activated">
      <arg type="o"/><arg type="s"/><arg type="t"/><arg type="a{{sv}}"/>
    </signal>
    <property name="version" type="u" access="read"/>
  </interface>
</node>"""
_KEYS = {"bring-forward": "Ctrl+Alt+K", "new-todo": "Ctrl+Alt+T"}


class _Portal:
    def __init__(self, answer, calls):
        self._answer = pathlib.Path(answer)
        self._calls = pathlib.Path(calls)
        self._connection = None
        self._client = None

    def serve(self, connection, _name):
        self._connection = connection
        for interface in Gio.DBusNodeInfo.new_for_xml(_DESCRIPTION).interfaces:
            connection.register_object(_PATH, interface, self._called, lambda *_: GLib.Variant("u", 1), None)
        self._log("ready")

    def press(self, key):
        self._connection.emit_signal(self._client, _PATH, _SHORTCUTS, "Activated",
                                     GLib.Variant("(osta{sv})", (_SESSION, key, 1, {})))
        return GLib.SOURCE_CONTINUE

    def _log(self, *words):
        with self._calls.open("a", encoding="utf-8") as calls:
            calls.write(json.dumps(words) + "\n")

    def _called(self, _connection, sender, _path, _interface, method, arguments, invocation):
        *what, options = arguments.unpack()
        agrees = self._answer.read_text(encoding="utf-8") == "yes"
        results = {}
        if method == "RequestBackground":
            self._log(method, options["autostart"], options["commandline"])
            results = {"background": GLib.Variant("b", agrees),
                       "autostart": GLib.Variant("b", agrees and options["autostart"])}
        elif method == "CreateSession":
            self._log(method)
            self._client = sender
            agrees = True
            results = {"session_handle": GLib.Variant("s", _SESSION)}
        else:
            wanted = {name: properties["description"] for name, properties in what[1]}
            self._log(method, wanted)
            if agrees:
                results = {"shortcuts": GLib.Variant("a(sa{sv})", [
                    (name, {"trigger_description": GLib.Variant("s", _KEYS[name])}) for name in wanted])}
        request = f"{_PATH}/request/{sender[1:].replace('.', '_')}/{options['handle_token']}"
        invocation.return_value(GLib.Variant("(o)", (request,)))
        self._connection.emit_signal(sender, request, "org.freedesktop.portal.Request", "Response",
                                     GLib.Variant("(ua{sv})", (0 if agrees else 1, results)))


def main():
    portal = _Portal(*sys.argv[1:])
    Gio.bus_own_name(Gio.BusType.SESSION, _NAME, Gio.BusNameOwnerFlags.NONE, portal.serve, None, None)
    for number, key in ((signal.SIGUSR1, "bring-forward"), (signal.SIGUSR2, "new-todo")):
        GLib.unix_signal_add(GLib.PRIORITY_DEFAULT, number, portal.press, key)
    GLib.MainLoop().run()


main()
