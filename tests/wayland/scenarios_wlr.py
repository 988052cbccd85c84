"""The board on a compositor of which it knows no more than the protocols of its family tell: sway, whose
IPC is hidden from Kelpa."""

import board as boards
import settings
from assistant import Assistant
from harness import on_desktop
from kelpa import Kelpa
from portals import SessionPortal
from processes import wait_until

_WITHOUT_IPC = {"SWAYSOCK": ""}
_KEYS_OFFERED = "This desktop can have a key that brings Kelpa forward"
# Where no process is told, the button is of the one window.
_CLOSE_WINDOW = "Close this window"


def windows_are_listed_focused_and_closed_by_the_protocols_alone(desktop, binary):
    path = desktop.directory / "board.sqlite"
    settings.write(path, goals=[("Release", [])])
    desktop.start_foot("First terminal")
    other = desktop.start_foot("Second terminal")
    window = desktop.wait_for_window("First terminal")
    with Kelpa(desktop, binary, path, env=_WITHOUT_IPC) as kelpa:
        assistant = Assistant(desktop, kelpa)
        kelpa.wait_for_card(boards.UNSORTED, "Second terminal")
        kelpa.wait_for_card(boards.UNSORTED, "First terminal")
        assert len(kelpa.board.cards()) == 2, "Kelpa's own window is on the board"
        desktop.wait_for_active(kelpa.window)
        assistant.press(lambda: kelpa.board.card(boards.UNSORTED, "First terminal").node,
                        "the card is pressed")
        desktop.wait_for_active(window)

        def button():
            found = kelpa.board.card(boards.UNSORTED, "Second terminal")
            return found and found.node.find(boards.BUTTON_ROLES,
                                             lambda name: name == _CLOSE_WINDOW)[0]

        assistant.press(button, "the second is closed")
        wait_until("its program has ended", lambda: other.poll() is not None)
        kelpa.focus()
        wait_until("its card is gone",
                   lambda: kelpa.board.card(boards.UNSORTED, "Second terminal") is None)

        # A start from a launcher or a key of the desktop.
        desktop.activate(window)
        desktop.wait_for_active(window)
        desktop.run(binary, "--settings", path)
        desktop.wait_for_active(kelpa.window)


def keys_of_the_desktop_call_the_board_and_the_field_for_a_todo(desktop, binary):
    portal = SessionPortal(desktop)
    path = desktop.directory / "board.sqlite"
    settings.write(path, goals=[("Release", [])])
    desktop.start_foot("A terminal")
    terminal = desktop.wait_for_window("A terminal")

    def check_keys(kelpa):
        desktop.activate(terminal)
        desktop.wait_for_active(terminal)
        portal.press_for_the_board()
        desktop.wait_for_active(kelpa.window)
        desktop.activate(terminal)
        desktop.wait_for_active(terminal)
        portal.press_for_a_todo()
        field = desktop.wait_for_window("New todo — Kelpa")
        desktop.wait_for_active(field)
        desktop.key("Escape")
        desktop.wait_for_active(terminal)

    with Kelpa(desktop, binary, path, env=_WITHOUT_IPC) as kelpa:
        assistant = Assistant(desktop, kelpa)
        kelpa.wait_for_card(boards.UNSORTED, "A terminal")
        wait_until("keys are offered", lambda: kelpa.board.has_text(_KEYS_OFFERED))
        assert not portal.calls("CreateSession"), "a dialog that nobody wanted"
        assistant.press_button("Choose keys…")
        wanted, = portal.await_call("BindShortcuts")
        assert wanted == {"bring-forward": "Bring Kelpa forward", "new-todo": "New todo"}, wanted
        wait_until("there are keys", lambda: not kelpa.board.has_text(_KEYS_OFFERED))
        check_keys(kelpa)
    # They are there again without a dialog, also before the board shows.
    with Kelpa(desktop, binary, path, env=_WITHOUT_IPC) as kelpa:
        portal.await_call("BindShortcuts", 2)
        kelpa.wait_for_card(boards.UNSORTED, "A terminal")
        check_keys(kelpa)


@on_desktop(has_xwayland=True)
def kelpas_own_window_may_be_on_xwayland(desktop, binary):
    path = desktop.directory / "board.sqlite"
    settings.write(path)
    on_x11 = {"QT_QPA_PLATFORM": "xcb", "DISPLAY": desktop.x_display()}
    desktop.start_foot("A terminal")
    terminal = desktop.wait_for_window("A terminal")
    with Kelpa(desktop, binary, path, env=on_x11 | _WITHOUT_IPC) as kelpa:
        kelpa.wait_for_card(boards.UNSORTED, "A terminal")
        assert len(kelpa.board.cards()) == 1, "Kelpa's own window is on the board"
        desktop.activate(terminal)
        desktop.wait_for_active(terminal)
        desktop.run(binary, "--settings", path)
        desktop.wait_for_active(kelpa.window)
