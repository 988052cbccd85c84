"""notification_service.py: the part of a desktop that shows notifications. Prints "show <summary>: <body>"
and "close" as it is asked to. SIGUSR1 presses the button of what it shows."""

import signal

from gi.repository import Gio, GLib

_NAME = "org.freedesktop.Notifications"
# What has a button, with the name of its action.
_shown = []
_INTERFACE = f"""<node><interface name="{_NAME}">
  <method name="Notify">
    <arg type="s" direction="in"/><arg type="u" direction="in"/><arg type="s" direction="in"/>
    <arg type="s" direction="in"/><arg type="s" direction="in"/><arg type="as" direction="in"/>
    <arg type="a{{sv}}" direction="in"/><arg type="i" direction="in"/>
    <arg type="u" direction="out"/>
  </method>
  <method name="CloseNotification"><arg type="u" direction="in"/></method>
  <signal name="ActionInvoked"><arg type="u"/><arg type="s"/></signal>
</interface></node>"""


def _called(bus, _sender, _path, _interface, method, arguments, invocation):
    if method == "Notify":
        _, _, _, summary, body, actions, *_ = arguments.unpack()
        print(f"show {summary}: {body}", flush=True)
        if actions:
            _shown.append((bus, actions[0]))
        invocation.return_value(GLib.Variant("(u)", (7,)))
    else:
        print("close", flush=True)
        invocation.return_value(None)


def _connected(bus, _name):
    interface = Gio.DBusNodeInfo.new_for_xml(_INTERFACE).interfaces[0]
    bus.register_object("/org/freedesktop/Notifications", interface, _called, None, None)


def _owned(_bus, _name):
    print("ready", flush=True)


def _press():
    """The person presses the button of what is shown."""
    bus, action = _shown[-1]
    bus.emit_signal(None, "/org/freedesktop/Notifications", _NAME, "ActionInvoked",
                    GLib.Variant("(us)", (7, action)))
    return True


def main():
    Gio.bus_own_name(Gio.BusType.SESSION, _NAME, Gio.BusNameOwnerFlags.NONE, _connected, _owned, None)
    GLib.unix_signal_add(GLib.PRIORITY_DEFAULT, signal.SIGUSR1, _press)
    GLib.MainLoop().run()


main()
