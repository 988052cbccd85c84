"""alert_listener.py: what a screen reader reads out by itself. Prints the name and the description of
each alert that begins to show on the accessibility bus, on one line."""

import gi

gi.require_version("Atspi", "2.0")
from gi.repository import Atspi  # noqa: E402


def _heard(event):
    part = event.source
    # The library remembers what an alert has said before.
    part.clear_cache()
    if event.detail1 and part.get_role() in (Atspi.Role.ALERT, Atspi.Role.NOTIFICATION):
        print(f"{part.get_name()}|{part.get_description()}".replace("\n", " "), flush=True)


def main():
    Atspi.init()
    listener = Atspi.EventListener.new(_heard)
    listener.register("object:state-changed:showing")
    print("listening", flush=True)
    Atspi.event_main()


main()
