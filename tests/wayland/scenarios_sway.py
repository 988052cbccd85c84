"""The board natively in a session of sway: what it lists, remembers and acts on."""

import time

import board as boards
import processes
import settings
import terminals
from assistant import Assistant
from harness import on_desktop
from kelpa import Kelpa
from plain_windows import PlainWindows
from processes import wait_until
from wayland_wire import Refused


def windows_are_cards_and_one_that_is_assigned_is_there_after_a_restart(desktop, binary):
    terminals.check_assigned_one_is_there_after_a_restart(desktop, binary)


@on_desktop(has_xwayland=True)
def windows_of_programs_on_x11_are_cards_among_the_others(desktop, binary):
    terminals.check_one_on_x11_is_a_card(desktop, binary)


def another_run_of_sway_never_mixes_numbers(desktop, binary):
    terminals.check_another_run_mixes_nothing(desktop, binary)


def windows_of_another_run_of_sway_find_their_goals(desktop, binary):
    path = desktop.directory / "board.sqlite"
    settings.write(path, goals=[("Release", []), ("Garden", [])])
    places = {"Release notes": "Release", "Seed list": "Garden"}
    terminals = [desktop.start_foot(title) for title in places]
    with Kelpa(desktop, binary, path) as kelpa:
        for title, goal in places.items():
            kelpa.wait_for_card(boards.UNSORTED, title)
            kelpa.focus()
            Assistant(desktop, kelpa).assign(goal, f"Foot: {title}")
            kelpa.wait_for_card(goal, title)
        # As at the end of a login, Kelpa ends with sway.
        desktop.kill_sway()
        wait_until("Kelpa ends", lambda: not kelpa.is_running())
        for terminal in terminals:
            terminal.wait()
        desktop.start_sway()
        for title in (*reversed(places), "Something else"):
            desktop.start_foot(title)
        kelpa.start()
        kelpa.focus()
        for title, goal in places.items():
            kelpa.wait_for_card(goal, title)
        kelpa.wait_for_card(boards.UNSORTED, "Something else")
        assistant = Assistant(desktop, kelpa)
        assistant.press_button("Undo")
        for title in places:
            kelpa.wait_for_card(boards.UNSORTED, title)


def a_card_brings_its_window_forward_and_closes_its_program(desktop, binary):
    path = desktop.directory / "board.sqlite"
    settings.write(path)
    desktop.start_foot("First terminal")
    desktop.command("workspace 2")
    other = desktop.start_foot("Second terminal")
    window = desktop.wait_for_window("First terminal")
    with Kelpa(desktop, binary, path) as kelpa:
        assistant = Assistant(desktop, kelpa)
        kelpa.wait_for_card(boards.UNSORTED, "First terminal")
        card = kelpa.wait_for_card(boards.UNSORTED, "Second terminal")
        desktop.wait_for_active(kelpa.window)
        assistant.press(lambda: kelpa.board.card(boards.UNSORTED, "First terminal").node,
                        "the card is pressed")
        desktop.wait_for_active(window)

        def button():
            found = kelpa.board.card(boards.UNSORTED, "Second terminal")
            return found and found.node.find(boards.BUTTON_ROLES,
                                             lambda name: name == boards.CLOSE_PROCESS)[0]

        assistant.press(button, f"{card} is closed")
        wait_until("its program has ended", lambda: other.poll() is not None)
        wait_until("its card is gone",
                   lambda: kelpa.board.card(boards.UNSORTED, "Second terminal") is None)
        assert kelpa.board.card(boards.UNSORTED, "First terminal")


def a_goal_opens_a_terminal_and_has_it(desktop, binary):
    terminals.check_goal_opens_one(desktop, binary, "foot")


def a_terminal_that_leaves_its_session_lands_in_its_goal(desktop, binary):
    terminals.check_goal_opens_one(desktop, binary, "setsid --fork foot")


def _has_binding(desktop):
    """Whether a binding of Kelpa's is there; takes it away."""
    return desktop.command("unbindsym --inhibited --release Super_L")


def super_twice_brings_kelpa_forward_and_its_binding_goes_with_it(desktop, binary):
    path = desktop.directory / "board.sqlite"
    settings.write(path)
    desktop.start_foot("Typed into")
    terminal = desktop.wait_for_window("Typed into")
    with Kelpa(desktop, binary, path) as kelpa:
        wait_until("the board offers it", lambda: kelpa.board.has_text(boards.TAP_HINT))
        for start in ("first", "second"):
            for keys, comes in ((("Super_L",), False), (("Super_L+j", "Super_L"), False),
                                (("Super_L", "Super_L"), True), (("Super_R", "Super_R"), True)):
                desktop.activate(terminal)
                desktop.wait_for_active(terminal)
                desktop.key(*keys)
                if comes:
                    desktop.wait_for_active(kelpa.window)
                else:
                    # Longer than between the taps of a pair.
                    time.sleep(1)
                    assert desktop.active_window() == terminal.number, keys
            if start == "first":
                # Its binding stays behind, and the next start has no second one.
                kelpa.kill()
                kelpa.start()
                wait_until("the board offers it", lambda: kelpa.board.has_text(boards.TAP_HINT))
        desktop.command("reload")
        wait_until("the board offers it again", lambda: kelpa.board.has_text(boards.TAP_HINT))
        desktop.activate(terminal)
        desktop.wait_for_active(terminal)
        desktop.key("Super_L", "Super_L")
        desktop.wait_for_active(kelpa.window)
        kelpa.quit()
        assert not _has_binding(desktop)


