"""Kelpa while its window is closed: it listens, comes back, and ends when it is told to."""

import pathlib
import shlex

import board as boards
import presence
import settings
from disks import Disk
from entry import Entry, await_stored, check_todos_are_added_over, entry_call
from front import await_front, start_kelpa, tap_twice
from kelpa import Kelpa
from notifications import Notifications
from presence import CLOCK, STAYS, await_window, close, is_active
from processes import wait_until
from typists import Typing


def _choose(desktop, kelpa, entry):
    kelpa.focus()
    desktop.key("Menu")
    kelpa.click(lambda: kelpa.board.menu_item(entry), f"the entry {entry!r}")
    wait_until("the menu is closed", lambda: kelpa.board.menu_item(entry) is None)


def a_closed_board_comes_back_by_a_double_tap_and_by_another_start(desktop, binary):
    presence.check_board_comes_back(
        desktop, binary, Typing(desktop, "Typist"), lambda title: desktop.start_xterm(title, *CLOCK),
        [("a double tap", lambda: tap_twice(desktop))])


def who_did_not_want_kelpa_to_stay_quits_from_the_notification(desktop, binary):
    notifications = Notifications(desktop)
    kelpa, _ = start_kelpa(desktop, binary)
    close(desktop, kelpa)
    wait_until("it says that it stays", lambda: STAYS in notifications.lines())
    notifications.press()
    assert kelpa.wait() == 0


def closing_quits_where_a_person_has_chosen_that(desktop, binary):
    kelpa, path = start_kelpa(desktop, binary)
    _choose(desktop, kelpa, "Quit when the window is closed")
    desktop.close(kelpa.window)
    assert kelpa.wait() == 0
    kelpa.start()
    desktop.close(kelpa.window)
    assert kelpa.wait() == 0, "it is so at the next start"
    assert settings.read(path)["kelpa.closingQuits"]


def what_is_typed_when_the_board_is_closed_is_kept(desktop, binary):
    kelpa, path = start_kelpa(desktop, binary, goals=(("Taxes", []),))
    kelpa.click(*kelpa.column_button("Taxes", boards.ADD_TODO))
    wait_until("a todo can be typed", kelpa.board.focused_field)
    desktop.type("Find the receipts")
    close(desktop, kelpa)
    wait_until("the todo is stored", lambda: settings.StoredBoard(settings.read(path)).todos("Taxes")
               == [("Find the receipts", boards.TODO)])
    kelpa.kill()


def the_session_starts_kelpa_without_a_window_once_that_is_chosen(desktop, binary):
    entry = pathlib.Path(desktop.env["XDG_CONFIG_HOME"]) / "autostart" / "org.kelpa.Kelpa.desktop"
    kelpa, path = start_kelpa(desktop, binary, goals=(("Taxes", []),))
    _choose(desktop, kelpa, "Start with the session")
    wait_until("the session is to start it", entry.exists)
    kelpa.quit()

    # The next session.
    command = next(line for line in entry.read_text(encoding="utf-8").splitlines()
                   if line.startswith("Exec="))
    words = shlex.split(command.removeprefix("Exec="))
    assert words[1:] == ["--hidden", "--settings", str(path)], words
    terminal = Typing(desktop, "Typist")
    hidden = Kelpa(desktop, words[0], path, arguments=("--hidden",))
    hidden.begin()
    terminal.focus()

    def comes():
        hidden.check_alive()
        tap_twice(desktop)
        return hidden.shown_window()

    hidden.window = wait_until("a double tap shows the board", comes, 60)
    await_front(desktop, hidden)
    hidden.await_board()
    hidden.wait_for_goals("Taxes")
    _choose(desktop, hidden, "Start with the session")
    wait_until("the session is not to start it any more", lambda: not entry.exists())
    desktop.key("ctrl+q")
    assert hidden.wait() == 0
    hidden.check_output()


def called_twice_while_it_loads_the_board_is_there_once(desktop, binary):
    path = desktop.directory / "board.sqlite"
    settings.write(path, goals=(("Taxes", []),), is_auto_sorting=False)
    kelpa = Kelpa(desktop, binary, path, arguments=("--hidden",),
                  env={"QT_LOGGING_RULES": "kelpa.bus.debug=true"})
    kelpa.begin()
    wait_until("it has its name", lambda: "claim of" in kelpa.output())
    again = [desktop.start(binary, "--settings", path) for _ in range(4)]
    assert [each.wait(timeout=30) for each in again] == [0, 0, 0, 0]
    await_window(kelpa)
    kelpa.await_board()
    kelpa.wait_for_goals("Taxes")
    await_front(desktop, kelpa)
    assert [window.title for window in desktop.windows()].count(boards.WINDOW) == 1
    desktop.key("ctrl+q")
    assert kelpa.wait() == 0
    kelpa.check_output()


def a_closed_board_comes_back_when_its_session_bus_ends(desktop, binary):
    kelpa, _ = start_kelpa(desktop, binary)
    close(desktop, kelpa)
    desktop.session_bus.kill()
    desktop.session_bus.wait()
    await_window(kelpa)
    # Nothing would find it any more.
    desktop.close(kelpa.window)
    assert kelpa.wait() == 0


