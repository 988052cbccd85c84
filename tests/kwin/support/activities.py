"""KDE's activities, by the service that keeps them. KWin asks it which there are, and which is shown."""

import configparser
import pathlib

import gi

gi.require_version("GLib", "2.0")
from gi.repository import GLib  # noqa: E402

from processes import wait_until  # noqa: E402

_NAME = "org.kde.ActivityManager"
_SERVICE = pathlib.Path("/usr/share/dbus-1/services") / f"{_NAME}.service"


def is_installed():
    return _SERVICE.exists()


class Activities:
    """`script` is a connection to the bus of the desktop, on which the service is started: that bus starts none
    by itself."""

    def __init__(self, desktop, script):
        self._script = script
        service = configparser.ConfigParser()
        service.read(_SERVICE, encoding="utf-8")
        desktop.start("env", "QT_QPA_PLATFORM=offscreen", service["D-BUS Service"]["Exec"])
        wait_until("there is an activity", self._has_one)

    def _call(self, method, text=None):
        return self._script.call("/ActivityManager/Activities", f"{_NAME}.Activities", method,
                                 text and GLib.Variant("(s)", (text,)), name=_NAME)

    def _has_one(self):
        try:
            return self.current()
        except GLib.Error:
            return None

    def current(self):
        return self._call("CurrentActivity")[0]

    def add(self, name):
        """Its identifier."""
        return self._call("AddActivity", name)[0]

    def show(self, activity):
        def is_shown():
            self._call("SetCurrentActivity", activity)
            return self._script.run("report(workspace.currentActivity);") == activity

        # KWin hears of a new one a moment after it is there.
        wait_until("the activity is shown", is_shown)