@on_desktop(binding="--release Super_L")
def a_binding_of_the_person_is_left_alone(desktop, binary):
    path = desktop.directory / "board.sqlite"
    settings.write(path)
    with Kelpa(desktop, binary, path) as kelpa:
        # Kelpa does not see that binding, which is in an included file.
        wait_until("the board offers the double tap", lambda: kelpa.board.has_text(boards.TAP_HINT))
        for _ in ("while Kelpa runs", "afterwards"):
            desktop.key("Super_L")
            wait_until("the person's binding runs", desktop.marker.exists)
            desktop.marker.unlink()
            if kelpa.is_running():
                kelpa.quit()


def where_the_person_binds_super_the_board_names_the_command(desktop, binary):
    path = desktop.directory / "board.sqlite"
    settings.write(path)
    with Kelpa(desktop, binary, path) as kelpa:
        wait_until("the board offers it", lambda: kelpa.board.has_text(boards.TAP_HINT))
        desktop.bind("--release Super_L")
        wait_until("the board names the command", lambda: kelpa.board.has_text(boards.KEY_HINT))


def without_a_session_bus_a_second_start_brings_the_first_forward(desktop, binary):
    path = desktop.directory / "board.sqlite"
    settings.write(path)
    del desktop.env["DBUS_SESSION_BUS_ADDRESS"]
    first = desktop.start(binary, "--settings", path)
    window = desktop.wait_for_window(boards.WINDOW)
    desktop.start_foot("In front")
    desktop.wait_for_active(desktop.wait_for_window("In front"))
    desktop.run(binary, "--settings", path)
    desktop.wait_for_active(window)
    desktop.close(window)
    assert first.wait(timeout=30) == 0, first.returncode


def _opened(title, app_id):
    """The client of a new window; None where the compositor refuses it."""
    windows = PlainWindows()
    try:
        windows.open(title, app_id)
        windows.settle()
        return windows
    except Refused:
        return None


def hostile_titles_are_listed_and_the_board_lives(desktop, binary):
    titles = (b"\xff\xfe no text \xc3", b"", b"a\nb\x07\x1b[31m", b"\xe2\x80\xae" * 40, b"x" * 4000,
              b'"}],"nodes":[', b"%s%n", b"<b>&amp;</b>")
    path = desktop.directory / "board.sqlite"
    settings.write(path)
    # A name that is nobody's, and one that is anything but a name.
    hostile = [*((title, b"plain") for title in titles),
               (b"Ordinary", b"../../etc/passwd"), (b"Other", b"\xff" * 300)]
    opened = []
    for texts in hostile:
        windows = _opened(*texts)
        if windows:
            opened.append(windows)
        else:
            assert desktop.is_newer and b"\xff" in b"".join(texts), texts
    expected = len(opened)
    wait_until("sway has them all", lambda: len(desktop.windows()) == expected)
    with Kelpa(desktop, binary, path) as kelpa:
        wait_until("they are folded", lambda: kelpa.board.button(f"Show {expected - 4} more")).press()
        wait_until("all are cards", lambda: len(kelpa.board.cards()) == expected)
        kelpa.wait_for_card(boards.UNSORTED, "Ordinary")


def a_hundred_windows_open_and_close_and_the_board_follows(desktop, binary):
    path = desktop.directory / "board.sqlite"
    settings.write(path)
    desktop.start_foot("Stays")
    windows = PlainWindows()
    with Kelpa(desktop, binary, path) as kelpa:
        kelpa.wait_for_card(boards.UNSORTED, "Stays")
        for _ in range(3):
            opened = [windows.open(b"Window %d" % at) for at in range(100)]
            for at, window in enumerate(opened):
                windows.rename(window, b"Renamed %d" % at)
            windows.settle()
            for window in opened:
                windows.close(window)
        last = windows.open(b"The last")
        windows.settle()
        kelpa.focus()
        kelpa.wait_for_card(boards.UNSORTED, "The last")
        wait_until("nothing else is left", lambda: len(kelpa.board.cards()) == 2)
        assert last


def while_sway_hangs_the_board_is_used_and_has_its_windows_afterwards(desktop, binary):
    path = desktop.directory / "board.sqlite"
    settings.write(path, goals=[("Release", ["Write"])])
    desktop.start_foot("Stays")
    with Kelpa(desktop, binary, path) as kelpa:
        assistant = Assistant(desktop, kelpa)
        kelpa.wait_for_card(boards.UNSORTED, "Stays")
        with processes.stopped(desktop.sway_process()):
            end = time.monotonic() + 10
            assistant.press(kelpa.todo_button("Release", "Write")[0], "the status is pressed")
            wait_until("the change is on the disk", lambda: settings.StoredBoard(
                settings.read_live(path)).todos("Release") == [("Write", boards.IN_PROGRESS)])
            while time.monotonic() < end:
                assert kelpa.board.card(boards.UNSORTED, "Stays")
                time.sleep(0.2)
        desktop.start_foot("Comes later")
        # A window that is not shown is not drawn, and so not told anew.
        kelpa.focus()
        kelpa.wait_for_card(boards.UNSORTED, "Comes later")
        kelpa.wait_for_card(boards.UNSORTED, "Stays")


def when_sway_dies_kelpa_ends_and_the_board_is_whole(desktop, binary):
    path = desktop.directory / "board.sqlite"
    settings.write(path, goals=[("Release", ["Write"])])
    with Kelpa(desktop, binary, path) as kelpa:
        assistant = Assistant(desktop, kelpa)
        assistant.press(kelpa.todo_button("Release", "Write")[0], "the status is pressed")
        kelpa.wait_for_todos("Release", [("Write", boards.IN_PROGRESS)])
        desktop.kill_sway()
        wait_until("Kelpa ends", lambda: not kelpa.is_running())
    stored = settings.StoredBoard(settings.read(path))
    assert stored.todos("Release") == [("Write", boards.IN_PROGRESS)], stored
