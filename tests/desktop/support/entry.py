"""The field for a todo over whatever is in front, which does the same on every desktop."""

from gi.repository import Gio, GLib

import board as boards
import settings
from command_line import CommandLine
from desktop_search import name_of_kelpa
from front import await_front, start_kelpa
from presence import await_window, close, is_active
from processes import wait_until

_FIELD = "New todo"


class Entry:
    """`ask` asks for the field, as a key of the desktop does; without it the command does."""

    def __init__(self, desktop, binary, path, kelpa, ask=None):
        self._desktop = desktop
        self._kelpa = kelpa
        self._ask = ask or (lambda: desktop.run(binary, "--settings", path, "--new-todo"))

    def shown(self):
        self._kelpa.check_alive()
        return next((window for window in self._desktop.windows() if window.title == f"{_FIELD} — Kelpa"), None)

    def open(self):
        self._ask()
        self.await_keyboard()

    def await_keyboard(self):
        """Until the field is in front of all others and has the keyboard."""
        def has_keyboard():
            window = self.shown()
            return window is not None and self._desktop.active_window() == window.number \
                == self._desktop.stacking()[-1]

        wait_until("the field is in front and has the keyboard", has_keyboard)

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


def entry_call(desktop):
    """What asks the only Kelpa of the desktop for the field within a few milliseconds, as the bus carries it from
    a key of a desktop; the command takes longer to start."""
    bus = Gio.DBusConnection.new_for_address_sync(
        desktop.env["DBUS_SESSION_BUS_ADDRESS"],
        Gio.DBusConnectionFlags.AUTHENTICATION_CLIENT | Gio.DBusConnectionFlags.MESSAGE_BUS_CONNECTION, None, None)
    name = name_of_kelpa(desktop)
    return lambda: bus.call_sync(name, "/org/kelpa/Kelpa", "org.freedesktop.Application", "ActivateAction",
                                 GLib.Variant("(sava{sv})", ("new-todo", [], {})), None,
                                 Gio.DBusCallFlags.NONE, 20000, None)


def await_stored(path, goal, *titles):
    wait_until(f"{goal} has {titles}", lambda: [title for title, _ in settings.StoredBoard(
        settings.read(path)).todos(goal)] == list(titles))


def check_todos_are_added_over(desktop, binary, terminal, assign=None, bind=None):
    """Todos are typed over the terminal, first beside a board that it covers and then while that is closed.
    `assign` puts the terminal's card into "Taxes"; without it a command does. `bind` gives a command to a key
    of the desktop, and returns what presses it."""
    kelpa, path = start_kelpa(desktop, binary, goals=(("Taxes", []), ("Garden", []), ("Garden party", [])))
    kelpa.wait_for_card(boards.UNSORTED, terminal.title)
    (assign or (lambda _: CommandLine(desktop, binary, path).assign(terminal.title, "Taxes")))(kelpa)
    kelpa.wait_for_card("Taxes", terminal.title)
    entry = Entry(desktop, binary, path, kelpa, bind and bind(f"{binary} --new-todo --settings {path}"))
    terminal.focus()
    wait_until("the board knows that it is not in front", lambda: is_active(kelpa) is False)
    entry.open()
    # At once: no key gets lost.
    desktop.type("Pay")
    entry.await_text("Pay")
    entry.await_goal("Taxes")
    desktop.key("Return")
    entry.await_closed(terminal)
    await_stored(path, "Taxes", "Pay")

    kelpa.focus()
    close(desktop, kelpa)
    terminal.focus()
    desktop.type("before\n")
    entry.open()
    entry.await_goal("Taxes")
    desktop.type("Find the receipts")
    desktop.key("Return")
    entry.await_closed(terminal)
    desktop.type("between\n")
    await_stored(path, "Taxes", "Pay", "Find the receipts")

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
    await_stored(path, "Garden", "Sow beans now")
    wait_until("the terminal got its keys alone",
               lambda: terminal.lines() == ["before", "between", "after"])

    # The board has not come with it, and undoes it as one step.
    assert kelpa.shown_window() is None
    desktop.run(binary, "--settings", path)
    await_window(kelpa)
    await_front(desktop, kelpa)
    wait_until("the board knows that it is in front", lambda: is_active(kelpa) is True)
    desktop.key("ctrl+z")
    await_stored(path, "Garden")
    await_stored(path, "Taxes", "Pay", "Find the receipts")
    kelpa.quit()
