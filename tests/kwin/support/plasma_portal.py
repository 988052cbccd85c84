"""plasma_portal.py FILE: the part of Plasma's portal that tells of the person's settings, as that of Plasma 5.27 does:
those of KDE are texts of its configuration FILE, and there is no accent colour for all desktops. It serves the
programs themselves, without a frontend. The signal HUP says that a font is another one, USR1 that colours are: of an
accent it reports no change, nor that a setting is gone."""

import configparser
import pathlib
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
_OF_KDE = "org.kde.kdeglobals."
_SCHEME = ("org.freedesktop.appearance", "color-scheme")
_GENERAL = _OF_KDE + "General"
_FONT, _COLORS = [(_GENERAL, "font")], [(_GENERAL, "ColorScheme"), _SCHEME]
_DARK, _LIGHT = 1, 2


class _Portal:
    def __init__(self, path):
        self._path = pathlib.Path(path)
        self._connection = None

    def serve(self, connection, _name):
        self._connection = connection
        interface = Gio.DBusNodeInfo.new_for_xml(_DESCRIPTION).interfaces[0]
        connection.register_object(_PATH, interface, self._answer, None, None)

    def report(self, keys):
        for key in keys:
            value = self._value(*key)
            if value is not None:
                self._connection.emit_signal(None, _PATH, _INTERFACE, "SettingChanged",
                                             GLib.Variant("(ssv)", (*key, value)))
        return GLib.SOURCE_CONTINUE

    def _read(self):
        file = configparser.ConfigParser(interpolation=None)
        file.optionxform = str
        file.read(self._path, encoding="utf-8")
        ground = file.get("Colors:Window", "BackgroundNormal", fallback="255")
        found = {_OF_KDE + group: {key: GLib.Variant("s", text) for key, text in file.items(group)}
                 for group in file.sections()}
        scheme_space, scheme_key = _SCHEME
        found[scheme_space] = {scheme_key: GLib.Variant("u", _DARK if int(ground.split(",")[0]) < 128 else _LIGHT)}
        return found

    def _value(self, space, key):
        return self._read().get(space, {}).get(key)

    def _answer(self, _connection, _sender, _path, _interface, _method, arguments, invocation):
        wanted, = arguments.unpack()
        found = {space: values for space, values in self._read().items() if space in wanted}
        invocation.return_value(GLib.Variant("(a{sa{sv}})", (found,)))


def main():
    portal = _Portal(sys.argv[1])
    Gio.bus_own_name(Gio.BusType.SESSION, _NAME, Gio.BusNameOwnerFlags.NONE, portal.serve, None, None)
    GLib.unix_signal_add(GLib.PRIORITY_DEFAULT, signal.SIGHUP, portal.report, _FONT)
    GLib.unix_signal_add(GLib.PRIORITY_DEFAULT, signal.SIGUSR1, portal.report, _COLORS)
    GLib.MainLoop().run()


if __name__ == "__main__":
    main()
