"""Windows that change while the board shows them, and what their cards do with them."""

import os
import pathlib
import signal
import time

import board as boards
import settings
from kelpa import Kelpa
from processes import wait_until

_PORTAL = pathlib.Path(__file__).parent / "support" / "portal.py"
# Seconds within which a change must show. If it waited for the timer that scans all windows every
# two seconds, every second change would take longer.
_SOON = 1.0
# How many of the changes may take longer, on a computer that is busy with something else.
_LATE = 2


def cards_raise_their_windows_and_close_their_programs(desktop, binary):
    path = desktop.directory / "board.sqlite"
    settings.write(path, goals=[("Only goal", [])])
    terminals = {title: desktop.start_xterm(title) for title in ("First", "Second", "Third")}
    windows = {title: desktop.wait_for_window(title).number for title in terminals}
    with Kelpa(desktop, binary, path) as kelpa:
        def wait_for_places():
            """The uppermost window comes first, and a raised one so changes its place."""
            wait_until("every card has its place", lambda: kelpa.board.cards_by_place(
                boards.UNSORTED) == [title for number in reversed(desktop.stacking())
                                     for title in windows if windows[title] == number])

        for title in windows:
            kelpa.wait_for_card(boards.UNSORTED, title)
        kelpa.wait_for_previews(boards.UNSORTED)
        desktop.run("xdotool", "windowminimize", windows["Third"])
        wait_until("one is minimised", lambda: _minimised(kelpa) == ["Third"])
        # A minimised window comes forward, too.
        for title in ("First", "Third", "Second"):
            kelpa.focus()
            wait_for_places()
            kelpa.click_card(boards.UNSORTED, title)
            wait_until(f"{title!r} is active", lambda: desktop.active_window() == windows[title])
            wait_until(f"{title!r} is on top", lambda: desktop.stacking()[-1] == windows[title])
        wait_until("none is minimised", lambda: _minimised(kelpa) == [])
        kelpa.focus()
        wait_for_places()
        kelpa.drag_card("Second", boards.UNSORTED, "Only goal")
        kelpa.wait_for_card("Only goal", "Second")
        kelpa.close_card("Only goal", "Second")
        wait_until("the terminal has ended", lambda: terminals["Second"].poll() is not None)
        wait_until("the others are left", lambda: kelpa.board.cards() == {
            "First": boards.UNSORTED, "Third": boards.UNSORTED})
        assert terminals["First"].poll() is None and terminals["Third"].poll() is None


def _minimised(kelpa):
    column = kelpa.board.column(boards.UNSORTED)
    return [card.title for card in column.cards if card.is_minimised] if column else None


def working_on_a_goal_minimises_the_others_and_back_restores_them(desktop, binary):
    path = desktop.directory / "board.sqlite"
    settings.write(path, goals=[("Taxes", []), ("Garden", [])])
    titles = ("Form", "Receipts", "Seeds", "Mail")
    desktop.open_xterms(*titles)
    windows = {title: desktop.wait_for_window(title).number for title in titles}

    def iconic():
        return {title for title, number in windows.items()
                if "_NET_WM_STATE_HIDDEN" in desktop.run("xprop", "-id", number, "_NET_WM_STATE")}

    def number_of(title):
        return next(line.split()[0] for line in desktop.run(
            binary, "--settings", path, "windows").splitlines() if title in line)

    with Kelpa(desktop, binary, path) as kelpa:
        for title in titles:
            kelpa.wait_for_card(boards.UNSORTED, title)
        for title, goal in (("Form", "Taxes"), ("Receipts", "Taxes"), ("Seeds", "Garden")):
            desktop.run(binary, "--settings", path, "assign", number_of(title), "--goal", goal)
            kelpa.wait_for_card(goal, title)
        kelpa.focus()
        kelpa.open_goal_menu("Taxes", "Work on this goal")()
        wait_until("the others are minimised", lambda: iconic() == {"Seeds", "Mail"})
        in_front = {windows["Form"], windows["Receipts"]}
        wait_until("the goal is in front", lambda: set(desktop.stacking()[-2:]) == in_front)
        wait_until("the board knows", lambda: _minimised(kelpa) == ["Mail"])

        desktop.run("xdotool", "windowmap", windows["Mail"])
        wait_until("one is restored by hand", lambda: iconic() == {"Seeds"})
        wait_until("the board knows that", lambda: _minimised(kelpa) == [])
        desktop.run("xdotool", "windowminimize", windows["Mail"])
        wait_until("and is minimised by hand", lambda: iconic() == {"Seeds", "Mail"})
        desktop.run(binary, "--settings", path, "back")
        wait_until("only what Kelpa minimised is restored", lambda: iconic() == {"Mail"})
        wait_until("the board knows that, too", lambda: _minimised(kelpa) == ["Mail"])


