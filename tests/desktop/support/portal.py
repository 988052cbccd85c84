"""portal.py [--dark] [--silent] [--high-contrast] [--large-text] [--accents=#RRGGBB,…]: the part of a desktop's portal
that tells of the person's settings. It begins light, unless it is dark, and without animations; the signals USR1 and
USR2 make it dark and light again. A silent one leaves all calls without an answer.
It has the first of the accent colours, if any; each signal HUP gives it the next, and none after the last."""

import signal
import sys

from gi.repository import Gio, GLib

_NAME = "org.freedesktop.portal.Desktop"
_PATH = "/org/freedesktop/portal/desktop"
_INTERFACE = "org.freedesktop.portal.Settings"
_DESCRIPTION = f"""<node><interface name="{_INTERFACE}">
  <method name="ReadAll">
    <arg name="namespaces" type="as" direction="in"/>
    <arg name="value" type="a{{sa{{sv}}}}" direction="out"/>
  </method>
  <signal name="SettingChanged">
    <arg name="namespace" type="s"/>
    <arg name="key" type="s"/>
    <arg name="value" type="v"/>
  </signal>
</interface></node>"""
_SCHEME = ("org.freedesktop.appearance", "color-scheme")
_ACCENT = ("org.freedesktop.appearance", "accent-color")
_NO_ACCENT = GLib.Variant("(ddd)", (-1, -1, -1))
_DARK, _LIGHT = GLib.Variant("u", 1), GLib.Variant("u", 2)


def _accents():
    names = [option.partition("=")[2].split(",") for option in sys.argv if option.startswith("--accents=")]
    return [GLib.Variant("(ddd)", [part / 255 for part in bytes.fromhex(name.lstrip("#"))])
            for name in sum(names, [])]


class _Portal:
    def __init__(self):
        self._values = {_SCHEME: _DARK if "--dark" in sys.argv else _LIGHT,
                        ("org.gnome.desktop.interface", "enable-animations"): GLib.Variant("b", False),
                        ("org.freedesktop.appearance", "contrast"):
                            GLib.Variant("u", int("--high-contrast" in sys.argv)),
                        ("org.gnome.desktop.interface", "text-scaling-factor"):
                            GLib.Variant("d", 1.5 if "--large-text" in sys.argv else 1)}
        self._accents = _accents()
        if self._accents:
            self._values[_ACCENT] = self._accents.pop(0)
        self._connection = None

    def serve(self, connection, _name):
        self._connection = connection
        interface = Gio.DBusNodeInfo.new_for_xml(_DESCRIPTION).interfaces[0]
        connection.register_object(_PATH, interface, self._answer, None, None)

    def change(self, scheme):
        return self._set(_SCHEME, scheme)

    def change_accent(self):
        return self._set(_ACCENT, self._accents.pop(0) if self._accents else _NO_ACCENT)

    def _set(self, key, value):
        self._values[key] = value
        self._connection.emit_signal(None, _PATH, _INTERFACE, "SettingChanged",
                                     GLib.Variant("(ssv)", (*key, value)))
        return GLib.SOURCE_CONTINUE

    def _answer(self, _connection, _sender, _path, _interface, _method, arguments, invocation):
        if "--silent" in sys.argv:
            return
        wanted, = arguments.unpack()
        found = {}
        for (namespace, key), value in self._values.items():
            if namespace in wanted:
                found.setdefault(namespace, {})[key] = value
        invocation.return_value(GLib.Variant("(a{sa{sv}})", (found,)))


def main():
    portal = _Portal()
    Gio.bus_own_name(Gio.BusType.SESSION, _NAME, Gio.BusNameOwnerFlags.NONE, portal.serve, None, None)
    for number, scheme in ((signal.SIGUSR1, _DARK), (signal.SIGUSR2, _LIGHT)):
        GLib.unix_signal_add(GLib.PRIORITY_DEFAULT, number, portal.change, scheme)
    GLib.unix_signal_add(GLib.PRIORITY_DEFAULT, signal.SIGHUP, portal.change_accent)
    GLib.MainLoop().run()


if __name__ == "__main__":
    main()
