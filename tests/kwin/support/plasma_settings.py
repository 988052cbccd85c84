"""What a person changes in Plasma's system settings: the configuration file, and what the settings then say on the
bus. Plasma's own portal tells programs of it where it is installed, one that stands in otherwise, and always for light
or dark: Plasma's tells that by the colours of its toolkit, which follow the file in a whole Plasma alone."""

import os
import pathlib
import signal

from gi.repository import GLib

from processes import wait_until

_STAND_IN = pathlib.Path(__file__).with_name("plasma_portal.py")
_FRONTEND = pathlib.Path("/usr/libexec/xdg-desktop-portal")
_PORTAL = "org.freedesktop.portal.Desktop"
_BACKEND = "org.freedesktop.impl.portal.desktop.kde"
_GROUNDS = {False: "239,240,241", True: "42,46,50"}
# As KDE numbers its signal.
_PALETTE, _FONT = 0, 1


def _backend():
    return next(iter(pathlib.Path("/usr/lib").glob("*/libexec/xdg-desktop-portal-kde")), None)


class PlasmaSettings:
    def __init__(self, desktop, bus, has_schemes):
        self._bus = bus
        self._path = pathlib.Path(desktop.env["XDG_CONFIG_HOME"]) / "kdeglobals"
        self._general = {}
        self._is_dark = False
        self._write()
        self._stand_in = None
        backend = _backend()
        if backend and not has_schemes and _FRONTEND.exists():
            for program, name in ((backend, _BACKEND), (_FRONTEND, _PORTAL)):
                # It shows nothing.
                desktop.start("env", "QT_QPA_PLATFORM=offscreen", program)
                wait_until(f"{name} is there", lambda name=name: desktop.has_name(name))
        else:
            self._stand_in = desktop.start("/usr/bin/python3", "-B", _STAND_IN, self._path)
            wait_until("the portal is there", lambda: desktop.has_name(_PORTAL))

    def set_font(self, size):
        self._change(_FONT, signal.SIGHUP, font=f"Noto Sans,{size},-1,5,50,0,0,0,0,0")

    def set_dark(self, is_dark):
        self._is_dark = is_dark
        self._change(_PALETTE, signal.SIGUSR1, ColorScheme="BreezeDark" if is_dark else "BreezeLight")

    def set_accent(self, red, green, blue):
        self._change(_PALETTE, signal.SIGUSR1, AccentColor=f"{red},{green},{blue}")

    def drop_accent(self):
        del self._general["AccentColor"]
        self._change(_PALETTE, signal.SIGUSR1)

    def _write(self):
        general = "".join(f"{key}={value}\n" for key, value in self._general.items())
        self._path.write_text(f"[General]\n{general}\n[Colors:Window]\nBackgroundNormal={_GROUNDS[self._is_dark]}\n",
                              encoding="utf-8")

    def _change(self, kind, number, **values):
        self._general |= values
        self._write()
        if self._stand_in:
            os.kill(self._stand_in.pid, number)
        else:
            self._bus.emit_signal(None, "/KGlobalSettings", "org.kde.KGlobalSettings", "notifyChange",
                                  GLib.Variant("(ii)", (kind, 0)))
            self._bus.flush_sync(None)
