"""stranger.py NAME: a program of the session that is not Kelpa, whatever name it takes on the bus; without
one the name is "". Prints the errors that it gets, one a line, then "listening", then the signals that it hears
until its input ends."""

import sys
import time

import gi

gi.require_version("Gio", "2.0")
from gi.repository import Gio, GLib

from caller import Caller, Refused

_CALLS = (("Attach", "(u)", 1), ("List",), ("Detach",), ("Activate", "(tu)", 1, 0), ("Close", "(t)", 1),
          ("Workspaces",), ("SendTo", "(tu)", 1, 1), ("ShowWorkspace", "(u)", 1),
          ("ListWithWorkspaces",), ("SendToWorkspace", "(tt)", 1, 1), ("GoToWorkspace", "(t)", 1),
          ("Minimize", "(t)", 1), ("Restore", "(t)", 1), ("Picture", "(tuut)", 1, 10, 10, 0), ("BringForward",),
          ("Token", "(s)", ""))


def main():
    name, = sys.argv[1:]
    caller = Caller(Gio.bus_get_sync(Gio.BusType.SESSION), is_kelpa=False)
    if name:
        caller.take_name(name)
    for call in _CALLS:
        try:
            print("answered:", call, caller.call(*call))
        except Refused as refused:
            print(refused.reason)
    print("listening", flush=True)
    context = GLib.MainContext.default()
    while True:
        context.iteration(False)
        for _, signal in caller.signals:
            print(signal, flush=True)
        caller.signals.clear()
        time.sleep(0.01)


if __name__ == "__main__":
    main()