def a_todo_is_added_over_another_program_beside_the_board_and_without_it(desktop, binary):
    check_todos_are_added_over(desktop, binary, Typing(desktop, "Typist"),
                               assign=lambda kelpa: kelpa.drag_card("Typist", boards.UNSORTED, "Taxes"))


def a_todo_right_after_the_board_was_left_is_for_the_goal_of_the_window_in_front(desktop, binary):
    terminal = Typing(desktop, "Typist")
    kelpa, path = start_kelpa(desktop, binary, goals=(("Taxes", []), ("Garden", [])))
    kelpa.drag_card("Typist", boards.UNSORTED, "Garden")
    kelpa.wait_for_card("Garden", "Typist")
    call = entry_call(desktop)
    entry = Entry(desktop, binary, path, kelpa, call)
    entry.open()
    desktop.key("Escape")
    # The toolkit takes the board for the active window for another tenth of a second.
    for _ in range(5):
        kelpa.focus()
        wait_until("the board knows that it is in front", lambda: is_active(kelpa) is True)
        terminal.focus()
        entry.open()
        entry.await_goal("Garden")
        desktop.key("Escape")
        entry.await_closed(terminal)
    # Over the board itself it is for what is selected there.
    kelpa.focus()
    wait_until("the board knows that it is in front", lambda: is_active(kelpa) is True)
    entry.open()
    entry.await_goal(boards.UNSORTED)
    kelpa.quit()


def a_new_todo_starts_a_kelpa_of_which_only_the_field_shows(desktop, binary):
    path = desktop.directory / "board.sqlite"
    settings.write(path, goals=(("Taxes", []),), is_auto_sorting=False)
    terminal = Typing(desktop, "Typist")
    notifications = Notifications(desktop)
    kelpa = Kelpa(desktop, binary, path, arguments=("--new-todo",))
    kelpa.begin()
    entry = Entry(desktop, binary, path, kelpa)
    entry.await_keyboard()
    assert kelpa.shown_window() is None
    assert STAYS not in notifications.lines()
    desktop.type("Find the receipts #taxes")
    desktop.key("Return")
    entry.await_closed(terminal)
    await_stored(path, "Taxes", "Find the receipts")
    wait_until("it says that it stays", lambda: STAYS in notifications.lines())
    kelpa.check_alive()

    desktop.run(binary, "--settings", path)
    await_window(kelpa)
    kelpa.await_board()
    kelpa.wait_for_todos("Taxes", [("Find the receipts", boards.TODO)])
    # Over the board, too.
    entry.open()
    desktop.type("Call the bank")
    desktop.key("Return")
    wait_until("the field is hidden", lambda: entry.shown() is None)
    await_front(desktop, kelpa)
    desktop.key("ctrl+q")
    assert kelpa.wait() == 0
    kelpa.check_output()


def a_kelpa_for_one_new_todo_ends_only_once_that_is_saved(desktop, binary):
    path = desktop.directory / "board.sqlite"
    settings.write(path, goals=(("Taxes", []),), is_auto_sorting=False, is_closing_quitting=True)
    disk = Disk(desktop, binary)
    kelpa = Kelpa(desktop, binary, path, arguments=("--new-todo",), env=disk.env)
    kelpa.begin()
    entry = Entry(desktop, binary, path, kelpa)
    entry.await_keyboard()
    disk.fill()
    desktop.type("Find the receipts #taxes")
    desktop.key("Return")
    await_window(kelpa)
    kelpa.await_board()
    wait_until("the board tells it", lambda: kelpa.board.has_text(boards.DISK_FULL))
    disk.make_room()
    await_stored(path, "Taxes", "Find the receipts")
    desktop.close(kelpa.window)
    assert kelpa.wait() == 0

    kelpa.begin()
    entry.await_keyboard()
    desktop.type("Pay #taxes")
    desktop.key("Return")
    assert kelpa.wait() == 0
    await_stored(path, "Taxes", "Find the receipts", "Pay")


def commands_reach_the_board_that_is_open_and_the_one_that_is_not(desktop, binary):
    desktop.open_xterms("Letter")
    kelpa, path = start_kelpa(desktop, binary, goals=(("Taxes", []),))

    def command(*words):
        return desktop.run(binary, "--settings", path, *words)

    kelpa.wait_for_card(boards.UNSORTED, "Letter")
    command("add", "--goal", "Taxes", "Find", "the", "receipts")
    kelpa.wait_for_todos("Taxes", [("Find the receipts", boards.TODO)])
    number = next(line.split()[0] for line in command("windows").splitlines() if "Letter" in line)
    command("assign", number, "--goal", "Taxes")
    kelpa.wait_for_card("Taxes", "Letter")
    assert "(Taxes)" in command("windows")
    letter = desktop.wait_for_window("Letter").number
    command("raise", "Taxes")
    wait_until("the window is in front", lambda: desktop.active_window() == letter)
    command("show", "Taxes")
    await_front(desktop, kelpa)
    command("undo")
    kelpa.wait_for_card(boards.UNSORTED, "Letter")

    desktop.key("ctrl+q")
    assert kelpa.wait() == 0
    kelpa.check_output()
    command("done", "Find the receipts")
    command("add", "Milk")
    assert [line.split()[-1] for line in command("todos").splitlines()] == ["Milk"]
    with Kelpa(desktop, binary, path) as again:
        again.wait_for_todos(boards.UNSORTED, [("Milk", boards.TODO)])
