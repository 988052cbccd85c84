"""Super, Super where a tap of it calls Plasma's launcher, as it does by default since Plasma 6."""

import contextlib
import re
import subprocess
import time

import board as boards
import settings
from fake_keyboard import FakeKeyboard
from kelpa import Kelpa
from processes import wait_until

# As Qt numbers them.
_META, _ALT_AND_SPACE = 0x01000022, 0x08000020


def _check_two_taps(desktop, binary, key):
    path = desktop.directory / "board.sqlite"
    settings.write(path)
    desktop.start_program("Typed into")
    window = desktop.wait_for_window("Typed into")
    launcher = desktop.add_launcher(_META, _ALT_AND_SPACE)
    keyboard = FakeKeyboard()
    with Kelpa(desktop, binary, path) as kelpa:
        kelpa.wait_for_card(boards.UNSORTED, "Typed into")
        desktop.activate(window)
        desktop.wait_for_active(window)
        keyboard.key(key)
        wait_until("the launcher is called", lambda: launcher.calls() == 1)
        # Longer than between the taps of a pair.
        time.sleep(1)
        keyboard.key("Super_L+j", key)
        wait_until("the launcher is called again", lambda: launcher.calls() == 2)
        time.sleep(1)
        assert desktop.active_window() == window.number
        calls = 2
        # The calls bear no time of their own, so a busy machine may make two slow taps of them.
        for _ in range(3):
            keyboard.key(key, key)
            calls += 2
            with contextlib.suppress(AssertionError):
                wait_until("Kelpa is active", lambda: desktop.active_window() == kelpa.window.number, 10)
                break
            time.sleep(1)
        desktop.wait_for_active(kelpa.window)
        wait_until("the launcher has had its calls", lambda: launcher.calls() == calls)


def super_twice_brings_kelpa_forward_where_it_calls_the_launcher(desktop, binary):
    _check_two_taps(desktop, binary, "Super_L")


def the_launcher_s_other_key_twice_brings_kelpa_forward_too(desktop, binary):
    _check_two_taps(desktop, binary, "alt+space")


class _Told:
    """What the person is told of the double tap."""

    _TAPS = "Press Super twice to bring Kelpa forward instantly"
    _KEY_TO_GIVE = "To bring Kelpa forward, bind a key to “kelpa --show” in the desktop’s settings"

    def __init__(self, desktop, binary, kelpa):
        self._desktop = desktop
        self._binary = binary
        self._kelpa = kelpa

    def _about(self):
        """The word that follows "double tap"."""
        told = subprocess.run([str(self._binary), "--about-desktop"], env=self._desktop.env, timeout=60,
                              capture_output=True, text=True, check=True).stdout
        return re.search(r"^double tap +(\w+)", told, re.MULTILINE)[1]

    def check_taps(self):
        wait_until("the board names the taps", lambda: self._kelpa.board.has_text(self._TAPS))
        assert not self._kelpa.board.has_text(self._KEY_TO_GIVE)
        assert self._about() == "yes"

    def check_key_to_give(self):
        wait_until("the board names a key to give", lambda: self._kelpa.board.has_text(self._KEY_TO_GIVE))
        assert not self._kelpa.board.has_text(self._TAPS)
        assert self._about() == "no"


def the_board_names_super_twice_while_it_calls_the_launcher(desktop, binary):
    path = desktop.directory / "board.sqlite"
    settings.write(path, goals=[("Release", ["Write"])])
    with Kelpa(desktop, binary, path) as kelpa:
        told = _Told(desktop, binary, kelpa)
        told.check_key_to_give()
        launcher = desktop.add_launcher(_META, _ALT_AND_SPACE)
        told.check_taps()
        launcher.leave()
        told.check_key_to_give()
        # Super calls something else, as the overview.
        desktop.add_launcher(_ALT_AND_SPACE)
        told.check_key_to_give()
        desktop.add_launcher(_ALT_AND_SPACE, _META)
        told.check_taps()


def before_plasma_6_the_board_names_a_key_to_give_though_the_launcher_has_super(desktop, binary):
    path = desktop.directory / "board.sqlite"
    settings.write(path, goals=[("Release", ["Write"])])
    desktop.add_launcher(_META, _ALT_AND_SPACE)
    with Kelpa(desktop, binary, path) as kelpa:
        _Told(desktop, binary, kelpa).check_key_to_give()
