"""How the board looks follows the settings of GNOME while it shows, through the session's own portal."""

import re

import settings
from assistant import Assistant
from board import Gone
from gnome_portal import start_portal
from harness import on_desktop
from kelpa import Kelpa
from processes import wait_until

_INTERFACE = "org.gnome.desktop.interface"
_ACCESS = "org.gnome.desktop.a11y.interface"
# Without a graphics card and while it is controlled remotely, the Shell wants no animations of its own accord.
_WANT_ANIMATIONS = """(settings => {
    for (let count = 0; count < 9 && !settings.enable_animations; ++count)
        settings.uninhibit_animations();
    return settings.enable_animations;
})(imports.gi.St.Settings.get())"""
# The heights in points of a todo's row, of a goal's entry beside the board and of a button.
_USUAL, _LARGE = (34, 18, 32), (45, 27, 43)
_LIGHT, _DARK = "#F4F5F7", "#1B1C1F"
_HIGH_LIGHT, _HIGH_DARK = "#FFFFFF", "#000000"
# Wider than the head of any card, so that it scrolls past.
_LONG = "Prepare Friday’s proposal for the whole committee and everybody who is to hear of it " * 3


class _Board:
    """What the screen shows of the board."""

    def __init__(self, desktop, kelpa):
        self._desktop = desktop
        self._window = kelpa.window.number
        self._path = desktop.directory / "shown.png"

    def _frame(self):
        return self._desktop.evaluate(
            "(frame => [frame.x, frame.y, frame.width, frame.height])(global.get_window_actors()"
            f".map(actor => actor.meta_window).find(window => window.get_id() === {self._window})"
            ".get_frame_rect())")

    def ground(self):
        """The colour in the lower right corner of the window, where nothing else is."""
        x, y, width, height = self._frame()
        self._desktop.screenshot(self._path)
        line = self._desktop.run("convert", self._path, "-crop",
                                 f"1x1+{x + width - 12}+{y + height - 12}", "-depth", "8", "txt:-")
        return re.search(r"#[0-9A-F]{6}", line)[0]

    def picture(self):
        """A hash of what the window shows."""
        x, y, width, height = self._frame()
        self._desktop.screenshot(self._path)
        return self._desktop.run("convert", self._path, "-crop", f"{width}x{height}+{x}+{y}", "-format",
                                 "%#", "info:")

    def _pictures(self):
        """Some pictures, over more than a second."""
        for _ in range(6):
            yield self.picture()
            self._desktop.run("sleep", "0.25")

    def is_moving(self):
        """Longer than a change of the board takes: each picture is another one."""
        return len(set(self._pictures())) == 6

    def is_at_rest(self):
        return len(set(self._pictures())) == 1


def _set(desktop, schema, key, value):
    desktop.run("gsettings", "set", schema, key, value)


def _heights(kelpa):
    """Of a todo's row, of a goal's entry beside the board and of a button."""
    parts = (kelpa.board.column("Release").todo("Write").node, kelpa.board.rail_entry("Release"),
             kelpa.board.button("New goal"))
    return tuple(part.frame()[3] for part in parts)


def _await_heights(kelpa, expected):
    def are_as_expected():
        try:
            return _heights(kelpa) == expected
        except (AttributeError, Gone):
            return False

    wait_until(f"rows, entries and buttons are {expected} points high", are_as_expected)


def _width_of_button(kelpa):
    return kelpa.board.button("New goal").frame()[2]


def _await_ground(board, color):
    wait_until(f"the board is {color}", lambda: board.ground() == color)


def light_and_dark_and_high_contrast_are_followed(desktop, binary):
    path = desktop.directory / "board.sqlite"
    settings.write(path, goals=[("Release", ["Write"])])
    _set(desktop, _INTERFACE, "color-scheme", "prefer-dark")
    start_portal(desktop)
    with Kelpa(desktop, binary, path) as kelpa:
        desktop.wait_for_active(kelpa.window)
        board = _Board(desktop, kelpa)
        _await_ground(board, _DARK)
        _set(desktop, _INTERFACE, "color-scheme", "default")
        _await_ground(board, _LIGHT)
        _set(desktop, _ACCESS, "high-contrast", "true")
        _await_ground(board, _HIGH_LIGHT)
        _set(desktop, _INTERFACE, "color-scheme", "prefer-dark")
        _await_ground(board, _HIGH_DARK)
        _set(desktop, _ACCESS, "high-contrast", "false")
        _await_ground(board, _DARK)


def larger_texts_have_larger_rows_at_once(desktop, binary):
    path = desktop.directory / "board.sqlite"
    settings.write(path, goals=[("Release", ["Write"])])
    start_portal(desktop)
    with Kelpa(desktop, binary, path) as kelpa:
        desktop.wait_for_active(kelpa.window)
        _await_heights(kelpa, _USUAL)
        width = _width_of_button(kelpa)
        _set(desktop, _INTERFACE, "text-scaling-factor", "1.5")
        _await_heights(kelpa, _LARGE)
        wide = _width_of_button(kelpa)
        assert wide > 1.3 * width, (width, wide)
        _set(desktop, _INTERFACE, "text-scaling-factor", "1.0")
        _await_heights(kelpa, _USUAL)
        assert _width_of_button(kelpa) == width
    _set(desktop, _INTERFACE, "text-scaling-factor", "1.5")
    with Kelpa(desktop, binary, path) as kelpa:
        _await_heights(kelpa, _LARGE)
        _set(desktop, _INTERFACE, "text-scaling-factor", "1.0")
        _await_heights(kelpa, _USUAL)


@on_desktop(has_animations=True)
def animations_are_switched_off_and_on_again(desktop, binary):
    path = desktop.directory / "board.sqlite"
    settings.write(path, goals=[(_LONG, ["Write"])])
    assert desktop.evaluate(_WANT_ANIMATIONS)
    start_portal(desktop)
    with Kelpa(desktop, binary, path) as kelpa:
        desktop.wait_for_active(kelpa.window)
        board = _Board(desktop, kelpa)
        Assistant(desktop, kelpa).press(lambda: kelpa.board.rail_entry(_LONG), "the goal is selected")
        wait_until("the title scrolls past", board.is_moving)
        _set(desktop, _INTERFACE, "enable-animations", "false")
        wait_until("nothing moves", board.is_at_rest)
        _set(desktop, _INTERFACE, "enable-animations", "true")
        wait_until("the title scrolls past again", board.is_moving)
