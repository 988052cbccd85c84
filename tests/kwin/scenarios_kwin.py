"""The board natively in a session of KWin: what it lists, remembers and acts on."""

import re

import board as boards
import settings
from assistant import Assistant
from kelpa import Kelpa
from processes import wait_until

# A script asks every 20 seconds whether its Kelpa is there.
_GONE_WITHIN = 45


def _board(desktop, **contents):
    path = desktop.directory / "board.sqlite"
    settings.write(path, **contents)
    return path


def _press_card(desktop, kelpa, title):
    Assistant(desktop, kelpa).press(lambda: kelpa.board.card(boards.UNSORTED, title).node,
                                    f"the card {title!r} is pressed")


def windows_are_cards_and_one_that_is_assigned_is_there_after_a_restart(desktop, binary):
    path = _board(desktop, goals=[("Release", [])])
    desktop.start_program("First window")
    desktop.start_program("Second window")
    with Kelpa(desktop, binary, path) as kelpa:
        for title in ("First window", "Second window"):
            kelpa.wait_for_card(boards.UNSORTED, title)
        assert len(kelpa.board.cards()) == 2, "Kelpa's own window is on the board"
        choice = kelpa.board.card(boards.UNSORTED, "First window").node.name
        Assistant(desktop, kelpa).assign("Release", choice)
        kelpa.wait_for_card("Release", "First window")
        kelpa.quit()
        assert not desktop.has_script(path), "Kelpa has left its script in KWin"
        stored = settings.StoredBoard(settings.read(path))
        assert stored.window_counts == {"Release": 1}, stored
        kelpa.start()
        kelpa.wait_for_card("Release", "First window")
        kelpa.wait_for_card(boards.UNSORTED, "Second window")
        # What opens later is told by KWin.
        desktop.start_program("Third window")
        kelpa.wait_for_card(boards.UNSORTED, "Third window")


def a_card_brings_its_window_forward_and_closes_its_program(desktop, binary):
    path = _board(desktop)
    desktop.start_program("First window")
    other = desktop.start_program("Second window")
    window = desktop.wait_for_window("First window")
    with Kelpa(desktop, binary, path) as kelpa:
        kelpa.wait_for_card(boards.UNSORTED, "First window")
        kelpa.wait_for_card(boards.UNSORTED, "Second window")
        desktop.wait_for_active(kelpa.window)
        _press_card(desktop, kelpa, "First window")
        desktop.wait_for_active(window)

        def button():
            found = kelpa.board.card(boards.UNSORTED, "Second window")
            return found and found.node.find(boards.BUTTON_ROLES,
                                             lambda name: name == boards.CLOSE_PROCESS)[0]

        Assistant(desktop, kelpa).press(button, "the second is closed")
        wait_until("its program has ended", lambda: other.poll() is not None)
        wait_until("its card is gone",
                   lambda: kelpa.board.card(boards.UNSORTED, "Second window") is None)
        assert kelpa.board.card(boards.UNSORTED, "First window")


def a_start_asks_kwin_for_its_protocols_once(desktop, binary):
    """KWin reads the whole file of a program before it names its protocols on a connection, and the toolkit's own
    connection is the only one that needs them."""
    path = _board(desktop)
    desktop.start_program("A window")
    with Kelpa(desktop, binary, path, env={"WAYLAND_DEBUG": "1"}) as kelpa:
        kelpa.wait_for_card(boards.UNSORTED, "A window")
        # The first object of a connection is the list of protocols; newer libraries write # for @.
        asked = [line for line in kelpa.output().splitlines()
                 if re.search(r"wl_display[@#]1\.get_registry\(new id wl_registry[@#]2\)", line)]
        assert len(asked) == 1, asked


def a_minimised_window_is_restored(desktop, binary):
    path = _board(desktop)
    desktop.start_program("Put away")
    window = desktop.wait_for_window("Put away")
    desktop.change(window, "window.minimized = true")
    with Kelpa(desktop, binary, path) as kelpa:
        kelpa.wait_for_card(boards.UNSORTED, "Put away")
        assert desktop.window(window.number).is_minimized
        _press_card(desktop, kelpa, "Put away")
        desktop.wait_for_active(window)
        assert not desktop.window(window.number).is_minimized


def a_window_of_another_desktop_is_listed_and_its_desktop_shown(desktop, binary):
    path = _board(desktop)
    desktop.add_desktop()
    desktop.show_desktop(2)
    desktop.start_program("Elsewhere")
    window = desktop.wait_for_window("Elsewhere")
    desktop.show_desktop(1)
    with Kelpa(desktop, binary, path) as kelpa:
        kelpa.wait_for_card(boards.UNSORTED, "Elsewhere")
        assert desktop.current_desktop() == 1
        _press_card(desktop, kelpa, "Elsewhere")
        desktop.wait_for_active(window)
        assert desktop.current_desktop() == 2


def panels_and_windows_off_the_task_list_are_no_cards(desktop, binary):
    path = _board(desktop)
    desktop.start_program("Off the list")
    desktop.change(desktop.wait_for_window("Off the list"), "window.skipTaskbar = true")
    desktop.start_program("On the list")
    with Kelpa(desktop, binary, path) as kelpa:
        kelpa.wait_for_card(boards.UNSORTED, "On the list")
        assert len(kelpa.board.cards()) == 1
        desktop.change(desktop.wait_for_window("Off the list"), "window.skipTaskbar = false")
        kelpa.wait_for_card(boards.UNSORTED, "Off the list")


