"""Previews of windows in a session whose compositor takes pictures of them, and of one whose does not."""

import subprocess

import board as boards
import settings
from assistant import Assistant
from harness import on_desktop
from kelpa import Kelpa
from labwc import LabwcDesktop
from plain_windows import PlainWindows
from processes import wait_until

_WITHOUT_IPC = {"SWAYSOCK": ""}
_NO_PREVIEWS = "This desktop does not capture windows"

# As 0xRRGGBB; the board has none of them.
_BLUE, _RED, _GREEN = 0x3366CC, 0xCC3333, 0x22AA44


def _share_of(desktop, kelpa, title, colour):
    """How much of the card has that colour on the screen, as a number from 0 to 1."""
    card = kelpa.board.card(boards.UNSORTED, title)
    window = desktop.rectangle_of(kelpa.window.number)
    if card is None or window is None:
        return 0
    # On Wayland a program does not know where its window is.
    x, y, width, height = card.node.frame()
    return _count(desktop, colour, f"{width}x{height}+{window['x'] + x}+{window['y'] + y}") / (width * height)


def _count(desktop, colour, place="100%x100%+0+0"):
    """How many pixels of the screen have that colour; `place` as ImageMagick writes rectangles."""
    picture = desktop.screenshot(desktop.directory / "screen.png")
    pixels = subprocess.run(["convert", picture, "-crop", place, "-depth", "8", "rgb:-"], check=True,
                            stdout=subprocess.PIPE).stdout
    wanted = colour.to_bytes(3, "big")
    return sum(pixels[at:at + 3] == wanted for at in range(0, len(pixels), 3))


def _wait_for_colour(desktop, kelpa, title, colour):
    def look():
        kelpa.check_alive()
        try:
            return _share_of(desktop, kelpa, title, colour) > 0.3
        except boards.Gone:
            return False

    wait_until(f"the card {title!r} shows {colour:06x}", look)


def _open(windows, title, colour):
    """A window of one colour; those before keep theirs."""
    return windows[colour].open(title.encode())


def _painted(*colours):
    windows = {colour: PlainWindows() for colour in colours}
    for colour, each in windows.items():
        each.fill(colour)
    return windows


def windows_in_front_covered_and_elsewhere_have_previews_in_their_colours(desktop, binary):
    path = desktop.directory / "board.sqlite"
    windows = _painted(_BLUE, _RED, _GREEN)
    # On a workspace that no output shows, behind a tab, and beside Kelpa.
    desktop.command("workspace elsewhere")
    _open(windows, "Elsewhere", _BLUE)
    desktop.wait_for_window("Elsewhere")
    desktop.command("workspace here")
    _open(windows, "Covered", _RED)
    desktop.wait_for_window("Covered")
    _open(windows, "In front", _GREEN)
    front = desktop.wait_for_window("In front")
    for env in ({}, _WITHOUT_IPC):
        settings.write(path)
        with Kelpa(desktop, binary, path, env=env) as kelpa:
            desktop.command(f"[con_id={front.number}] floating enable, resize set 200 150, "
                            "move position 1390 840")
            kelpa.focus()
            for title, colour in (("Elsewhere", _BLUE), ("Covered", _RED), ("In front", _GREEN)):
                _wait_for_colour(desktop, kelpa, title, colour)
            assert not kelpa.board.has_text(boards.CANNOT_BE_CAPTURED)
            kelpa.quit()


def a_preview_follows_its_window(desktop, binary):
    path = desktop.directory / "board.sqlite"
    settings.write(path)
    windows = _painted(_BLUE)[_BLUE]
    desktop.command("workspace elsewhere")
    window = windows.open(b"Painted")
    desktop.wait_for_window("Painted")
    desktop.command("workspace here")
    with Kelpa(desktop, binary, path) as kelpa:
        _wait_for_colour(desktop, kelpa, "Painted", _BLUE)
        windows.paint(window, _GREEN)
        _wait_for_colour(desktop, kelpa, "Painted", _GREEN)


@on_desktop(kind=LabwcDesktop)
def on_labwc_minimised_windows_have_previews_that_follow_them(desktop, binary):
    path = desktop.directory / "board.sqlite"
    settings.write(path)
    windows = _painted(_BLUE)[_BLUE]
    window = windows.open(b"Minimised")
    listed = desktop.wait_for_window("Minimised")
    lines = _answer(desktop, binary, {})
    assert "previews yes" in lines, lines
    with Kelpa(desktop, binary, path) as kelpa:
        kelpa.wait_for_previews(boards.UNSORTED)
        # From now on nothing but its card has its colour.
        desktop.minimise(listed)

        def shows(colour):
            kelpa.check_alive()
            return _count(desktop, colour) > 3000

        wait_until("the card shows it", lambda: shows(_BLUE))
        windows.paint(window, _GREEN)
        wait_until("the card follows it", lambda: shows(_GREEN) and not shows(_BLUE))


def _answer(desktop, binary, env):
    told = subprocess.run([str(binary), "--about-desktop"], env=desktop.env | env,
                          stdin=subprocess.DEVNULL, capture_output=True, text=True, timeout=20, check=True)
    return [" ".join(line.split()) for line in told.stdout.splitlines()]


@on_desktop(kind=LabwcDesktop)
def on_labwc_windows_are_cards_that_say_why_they_have_no_preview(desktop, binary):
    path = desktop.directory / "board.sqlite"
    settings.write(path)
    windows = PlainWindows()
    windows.open(b"First")
    windows.open(b"Second")
    first = desktop.wait_for_window("First")
    desktop.wait_for_window("Second")
    lines = _answer(desktop, binary, {})
    for expected in ("desktop wlr", "windows yes"):
        assert expected in lines, (expected, lines)
    assert any(line.startswith("previews no") for line in lines), lines
    with Kelpa(desktop, binary, path) as kelpa:
        for title in ("First", "Second"):
            card = kelpa.wait_for_card(boards.UNSORTED, title)
            wait_until(f"the card {title!r} says why", lambda card=card: any(
                card.node.each_named(lambda name: name == _NO_PREVIEWS)))
            assert not card.has_preview
        Assistant(desktop, kelpa).press(lambda: kelpa.board.card(boards.UNSORTED, "First").node,
                                        "the card is pressed")
        wait_until("its window is active", lambda: desktop.active_window() == first.number)


def what_is_asked_about_the_desktop_names_previews(desktop, binary):
    for env in ({}, _WITHOUT_IPC):
        lines = _answer(desktop, binary, env)
        for expected in ("desktop wlr", "windows yes", "previews yes"):
            assert expected in lines, (expected, lines)


def without_its_protocols_previews_are_missing_and_the_answer_says_so(desktop, binary):
    lines = _answer(desktop, binary, {})
    assert "windows yes" in lines, lines
    at = lines.index("previews no: the compositor has no protocol for it that Kelpa speaks")
    assert lines[at + 1] == "to mend it: log in to a session on X11", lines
