"""Super, Super where a tap of it calls Plasma's launcher, as it does by default since Plasma 6."""

import contextlib
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
