"""Kelpa while its window is closed: it listens, comes back, and ends when it is told to."""

import pathlib
import shlex
import signal

import board as boards
import settings
from disks import Disk
from front import await_front, start_kelpa, tap_twice
from kelpa import Kelpa
from processes import wait_until
from typists import Typing

_FIELD = "New todo"
_SUPPORT = pathlib.Path(__file__).parent / "support"
_STAYS = "show Kelpa keeps running: Press Super twice, or start Kelpa again, to get the board back."


class _Notifications:
    """The desktop's notifications, as they are shown."""

    def __init__(self, desktop):
        self._log = desktop.directory / "notifications.log"
        self._service = desktop.start("/usr/bin/python3", "-B", _SUPPORT / "notification_service.py",
                                      log=self._log)
        wait_until("notifications are shown", lambda: "ready" in self.lines())

    def lines(self):
        return self._log.read_text(encoding="utf-8").splitlines() if self._log.exists() else []

    def press(self):
        self._service.send_signal(signal.SIGUSR1)


def _close(desktop, kelpa):
    desktop.close(kelpa.window)
    wait_until("Kelpa's window is closed", lambda: kelpa.shown_window() is None)
    kelpa.check_alive()


def _await_window(kelpa):
    def shown():
        kelpa.check_alive()
        return kelpa.shown_window()

    kelpa.window = wait_until("Kelpa's window is shown", shown)


def _choose(desktop, kelpa, entry):
    kelpa.focus()
    desktop.key("Menu")
    kelpa.click(lambda: kelpa.board.menu_item(entry), f"the entry {entry!r}")
    wait_until("the menu is closed", lambda: kelpa.board.menu_item(entry) is None)


def a_closed_board_comes_back_by_a_double_tap_and_by_another_start(desktop, binary):
    notifications = _Notifications(desktop)
    terminal = Typing(desktop, "Typist")
    kelpa, path = start_kelpa(desktop, binary, goals=(("Taxes", []),))
    kelpa.wait_for_card(boards.UNSORTED, "Typist")
    _close(desktop, kelpa)
    wait_until("it says that it stays", lambda: _STAYS in notifications.lines())

    # What changes meanwhile is there when the board is.
    desktop.open_xterms("Meanwhile")
    terminal.focus()
    tap_twice(desktop)
    _await_window(kelpa)
    await_front(desktop, kelpa)
    kelpa.wait_for_card(boards.UNSORTED, "Meanwhile")
    kelpa.wait_for_previews(boards.UNSORTED)
    kelpa.create_goal("Garden")
    assert "close" in notifications.lines(), "the notification is over"

    _close(desktop, kelpa)
    desktop.run(binary, "--settings", path)
    _await_window(kelpa)
    await_front(desktop, kelpa)
    kelpa.wait_for_goals("Taxes", "Garden")
    assert notifications.lines().count(_STAYS) == 1, "it says so once"

    desktop.key("ctrl+q")
    assert kelpa.wait() == 0
    kelpa.check_output()
    assert settings.StoredBoard(settings.read(path)).goal_titles == ["Taxes", "Garden"]


def who_did_not_want_kelpa_to_stay_quits_from_the_notification(desktop, binary):
    notifications = _Notifications(desktop)
    kelpa, _ = start_kelpa(desktop, binary)
    _close(desktop, kelpa)
    wait_until("it says that it stays", lambda: _STAYS in notifications.lines())
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
    _close(desktop, kelpa)
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
    _await_window(kelpa)
    kelpa.await_board()
    kelpa.wait_for_goals("Taxes")
    await_front(desktop, kelpa)
    assert [window.title for window in desktop.windows()].count(boards.WINDOW) == 1
    desktop.key("ctrl+q")
    assert kelpa.wait() == 0
    kelpa.check_output()


def a_closed_board_comes_back_when_its_session_bus_ends(desktop, binary):
    kelpa, _ = start_kelpa(desktop, binary)
    _close(desktop, kelpa)
    desktop.session_bus.kill()
    desktop.session_bus.wait()
    _await_window(kelpa)
    # Nothing would find it any more.
    desktop.close(kelpa.window)
    assert kelpa.wait() == 0


