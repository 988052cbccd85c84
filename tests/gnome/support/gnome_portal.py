"""GNOME's own portal, as far as this system has it: its programs read the settings and the folders of the
session that they are started in."""

import pathlib
import sys

from processes import wait_until

_LIBRARY = pathlib.Path("/usr/libexec")
_SKIPPED = 77
_STORE = ("xdg-permission-store", "org.freedesktop.impl.portal.PermissionStore")
_PROGRAMS = (("xdg-desktop-portal-gnome", "org.freedesktop.impl.portal.desktop.gnome"),
             ("xdg-desktop-portal", "org.freedesktop.portal.Desktop"))


def start_portal(desktop, remembers=False):
    """Ends the scenario as skipped where it is not installed. With `remembers` it keeps what the person permits."""
    if not (_LIBRARY / "xdg-desktop-portal-gnome").exists():
        print("not installed: xdg-desktop-portal-gnome")
        sys.exit(_SKIPPED)
    for program, name in ((_STORE, *_PROGRAMS) if remembers else _PROGRAMS):
        desktop.start(_LIBRARY / program)
        wait_until(f"{name} is there", lambda name=name: desktop.has_name(name))
