"""What the desktop's portal says of appearance, from the first frame on."""

import pathlib
import re

import settings
from kelpa import Kelpa
from processes import wait_until

_PORTAL = pathlib.Path(__file__).parent / "support" / "portal.py"
_NAME = "org.freedesktop.portal.Desktop"
_LOGGED = {"QT_LOGGING_RULES": "kelpa.*.debug=true;kelpa.debug=true"}


def _is_portal_there(desktop):
    return _NAME in desktop.run("dbus-send", "--session", "--print-reply", "--dest=org.freedesktop.DBus", "/",
                                "org.freedesktop.DBus.ListNames")


def _start_portal(desktop, *options):
    portal = desktop.start("/usr/bin/python3", _PORTAL, *options)
    wait_until("the portal is there", lambda: _is_portal_there(desktop))
    return portal


def _first_frame(kelpa):
    """Its appearance, accent and ground; None before it."""
    found = re.search(r"first frame is (\w+), texts [\d.]+, accent (\S+), ground (\S+)", kelpa.output())
    return found and found.groups()


def _board(desktop):
    path = desktop.directory / "board.sqlite"
    settings.write(path, goals=[("Ship release 0.1", ["Write the release notes"])])
    return path


def the_first_frame_looks_as_the_desktop_wants(desktop, binary):
    path = _board(desktop)
    _start_portal(desktop, "--dark", "--accents=#ed5b00")
    with Kelpa(desktop, binary, path, env=_LOGGED) as kelpa:
        shown = wait_until("the first frame is there", lambda: _first_frame(kelpa))
        assert shown == ("dark", "#ed5b00", "#1b1c1f"), shown


def a_portal_that_hangs_keeps_no_frame_waiting(desktop, binary):
    path = _board(desktop)
    _start_portal(desktop, "--dark", "--silent")
    with Kelpa(desktop, binary, path, env=_LOGGED) as kelpa:
        shown = wait_until("the first frame is there", lambda: _first_frame(kelpa))
        assert shown == ("light", "none", "#f4f5f7"), shown


def a_portal_that_is_started_again_is_followed(desktop, binary):
    path = _board(desktop)
    portal = _start_portal(desktop)
    with Kelpa(desktop, binary, path, env=_LOGGED) as kelpa:
        kelpa.focus()
        button = wait_until("the board is there", lambda: kelpa.board.button("New goal"))
        x, y, _, height = button.frame()

        def ground():
            """Of the button, beside its text."""
            blue, green, red = desktop.pixel(x + 6, y + height // 2)[:3]
            return f"{red:02x}{green:02x}{blue:02x}"

        desktop.hover(1, 1)
        wait_until("the button is Kelpa's own", lambda: ground() == "2563eb")
        portal.terminate()
        portal.wait()
        wait_until("the portal is gone", lambda: not _is_portal_there(desktop))
        _start_portal(desktop, "--dark", "--accents=#9141ac")
        wait_until("the button is purple, in the dark", lambda: ground() == "9a4ab5")
