"""The real program in a GNOME session: what it lists, remembers and acts on, by the extension."""

import shutil
import time

import board as boards
import settings
import terminals
from assistant import Assistant
from harness import on_desktop
from kelpa import Kelpa
from processes import wait_until


def windows_are_cards_and_one_that_is_assigned_is_there_after_a_restart(desktop, binary):
    terminals.check_assigned_one_is_there_after_a_restart(desktop, binary)


@on_desktop(has_xwayland=True)
def windows_on_x11_and_on_wayland_are_cards_once_each(desktop, binary):
    path = desktop.directory / "board.sqlite"
    settings.write(path)
    desktop.start_foot("On Wayland")
    desktop.start("xterm", "-T", "On X11", "-e", "cat")
    window = desktop.wait_for_window("On X11")
    with Kelpa(desktop, binary, path) as kelpa:
        kelpa.wait_for_card(boards.UNSORTED, "On Wayland")
        card = kelpa.wait_for_card(boards.UNSORTED, "On X11")
        assert card.node.name == "XTerm: On X11", card.node.name
        Assistant(desktop, kelpa).press(lambda: kelpa.board.card(boards.UNSORTED, "On X11").node,
                                        "the card is pressed")
        desktop.wait_for_active(window)


@on_desktop(is_enabled=False)
def the_boards_button_switches_the_extension_on_and_it_may_go_again(desktop, binary):
    path = desktop.directory / "board.sqlite"
    settings.write(path)
    desktop.start_foot("A terminal")
    with Kelpa(desktop, binary, path) as kelpa:
        Assistant(desktop, kelpa).press_button("Switch on")
        kelpa.wait_for_card(boards.UNSORTED, "A terminal")
        about = desktop.run(binary, "--about-desktop")
        assert "the Shell has Kelpa's extension, version 4\n" in about, about
        desktop.set_extension(False)
        wait_until("its card is gone", lambda: kelpa.board.card(boards.UNSORTED, "A terminal") is None)
        desktop.set_extension(True)
        kelpa.wait_for_card(boards.UNSORTED, "A terminal")


def a_second_start_brings_the_first_forward(desktop, binary):
    path = desktop.directory / "board.sqlite"
    settings.write(path)
    with Kelpa(desktop, binary, path) as kelpa:
        desktop.start_foot("In front")
        kelpa.wait_for_card(boards.UNSORTED, "In front")
        desktop.wait_for_active(desktop.wait_for_window("In front"))
        desktop.run(binary, "--settings", path)
        desktop.wait_for_active(kelpa.window)
        desktop.on_window(kelpa.window, "window.minimize()")
        wait_until("another window has the keyboard", lambda: desktop.active_window() != kelpa.window.number)
        desktop.run(binary, "--settings", path, "--show")
        desktop.wait_for_active(kelpa.window)


def a_goal_opens_a_terminal_and_has_it(desktop, binary):
    terminals.check_goal_opens_one(desktop, binary, "foot")


def two_taps_of_super_bring_the_board_forward(desktop, binary):
    path = desktop.directory / "board.sqlite"
    settings.write(path)
    with Kelpa(desktop, binary, path) as kelpa:
        desktop.start_foot("In front")
        kelpa.wait_for_card(boards.UNSORTED, "In front")
        _wait_for_two_taps(desktop, "Super_L")


def _wait_for_two_taps(desktop, key, prepare=lambda: None):
    """Taps the key twice until the board, which another window has covered, has the keyboard."""
    desktop.wait_for_active(desktop.wait_for_window("In front"))
    prepare()
    own = desktop.wait_for_window("Kelpa")

    def is_in_front():
        desktop.keyboard.at_once(key, key)
        time.sleep(0.5)
        return desktop.active_window() == own.number

    # The first keys of a session may be lost.
    wait_until("the board has the keyboard", is_in_front)
    wait_until("the overview is closed", lambda: not desktop.is_overview_open())


def two_taps_are_of_the_key_that_the_person_gives_to_the_overview(desktop, binary):
    path = desktop.directory / "board.sqlite"
    settings.write(path)

    def give(key):
        desktop.evaluate("new imports.gi.Gio.Settings({schema_id: 'org.gnome.mutter'})"
                         f".set_string('overlay-key', '{key}')")

    give("")
    with Kelpa(desktop, binary, path) as kelpa:
        desktop.start_foot("In front")
        kelpa.wait_for_card(boards.UNSORTED, "In front")
        _wait_for_two_taps(desktop, "Super_R", lambda: give("Super_R"))


@on_desktop(is_enabled=False)
def installed_by_the_board_the_extension_works_after_the_next_login(desktop, binary):
    path = desktop.directory / "board.sqlite"
    settings.write(path)
    shutil.rmtree(desktop.extension_folder())
    desktop.kill_shell()
    desktop.start_shell()
    with Kelpa(desktop, binary, path) as kelpa:
        Assistant(desktop, kelpa).press_button("Install")
        wait_until("a new login is asked for",
                   lambda: any("Log out and in again" in node.description
                               for node, _ in kelpa.board.walk() if node.name == boards.NO_WINDOWS_LISTED))
        kelpa.quit()
    desktop.kill_shell()
    desktop.start_shell()
    desktop.start_foot("A terminal")
    with Kelpa(desktop, binary, path) as kelpa:
        kelpa.wait_for_card(boards.UNSORTED, "A terminal")
