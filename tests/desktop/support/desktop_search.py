"""The search of a desktop: asks the running Kelpa on the session bus as the Shell does."""

import re

import board as boards

_RESULT = re.compile(r'string "((?:goal|todo|window):[^"]+)"')
_NAME = re.compile(r'string "(org\.kelpa\.Kelpa\.board[^"]+)"')


def name_of_kelpa(desktop):
    """The name on the bus of the only Kelpa of the desktop, whichever board it has."""
    names = desktop.run("dbus-send", "--session", "--print-reply", "--dest=org.freedesktop.DBus", "/",
                        "org.freedesktop.DBus.ListNames")
    return next((name for name in _NAME.findall(names)), "org.kelpa.Kelpa")


class DesktopSearch:
    """For the only Kelpa of the desktop, whichever board it has."""

    def __init__(self, desktop):
        self._desktop = desktop

    def find(self, *words):
        """The best of what is found; None without any, and until Kelpa can be asked."""
        found = _RESULT.findall(self._call("GetInitialResultSet", _strings(words), check=False))
        return found[0] if found else None

    def open(self, result, *words):
        self._call("ActivateResult", f"string:{result}", _strings(words), "uint32:0")

    def _call(self, method, *arguments, check=True):
        return self._desktop.run(
            "dbus-send", "--session", "--print-reply", f"--dest={self._name()}", "/org/kelpa/SearchProvider",
            f"org.gnome.Shell.SearchProvider2.{method}", *arguments, check=check)

    def _name(self):
        return name_of_kelpa(self._desktop)


def _strings(words):
    return "array:string:" + ",".join(words)


def is_revealed(kelpa, column, title):
    """Whether the todo is highlighted, and the whole of it in view."""
    found = kelpa.board.column(column)
    todo = found and found.todo(title)
    if not todo or not todo.node.has_state(boards.Atspi.StateType.SELECTED):
        return False
    _, top, _, height = todo.node.board_around().frame()
    _, y, _, own_height = todo.node.frame()
    return own_height > 0 and top <= y and y + own_height <= top + height
