"""name_holder.py NAME MANNER: a program that is not Kelpa owns NAME on the session bus. Asked to activate, it
"answers" as if it were, is "silent", or "refuses"."""

import sys

from gi.repository import Gio, GLib

_INTERFACE = """<node><interface name="org.freedesktop.Application">
  <method name="Activate"><arg type="a{sv}" direction="in"/></method>
</interface></node>"""


def main():
    name, manner = sys.argv[1:]

    def activated(_bus, _sender, _path, _interface, _method, _arguments, invocation):
        if manner == "answers":
            invocation.return_value(None)

    def connected(bus, _name):
        if manner != "refuses":
            interface = Gio.DBusNodeInfo.new_for_xml(_INTERFACE).interfaces[0]
            bus.register_object("/org/kelpa/Kelpa", interface, activated, None, None)

    Gio.bus_own_name(Gio.BusType.SESSION, name, Gio.BusNameOwnerFlags.NONE, connected, None, None)
    GLib.MainLoop().run()


main()