def changes_of_windows_show_at_once(desktop, binary):
    path = desktop.directory / "board.sqlite"
    settings.write(path)
    with Kelpa(desktop, binary, path) as kelpa:
        node = wait_until("the board", lambda: kelpa.board.column(boards.UNSORTED)).node
        times = []

        def shows(what, condition):
            """Waits for `condition` of the cards, counted from now."""
            def look():
                try:
                    return condition(boards.Column(node))
                except boards.Gone:
                    return False

            start = time.monotonic()
            wait_until(f"{what} shows", look, pause=0)
            times.append((time.monotonic() - start, what))

        terminals = {}
        for title in ("One", "Two", "Three"):
            terminals[title] = desktop.start_xterm(title)
            wait_until("the window", lambda: title in _titles(desktop), pause=0)
            shows(f"new {title}", lambda column: column.card(title))
        for at, title in enumerate(("One", "Two", "Three")):
            window = desktop.wait_for_window(title).number
            desktop.run("xdotool", "windowminimize", window)
            shows(f"minimised {title}", lambda column: _is_minimised(column, title) is True)
            desktop.run("xdotool", "windowmap", window)
            shows(f"restored {title}", lambda column: _is_minimised(column, title) is False)
            desktop.run("xdotool", "set_window", "--name", f"Renamed {at}", window)
            shows(f"renamed {title}", lambda column: column.card(f"Renamed {at}"))
        for at, terminal in enumerate(terminals.values()):
            terminal.terminate()
            wait_until("the window is gone", lambda: f"Renamed {at}" not in _titles(desktop), pause=0)
            shows(f"closed {at}", lambda column: not column.card(f"Renamed {at}"))
        for seconds, what in times:
            print(f"measured: {what} after {seconds * 1000:.0f} ms", flush=True)
        late = [what for seconds, what in times if seconds > _SOON]
        assert len(late) <= _LATE, f"not within {_SOON} s: {late}"


def _is_minimised(column, title):
    card = column.card(title)
    return card.is_minimised if card else None


def _titles(desktop):
    return [window.title for window in desktop.windows()]


def a_title_that_moves_rests_while_kelpa_lies_behind_another_window(desktop, binary):
    path = desktop.directory / "board.sqlite"
    title = "A goal whose title is a good deal longer than the place that its card has for it"
    settings.write(path, goals=[(title, [])])
    desktop.start_xterm("Cover")
    cover = desktop.wait_for_window("Cover").number
    desktop.run("wmctrl", "-i", "-r", hex(cover), "-b", "add,maximized_vert,maximized_horz")
    with Kelpa(desktop, binary, path) as kelpa:
        kelpa.wait_for_previews(boards.UNSORTED)
        kelpa.focus()
        wait_until("the title rests", lambda: not _is_moving(kelpa))
        # Past the list of all todos and the unsorted column.
        for _ in range(3):
            desktop.key("Right")
        wait_until("the title moves", lambda: _is_moving(kelpa))
        desktop.run("wmctrl", "-i", "-a", hex(cover))
        wait_until("Kelpa is behind", lambda: desktop.stacking()[-1] == cover)
        wait_until("the title rests behind another window", lambda: not _is_moving(kelpa))
        kelpa.focus()
        wait_until("the title moves again", lambda: _is_moving(kelpa))
        desktop.run("xdotool", "windowminimize", kelpa.window.number)
        wait_until("the title rests while Kelpa is minimised", lambda: not _is_moving(kelpa))
        kelpa.focus()
        wait_until("the title moves once more", lambda: _is_moving(kelpa))


