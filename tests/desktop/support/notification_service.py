"""notification_service.py: the part of a desktop that shows notifications. Prints "show <summary>: <body>"
and "close" as it is asked to."""

from gi.repository import Gio, GLib

_NAME = "org.freedesktop.Notifications"
_INTERFACE = f"""<node><interface name="{_NAME}">
  <method name="Notify">
    <arg type="s" direction="in"/><arg type="u" direction="in"/><arg type="s" direction="in"/>
    <arg type="s" direction="in"/><arg type="s" direction="in"/><arg type="as" direction="in"/>
    <arg type="a{{sv}}" direction="in"/><arg type="i" direction="in"/>
    <arg type="u" direction="out"/>
  </method>
  <method name="CloseNotification"><arg type="u" direction="in"/></method>
</interface></node>"""


def _called(_bus, _sender, _path, _interface, method, arguments, invocation):
    if method == "Notify":
        _, _, _, summary, body, *_ = arguments.unpack()
        print(f"show {summary}: {body}", flush=True)
        invocation.return_value(GLib.Variant("(u)", (7,)))
    else:
        print("close", flush=True)
        invocation.return_value(None)


def _connected(bus, _name):
    interface = Gio.DBusNodeInfo.new_for_xml(_INTERFACE).interfaces[0]
    bus.register_object("/org/freedesktop/Notifications", interface, _called, None, None)


def _owned(_bus, _name):
    print("ready", flush=True)


def main():
    Gio.bus_own_name(Gio.BusType.SESSION, _NAME, Gio.BusNameOwnerFlags.NONE, _connected, _owned, None)
    GLib.MainLoop().run()


main()
