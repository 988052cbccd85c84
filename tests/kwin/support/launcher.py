"""Plasma's launcher as far as KGlobalAccel knows it: an action with keys, and what hears of its calls."""

import gi

gi.require_version("Gio", "2.0")
from gi.repository import Gio, GLib  # noqa: E402

_NAME = "org.kde.kglobalaccel"
_COMPONENT, _ACTION = "plasmashell", "activate application launcher"
_IDENTITY = [_COMPONENT, _ACTION, _COMPONENT, "Activate Application Launcher"]
# The keys are there and nobody else's defaults take their place.
_SET_PRESENT_AND_NO_AUTOLOADING = 0x2 | 0x4


class Launcher:
    """`keys` are numbers of Qt's. `script` is a connection to the bus."""

    def __init__(self, script, *keys):
        self._heard = []
        self._script = script
        self._context = script.context
        self._context.push_thread_default()
        try:
            script.bus.signal_subscribe(_NAME, f"{_NAME}.Component", "globalShortcutPressed",
                                        f"/component/{_COMPONENT}", None, Gio.DBusSignalFlags.NONE, self._hear)
        finally:
            self._context.pop_thread_default()
        for method, arguments in (
                ("doRegister", GLib.Variant("(as)", (_IDENTITY,))),
                ("setShortcutKeys", GLib.Variant("(asa(ai)u)", (
                    _IDENTITY, [([key, 0, 0, 0],) for key in keys], _SET_PRESENT_AND_NO_AUTOLOADING)))):
            script.call("/kglobalaccel", "org.kde.KGlobalAccel", method, arguments, name=_NAME)

    def leave(self):
        """Its keys call nobody any more, as when Plasma's shell has ended."""
        self._script.call("/kglobalaccel", "org.kde.KGlobalAccel", "setInactive",
                          GLib.Variant("(as)", (_IDENTITY,)), name=_NAME)

    def calls(self):
        """How often its keys have called it."""
        while self._context.iteration(False):
            pass
        return len(self._heard)

    def _hear(self, _bus, _sender, _path, _interface, _signal, arguments):
        if arguments.unpack()[1] == _ACTION:
            self._heard.append(_ACTION)