def a_title_moves_only_while_the_settings_manager_wants_animations(desktop, binary):
    path = desktop.directory / "board.sqlite"
    title = "A goal whose title is a good deal longer than the place that its card has for it"
    settings.write(path, goals=[(title, [])])
    wanted = desktop.directory / "xsettings"
    manager = None

    def want(animations):
        wanted.write_text(f'Net/ThemeName "Adwaita"\nGtk/EnableAnimations {animations}\n', encoding="ascii")
        if manager is not None:
            os.kill(manager.pid, signal.SIGHUP)

    with Kelpa(desktop, binary, path) as kelpa:
        kelpa.focus()
        desktop.key("Right", "Right", "Right")
        wait_until("the title moves without a manager", lambda: _is_moving(kelpa))
        want(0)
        manager = desktop.start("xsettingsd", "-c", wanted)
        wait_until("the title rests", lambda: not _is_moving(kelpa))
        want(1)
        wait_until("the title moves", lambda: _is_moving(kelpa))
        want(0)
        wait_until("the title rests again", lambda: not _is_moving(kelpa))
        manager.terminate()
        manager.wait(timeout=30)
        manager = None
        wait_until("the title moves after the manager's end", lambda: _is_moving(kelpa))
        want(0)
        manager = desktop.start("xsettingsd", "-c", wanted)
        wait_until("the title rests for the next manager", lambda: not _is_moving(kelpa))
        # An instance that starts under the manager knows so, too.
        kelpa.quit()
        kelpa.start()
        kelpa.focus()
        desktop.key("Right", "Right", "Right")
        wait_until("the goal is chosen", lambda: kelpa.board.selected_column() == title)
        wait_until("the title rests from the start", lambda: not _is_moving(kelpa))


def _is_moving(kelpa):
    """Whether the program wakes up for every frame of something that moves, some sixty a second."""
    def wake_ups():
        status = pathlib.Path(f"/proc/{kelpa.process_id()}/status").read_text(encoding="utf-8")
        return int(next(line.split()[1] for line in status.splitlines()
                        if line.startswith("voluntary_ctxt_switches:")))

    before = wake_ups()
    time.sleep(1)
    return wake_ups() - before > 40


def the_smallest_window_of_the_board_is_measured_in_points(desktop, binary):
    path = desktop.directory / "board.sqlite"
    settings.write(path)
    # In pixels: each is the smallest of a scale, or a little smaller.
    sizes = [(80, 50), (119, 75), (120, 75), (159, 100), (160, 100)]
    for width, height in sizes:
        desktop.open_window(f"{width} x {height}", width, height)

    def shows(kelpa, *titles):
        wait_until(f"the cards are {titles}", lambda: sorted(kelpa.board.cards()) == sorted(titles))

    with Kelpa(desktop, binary, path) as kelpa:
        shows(kelpa, *(f"{width} x {height}" for width, height in sizes))
    with Kelpa(desktop, binary, path, env={"QT_SCALE_FACTOR": "2"}) as kelpa:
        shows(kelpa, "160 x 100")
    # A desktop sets the resolution in two places.
    wanted = desktop.directory / "xsettings"
    wanted.write_text(f"Xft/DPI {144 * 1024}\n", encoding="ascii")
    manager = desktop.start("xsettingsd", "-c", wanted)
    # The toolkit follows the one that is there when it starts.
    wait_until("the settings manager is there", desktop.has_settings_manager)
    resources = desktop.directory / "resources"
    resources.write_text("Xft.dpi: 144\n", encoding="ascii")
    desktop.run("xrdb", "-merge", resources)
    with Kelpa(desktop, binary, path) as kelpa:
        shows(kelpa, "120 x 75", "159 x 100", "160 x 100")
        # It may change at any time.
        wanted.write_text(f"Xft/DPI {192 * 1024}\n", encoding="ascii")
        os.kill(manager.pid, signal.SIGHUP)
        shows(kelpa, "160 x 100")


def large_texts_are_left_to_the_resolution_of_the_display(desktop, binary):
    path = desktop.directory / "board.sqlite"
    settings.write(path, goals=[("Release", ["Write"])])
    # A desktop tells of them by its portal as well, and texts would be enlarged twice.
    portal = desktop.start("/usr/bin/python3", _PORTAL, "--large-text")
    wait_until("the portal is there", lambda: "org.freedesktop.portal.Desktop" in desktop.run(
        "dbus-send", "--session", "--print-reply", "--dest=org.freedesktop.DBus", "/",
        "org.freedesktop.DBus.ListNames"))

    def frame(kelpa):
        """Of a todo's row."""
        try:
            return kelpa.board.column("Release").todo("Write").node.frame()
        except (AttributeError, boards.Gone):
            return 0, 0, 0, 0

    with Kelpa(desktop, binary, path) as kelpa:
        wait_until("the row has its usual height", lambda: frame(kelpa)[3] == 34)
        beside_the_row = frame(kelpa)[0] - 4, frame(kelpa)[1]
        light = desktop.pixel(*beside_the_row)
        os.kill(portal.pid, signal.SIGUSR1)
        wait_until("the portal is heard", lambda: desktop.pixel(*beside_the_row) != light)
        # What it tells of texts may come a little later.
        time.sleep(1)
        assert frame(kelpa)[3] == 34