def a_second_start_brings_the_first_forward(desktop, binary):
    path = _board(desktop)
    desktop.start_program("In front")
    window = desktop.wait_for_window("In front")
    with Kelpa(desktop, binary, path) as kelpa:
        kelpa.wait_for_card(boards.UNSORTED, "In front")
        desktop.activate(window)
        desktop.wait_for_active(window)
        desktop.run(binary, "--settings", path)
        desktop.wait_for_active(kelpa.window)
        desktop.change(kelpa.window, "window.minimized = true")
        desktop.run(binary, "--settings", path, "--show")
        desktop.wait_for_active(kelpa.window)


def a_shortcut_of_the_system_settings_brings_the_board_forward(desktop, binary):
    path = _board(desktop)
    desktop.start_program("In front")
    window = desktop.wait_for_window("In front")
    with Kelpa(desktop, binary, path) as kelpa:
        kelpa.wait_for_card(boards.UNSORTED, "In front")
        desktop.activate(window)
        desktop.wait_for_active(window)
        desktop.change(kelpa.window, "window.minimized = true")
        wait_until("the settings offer it", lambda: "Kelpa: Bring forward" in desktop.shortcuts())
        # As KWin does for the key that the person gave to it.
        desktop.use_shortcut("Kelpa: Bring forward")
        desktop.wait_for_active(kelpa.window)
        desktop.close(kelpa.window)
        wait_until("the board is closed", lambda: kelpa.shown_window() is None)
        desktop.use_shortcut("Kelpa: Bring forward")
        desktop.wait_for_active(desktop.wait_for_window(boards.WINDOW))
        # For the end of the scenario.
        kelpa.window = kelpa.shown_window()


def a_kelpa_that_was_started_without_a_window_comes_by_its_shortcut(desktop, binary):
    path = _board(desktop, goals=[("Release", [])])
    desktop.start_program("In front")
    desktop.wait_for_active(desktop.wait_for_window("In front"))
    # As the session starts it.
    kelpa = Kelpa(desktop, binary, path, arguments=["--hidden"])
    kelpa.begin()
    wait_until("the settings offer it", lambda: "Kelpa: Bring forward" in desktop.shortcuts())
    assert kelpa.shown_window() is None
    desktop.use_shortcut("Kelpa: Bring forward")
    kelpa.window = wait_until("the board is shown", kelpa.shown_window)
    desktop.wait_for_active(kelpa.window)
    kelpa.await_board()
    kelpa.wait_for_goals("Release")
    kelpa.quit()


def the_cards_say_why_there_are_no_previews(desktop, binary):
    path = _board(desktop)
    # KWin 6.7 asks for that before it looks how it draws.
    desktop.name_in_entry(binary)
    desktop.start_program("A window")
    with Kelpa(desktop, binary, path) as kelpa:
        kelpa.wait_for_card(boards.UNSORTED, "A window")
        wait_until("the card says it", lambda: "KWin draws without OpenGL" in boards.outline_of_window())
    about = desktop.run(binary, "--about-desktop")
    assert "desktop     kwin\n" in about, about
    assert "previews    no: KWin draws without OpenGL" in about, about
    assert "minimising  yes\n" in about, about


def a_script_that_is_gone_is_loaded_again(desktop, binary):
    path = _board(desktop)
    with Kelpa(desktop, binary, path) as kelpa:
        desktop.start_program("Before")
        kelpa.wait_for_card(boards.UNSORTED, "Before")
        assert desktop.unload_script(path)
        desktop.start_program("Afterwards")
        kelpa.wait_for_card(boards.UNSORTED, "Afterwards")
        assert desktop.has_script(path)
        _press_card(desktop, kelpa, "Before")
        desktop.wait_for_active(desktop.wait_for_window("Before"))


def a_kelpa_that_is_killed_leaves_no_script(desktop, binary):
    path = _board(desktop)
    desktop.start_program("A window")
    with Kelpa(desktop, binary, path) as kelpa:
        kelpa.wait_for_card(boards.UNSORTED, "A window")
        assert desktop.has_script(path)
        kelpa.kill()
        wait_until("the script has unloaded itself", lambda: not desktop.has_script(path), _GONE_WITHIN)


def the_next_start_replaces_the_script_of_one_that_was_killed(desktop, binary):
    path = _board(desktop)
    desktop.start_program("A window")
    window = desktop.wait_for_window("A window")
    with Kelpa(desktop, binary, path) as kelpa:
        kelpa.wait_for_card(boards.UNSORTED, "A window")
        kelpa.kill()
        assert desktop.has_script(path)
        kelpa.start()
        kelpa.wait_for_card(boards.UNSORTED, "A window")
        _press_card(desktop, kelpa, "A window")
        desktop.wait_for_active(window)
        # KWin never has two of one name.
        kelpa.quit()
        assert not desktop.has_script(path)


def another_run_of_kwin_never_mixes_windows(desktop, binary):
    path = _board(desktop, goals=[("Release", [])])
    program = desktop.start_program("Of the first run")
    with Kelpa(desktop, binary, path) as kelpa:
        kelpa.wait_for_card(boards.UNSORTED, "Of the first run")
        # Its toolkit ends with the connection to the compositor.
        desktop.kill_kwin()
        wait_until("Kelpa has ended", lambda: not kelpa.is_running())
        program.kill()
        desktop.start_kwin()
        desktop.start_program("Of the second run")
        kelpa.start()
        kelpa.wait_for_card(boards.UNSORTED, "Of the second run")
        assert kelpa.board.card(boards.UNSORTED, "Of the first run") is None
