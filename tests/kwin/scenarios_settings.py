"""What a person sets for all programs in Plasma's system settings holds for the board too."""

import sys

import board as boards
import settings
from harness import on_desktop
from kelpa import Kelpa
from processes import wait_until

# The heights in points of a todo's row, of a goal's entry beside the board and of a button.
_USUAL, _LARGE = (34, 18, 32), (45, 27, 43)
# As 0xRRGGBB.
_LIGHT, _DARK = 0xF4F5F7, 0x1B1C1F
_OWN, _OWN_DARK = 0x2563EB, 0x2F6BE4


def _board(desktop):
    path = desktop.directory / "board.sqlite"
    settings.write(path, goals=[("Release", ["Write"])])
    return path


def _frames(kelpa):
    parts = (kelpa.board.column("Release").todo("Write").node, kelpa.board.rail_entry("Release"),
             kelpa.board.button("New goal"))
    return [part.frame() for part in parts]


def _await_heights(kelpa, expected):
    def are_as_expected():
        try:
            return tuple(frame[3] for frame in _frames(kelpa)) == expected
        except (AttributeError, boards.Gone):
            return False

    wait_until(f"rows, entries and buttons are {expected} points high", are_as_expected)


def _width_of_button(kelpa):
    return _frames(kelpa)[2][2]


def the_size_of_plasma_s_font_is_followed_at_once(desktop, binary):
    path = _board(desktop)
    plasma = desktop.add_settings()
    with Kelpa(desktop, binary, path) as kelpa:
        _await_heights(kelpa, _USUAL)
        width = _width_of_button(kelpa)
        plasma.set_font(15)
        _await_heights(kelpa, _LARGE)
        assert _width_of_button(kelpa) > 1.3 * width, (width, _width_of_button(kelpa))
        plasma.set_font(8)
        wait_until("the button is narrower", lambda: _width_of_button(kelpa) < width)
        plasma.set_font(10)
        wait_until("the button is as it was", lambda: _width_of_button(kelpa) == width)
        _await_heights(kelpa, _USUAL)
    plasma.set_font(15)
    with Kelpa(desktop, binary, path) as kelpa:
        _await_heights(kelpa, _LARGE)


@on_desktop(has_opengl=True)
def plasma_s_colour_scheme_and_accent_are_followed_at_once(desktop, binary):
    path = _board(desktop)
    desktop.name_in_entry(sys.executable)
    plasma = desktop.add_settings(has_schemes=True)
    with Kelpa(desktop, binary, path) as kelpa:
        wait_until("the board is there", lambda: kelpa.board.button("New goal"))

        def await_colours(ground, button):
            def are_shown():
                picture = desktop.picture(kelpa.window)
                corner = picture.share_of(ground, picture.width - 14, picture.height - 14, 4, 4)
                return corner == 1 and picture.share_of(button, *kelpa.board.button("New goal").frame()) > 0.3

            wait_until(f"the board is {ground:06x} with buttons of {button:06x}", are_shown)

        await_colours(_LIGHT, _OWN)
        plasma.set_dark(True)
        await_colours(_DARK, _OWN_DARK)
        plasma.set_accent(0x91, 0x41, 0xAC)
        await_colours(_DARK, 0x9A4AB5)
        plasma.set_dark(False)
        await_colours(_LIGHT, 0x9141AC)
        # Too light for white text.
        plasma.set_accent(0xED, 0x5B, 0)
        await_colours(_LIGHT, 0xCA4C00)
        plasma.drop_accent()
        await_colours(_LIGHT, _OWN)
