"""KRunner, Plasma's search, of the root that KWin is of. It knows Kelpa by the file that the package installs."""

import pathlib
import shutil

import board as boards
import other_root
import processes
from fake_keyboard import FakeKeyboard
from processes import wait_until

_RUNNER = pathlib.Path(__file__).resolve().parents[3] / "data" / "search" / "org.kelpa.Kelpa.Runner.desktop"

# What Plasma's settings write when a person unchecks Kelpa in them.
_OFF = "[Plugins]\norg.kelpa.KelpaEnabled=false\n"


class KRunner:
    """`folder` is one of the desktop's that the root sees too. With `is_kelpa_off` the person has switched Kelpa
    off in Plasma's settings."""

    def __init__(self, desktop, root, folder, is_kelpa_off):
        share = folder / "share"
        (share / "krunner" / "dbusplugins").mkdir(parents=True)
        shutil.copy(_RUNNER, share / "krunner" / "dbusplugins")
        if is_kelpa_off:
            (pathlib.Path(desktop.env["XDG_CONFIG_HOME"]) / "krunnerrc").write_text(_OFF, encoding="utf-8")
        self._keyboard = FakeKeyboard()
        desktop.start(*other_root.command(
            root, folder, "env", f"XDG_DATA_DIRS={share}:/usr/share", "QT_QPA_PLATFORM=wayland",
            "krunner", "--daemon"))
        process = wait_until("KRunner runs", lambda: processes.find("krunner", "--daemon"))
        self._parts = boards.Board(process)
        wait_until("KRunner is there", self._has_window)

    def search(self, text):
        """Opens it as a person does, and types the text."""
        self._keyboard.key("alt+space")
        wait_until("KRunner is open", self._is_open)
        self._keyboard.type(text)

    def results(self):
        """Best first, each with what is said about it and by whom."""
        try:
            return [[part.name, part.description] for part in self._shown(boards.Atspi.Role.LIST_ITEM)]
        except boards.Gone:
            # It replaces what it shows meanwhile.
            return []

    def choose_first(self):
        self._keyboard.key("Return")
        wait_until("KRunner is closed", lambda: not self._is_open())

    def _has_window(self):
        try:
            return any(part.role == boards.Atspi.Role.FRAME for part, _ in self._parts.walk())
        except boards.Gone:
            return False

    def _is_open(self):
        try:
            return any(field.has_state(boards.Atspi.StateType.FOCUSED)
                       for field in self._shown(boards.Atspi.Role.TEXT))
        except boards.Gone:
            return False

    def _shown(self, role):
        return [part for part, _ in self._parts.walk()
                if part.role == role and part.has_state(boards.Atspi.StateType.SHOWING)]