class _Entry:
    """The field for a todo over whatever is in front."""

    def __init__(self, desktop, binary, path, kelpa):
        self._desktop = desktop
        self._command = (binary, "--settings", path, "--new-todo")
        self._kelpa = kelpa

    def shown(self):
        self._kelpa.check_alive()
        return next((window for window in self._desktop.windows() if window.title == f"{_FIELD} — Kelpa"), None)

    def open(self):
        self._desktop.run(*self._command)
        self.await_keyboard()

    def await_keyboard(self):
        def has_keyboard():
            window = self.shown()
            return window is not None and self._desktop.active_window() == window.number

        wait_until("the field has the keyboard", has_keyboard)

    def await_closed(self, program):
        wait_until("the field is hidden", lambda: self.shown() is None)
        wait_until("the keyboard is where it was", program.has_keyboard)

    def await_text(self, text):
        wait_until(f"{text!r} stands in the field", lambda: self._asked(lambda field: field.text()) == text)

    def await_goal(self, title):
        """The goal that the todo is for, below the field and as screen readers announce it."""
        def is_told():
            found = self._parts(title)
            return any(node.description == "Type # to choose the goal" for node in found) \
                and any(node.role == boards.Atspi.Role.ALERT for node in found)

        wait_until(f"the todo is for {title!r}", is_told)

    def await_choice(self, title):
        """The row that Return takes, as the list says and as screen readers announce it."""
        def is_current():
            rows = [node for node in self._parts(title)
                    if node.has_state(boards.Atspi.StateType.SELECTED)]
            alerts = [node for node in self._parts(title) if node.role == boards.Atspi.Role.ALERT]
            return len(rows) == len(alerts) == 1

        wait_until(f"{title!r} is offered", is_current)

    def _asked(self, question):
        try:
            field = self._kelpa.board.field(_FIELD)
            return field and question(field)
        except boards.Gone:
            return None

    def _parts(self, name):
        try:
            return [node for node, _ in self._kelpa.board.walk() if node.name == name]
        except boards.Gone:
            return []


def _await_stored(path, goal, *titles):
    wait_until(f"{goal} has {titles}", lambda: [title for title, _ in settings.StoredBoard(
        settings.read(path)).todos(goal)] == list(titles))


def a_todo_is_added_over_another_program_while_the_board_is_closed(desktop, binary):
    terminal = Typing(desktop, "Typist")
    kelpa, path = start_kelpa(desktop, binary, goals=(("Taxes", []), ("Garden", []), ("Garden party", [])))
    kelpa.drag_card("Typist", boards.UNSORTED, "Taxes")
    kelpa.wait_for_card("Taxes", "Typist")
    _close(desktop, kelpa)
    terminal.focus()
    desktop.type("before\n")
    entry = _Entry(desktop, binary, path, kelpa)

    entry.open()
    entry.await_goal("Taxes")
    desktop.type("Find the receipts")
    desktop.key("Return")
    entry.await_closed(terminal)
    desktop.type("between\n")
    _await_stored(path, "Taxes", "Find the receipts")

    entry.open()
    desktop.type("Sow beans #gar")
    entry.await_choice("Garden")
    desktop.key("Down")
    entry.await_choice("Garden party")
    desktop.key("Up", "Return")
    entry.await_goal("Garden")
    entry.await_text("Sow beans ")
    desktop.key("Escape")
    entry.await_closed(terminal)
    desktop.type("after\n")

    # Another window takes the keyboard.
    entry.open()
    entry.await_text("Sow beans ")
    desktop.type("now")
    terminal.focus()
    entry.await_closed(terminal)
    entry.open()
    entry.await_text("Sow beans now")
    entry.await_goal("Garden")
    desktop.key("Return")
    entry.await_closed(terminal)
    _await_stored(path, "Garden", "Sow beans now")
    wait_until("the terminal got its keys alone",
               lambda: terminal.lines() == ["before", "between", "after"])

    # The board has not come with it, and undoes it as one step.
    assert kelpa.shown_window() is None
    desktop.run(binary, "--settings", path)
    _await_window(kelpa)
    await_front(desktop, kelpa)
    desktop.key("ctrl+z")
    _await_stored(path, "Garden")
    _await_stored(path, "Taxes", "Find the receipts")
    kelpa.quit()


def a_new_todo_starts_a_kelpa_of_which_only_the_field_shows(desktop, binary):
    path = desktop.directory / "board.sqlite"
    settings.write(path, goals=(("Taxes", []),), is_auto_sorting=False)
    terminal = Typing(desktop, "Typist")
    notifications = _Notifications(desktop)
    kelpa = Kelpa(desktop, binary, path, arguments=("--new-todo",))
    kelpa.begin()
    entry = _Entry(desktop, binary, path, kelpa)
    entry.await_keyboard()
    assert kelpa.shown_window() is None
    assert _STAYS not in notifications.lines()
    desktop.type("Find the receipts #taxes")
    desktop.key("Return")
    entry.await_closed(terminal)
    _await_stored(path, "Taxes", "Find the receipts")
    wait_until("it says that it stays", lambda: _STAYS in notifications.lines())
    kelpa.check_alive()

    desktop.run(binary, "--settings", path)
    _await_window(kelpa)
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
    entry = _Entry(desktop, binary, path, kelpa)
    entry.await_keyboard()
    disk.fill()
    desktop.type("Find the receipts #taxes")
    desktop.key("Return")
    _await_window(kelpa)
    kelpa.await_board()
    wait_until("the board tells it", lambda: kelpa.board.has_text(boards.DISK_FULL))
    disk.make_room()
    _await_stored(path, "Taxes", "Find the receipts")
    desktop.close(kelpa.window)
    assert kelpa.wait() == 0

    kelpa.begin()
    entry.await_keyboard()
    desktop.type("Pay #taxes")
    desktop.key("Return")
    assert kelpa.wait() == 0
    _await_stored(path, "Taxes", "Find the receipts", "Pay")


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
