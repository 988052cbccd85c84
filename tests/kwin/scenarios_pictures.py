"""Previews from the screenshot service of a KWin that draws with OpenGL, as on a real screen."""

import re
import sys
import time

import board as boards
import settings
from harness import on_desktop
from kelpa import Kelpa
from plain_windows import PlainWindows
from processes import wait_until

# As 0xRRGGBB; the board has none of them.
_BLUE, _RED, _GREEN = 0x3366CC, 0xCC3333, 0x22AA44

_NO_ENTRY = "once Kelpa’s package is installed"


def _board_with_pictures(desktop, binary):
    """An empty board, where KWin gives pictures to Kelpa and to the scenario."""
    path = desktop.directory / "board.sqlite"
    settings.write(path)
    desktop.name_in_entry(binary)
    desktop.name_in_entry(sys.executable)
    return path


def _shows(desktop, kelpa, title, colour):
    """Whether the card shows a window of that colour."""
    def look():
        kelpa.check_alive()
        try:
            card = kelpa.board.card(boards.UNSORTED, title)
            frame = card and card.node.frame()
        except boards.Gone:
            return False
        # On Wayland a program does not know where its window is, so places are within the window.
        return bool(frame) and desktop.picture(kelpa.window).share_of(colour, *frame) > 0.3

    return look


def _open_painted(desktop, title, colour, width=200):
    windows = PlainWindows(width=width)
    windows.fill(colour)
    window = windows.open(title.encode())
    desktop.wait_for_window(title)
    return windows, window


@on_desktop(has_opengl=True)
def windows_covered_elsewhere_and_minimised_have_previews_in_their_colours(desktop, binary):
    path = _board_with_pictures(desktop, binary)
    desktop.add_desktop()
    colours = {"Elsewhere": _BLUE, "Minimised": _GREEN, "Covered": _RED}
    for title, colour in colours.items():
        _open_painted(desktop, title, colour)
    desktop.move(desktop.wait_for_window("Elsewhere"), 2)
    desktop.change(desktop.wait_for_window("Minimised"), "window.minimized = true")
    with Kelpa(desktop, binary, path) as kelpa:
        kelpa.wait_for_previews(boards.UNSORTED)
        for title, colour in colours.items():
            wait_until(f"the card {title!r} shows {colour:06x}", _shows(desktop, kelpa, title, colour))
        assert not kelpa.board.has_text(boards.CANNOT_BE_CAPTURED)
        assert desktop.window(desktop.wait_for_window("Minimised").number).is_minimized
        assert desktop.current_desktop() == 1
    about = desktop.run(binary, "--about-desktop")
    assert "previews    yes\n" in about, about


@on_desktop(has_opengl=True)
def a_preview_follows_its_window_and_goes_with_it(desktop, binary):
    path = _board_with_pictures(desktop, binary)
    windows, window = _open_painted(desktop, "Painted", _BLUE)
    with Kelpa(desktop, binary, path) as kelpa:
        wait_until("the card shows it", _shows(desktop, kelpa, "Painted", _BLUE))
        windows.paint(window, _GREEN)
        # Another title says that the contents may have changed.
        windows.rename(window, b"Painted anew")
        wait_until("the card follows it", _shows(desktop, kelpa, "Painted anew", _GREEN))
        windows.close(window)
        wait_until("its card is gone",
                   lambda: kelpa.board.card(boards.UNSORTED, "Painted anew") is None)


def _pictures_taken(kelpa, width):
    """How many of windows about as wide as that, whose frames KWin draws."""
    widths = map(int, re.findall(r"captured a window of (\d+) x \d+ pixels", kelpa.output()))
    return sum(abs(each - width) < 50 for each in widths)


@on_desktop(has_opengl=True)
def a_window_that_does_not_change_is_not_taken_again(desktop, binary):
    path = _board_with_pictures(desktop, binary)
    _open_painted(desktop, "Still", _BLUE, width=200)
    windows, window = _open_painted(desktop, "Changing", _GREEN, width=400)
    began = time.monotonic()
    with Kelpa(desktop, binary, path, env={"QT_LOGGING_RULES": "kelpa.store.debug=true"}) as kelpa:
        kelpa.wait_for_previews(boards.UNSORTED)

        def change(turn):
            before = _pictures_taken(kelpa, 400)
            windows.rename(window, b"Changed %d" % turn)
            wait_until("the other window is taken again", lambda: _pictures_taken(kelpa, 400) > before)

        # A first picture of one colour alone is taken a second time.
        for turn in range(2):
            change(turn)
        before = _pictures_taken(kelpa, 200)
        assert before >= 1
        for turn in range(8):
            change(turn)
        # KWin does not tell when a window draws, so each is taken every half minute.
        taken = _pictures_taken(kelpa, 200) - before
        assert taken <= (time.monotonic() - began) // 30, taken


@on_desktop(has_opengl=True)
def without_a_desktop_entry_the_cards_say_so_and_with_one_there_are_previews(desktop, binary):
    path = desktop.directory / "board.sqlite"
    settings.write(path)
    desktop.name_in_entry(sys.executable)
    _open_painted(desktop, "Painted", _BLUE)
    with Kelpa(desktop, binary, path) as kelpa:
        card = kelpa.wait_for_card(boards.UNSORTED, "Painted")
        wait_until("the card says why", lambda: any(card.node.each_named(lambda name: _NO_ENTRY in name)))
        assert not card.has_preview
        kelpa.quit()
        desktop.name_in_entry(binary)
        kelpa.start()
        wait_until("the card shows it", _shows(desktop, kelpa, "Painted", _BLUE))


@on_desktop(has_opengl=True, has_xwayland=True)
def a_minimised_window_on_x11_has_its_preview(desktop, binary):
    path = _board_with_pictures(desktop, binary)
    windows, other = _open_painted(desktop, "On Wayland", _RED)
    desktop.env |= desktop.x_display()
    desktop.start_xterm("On X11", color=f"#{_BLUE:06x}")
    window = desktop.wait_for_window("On X11")
    with Kelpa(desktop, binary, path) as kelpa:
        wait_until("the card shows it", _shows(desktop, kelpa, "On X11", _BLUE))
        desktop.change(window, "window.minimized = true")
        # Each has its turn before the other has its next one.
        for turn, colour in enumerate((_GREEN, _RED, _GREEN)):
            windows.paint(other, colour)
            title = f"On Wayland, {turn}"
            windows.rename(other, title.encode())
            wait_until("the other card follows its window", _shows(desktop, kelpa, title, colour))
        assert desktop.window(window.number).is_minimized
        wait_until("the card still shows it", _shows(desktop, kelpa, "On X11", _BLUE))
        kelpa.quit()
        kelpa.start()
        wait_until("the card shows it from the start", _shows(desktop, kelpa, "On X11", _BLUE))
        assert desktop.window(window.number).is_minimized
