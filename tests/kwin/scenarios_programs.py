"""Programs that a goal starts, that are on X11, whose windows are kept above others, or in another activity."""

import sys

import board as boards
import settings
import terminals
from assistant import Assistant
from harness import on_desktop
from kelpa import Kelpa
from kwin import PROGRAM
from processes import wait_until


def _board(desktop):
    path = desktop.directory / "board.sqlite"
    settings.write(path)
    return path


def _press_card(desktop, kelpa, title):
    Assistant(desktop, kelpa).press(lambda: kelpa.board.card(boards.UNSORTED, title).node,
                                    f"the card {title!r} is pressed")


def a_goal_opens_a_terminal_and_has_it(desktop, binary):
    # foot divides by the size in millimetres, which a screen of this KWin does not have.
    terminal = desktop.directory / "terminal"
    terminal.write_text(f"#!/bin/sh\nexec {sys.executable} -B {PROGRAM} Terminal terminal\n", encoding="utf-8")
    terminal.chmod(0o700)
    terminals.check_goal_opens_one(desktop, binary, str(terminal), start=desktop.start_program)


@on_desktop(has_xwayland=True)
def a_goal_opens_a_terminal_on_x11_and_has_it(desktop, binary):
    terminals.check_goal_opens_one(desktop, binary, "xterm", desktop.x_display(), desktop.start_program)


@on_desktop(has_xwayland=True)
def windows_on_x11_and_on_wayland_are_cards_once_each(desktop, binary):
    path = _board(desktop)
    desktop.start_program("On Wayland")
    desktop.env |= desktop.x_display()
    terminal = desktop.start_xterm("On X11")
    window = desktop.wait_for_window("On X11")
    with Kelpa(desktop, binary, path) as kelpa:
        kelpa.wait_for_card(boards.UNSORTED, "On Wayland")
        card = kelpa.wait_for_card(boards.UNSORTED, "On X11")
        assert card.node.name == "XTerm: On X11", card.node.name
        assert len(kelpa.board.cards()) == 2
        desktop.wait_for_active(kelpa.window)
        _press_card(desktop, kelpa, "On X11")
        desktop.wait_for_active(window)

        def button():
            found = kelpa.board.card(boards.UNSORTED, "On X11")
            return found and found.node.find(boards.BUTTON_ROLES,
                                             lambda name: name == boards.CLOSE_PROCESS)[0]

        Assistant(desktop, kelpa).press(button, "the one on X11 is closed")
        wait_until("its program has ended", lambda: terminal.poll() is not None)
        wait_until("its card is gone", lambda: kelpa.board.card(boards.UNSORTED, "On X11") is None)
        assert kelpa.board.card(boards.UNSORTED, "On Wayland")


def a_window_that_is_kept_above_stays_so_when_others_come_forward(desktop, binary):
    path = _board(desktop)
    windows = {}
    for title in ("Clock", "Letter"):
        desktop.start_program(title)
        windows[title] = desktop.wait_for_window(title)
    desktop.change(windows["Clock"], "window.keepAbove = true")

    def check():
        assert desktop.is_kept_above(windows["Clock"]) and not desktop.is_kept_above(windows["Letter"])
        titles = [desktop.window(number).title for number in desktop.stacking()]
        assert titles.index("Clock") > titles.index("Letter"), titles
        assert titles.index("Clock") > titles.index(boards.WINDOW), titles

    with Kelpa(desktop, binary, path) as kelpa:
        for title in ("Letter", "Clock"):
            kelpa.wait_for_card(boards.UNSORTED, title)
            _press_card(desktop, kelpa, title)
            desktop.wait_for_active(windows[title])
            check()
        # Also when it was minimised.
        desktop.change(windows["Clock"], "window.minimized = true")
        wait_until("it is minimised", lambda: desktop.window(windows["Clock"].number).is_minimized)
        _press_card(desktop, kelpa, "Clock")
        desktop.wait_for_active(windows["Clock"])
        check()


@on_desktop(has_activities=True)
def a_window_of_another_activity_is_listed_and_its_activity_shown(desktop, binary):
    path = _board(desktop)
    first = desktop.activities.current()
    second = desktop.activities.add("Second")
    desktop.activities.show(second)
    desktop.start_program("Elsewhere")
    window = desktop.wait_for_window("Elsewhere")
    desktop.change(window, f'window.activities = ["{second}"]')
    desktop.activities.show(first)
    desktop.start_program("Here")
    with Kelpa(desktop, binary, path) as kelpa:
        for title in ("Here", "Elsewhere"):
            kelpa.wait_for_card(boards.UNSORTED, title)
        assert desktop.activities.current() == first, "nobody has gone there"
        _press_card(desktop, kelpa, "Elsewhere")
        desktop.wait_for_active(window)
        wait_until("its activity is shown", lambda: desktop.activities.current() == second)
        # The board has come with it, or comes when it is called.
        desktop.run(binary, "--settings", path, "--show")
        desktop.wait_for_active(kelpa.window)
        kelpa.wait_for_card(boards.UNSORTED, "Here")
