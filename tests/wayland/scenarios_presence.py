"""The board and the field for a todo, called and closed."""

import presence
from entry import check_todos_are_added_over
from typists import Typing


def a_todo_is_added_over_another_program_beside_the_board_and_without_it(desktop, binary):
    def bind(command):
        # sway was there before the session bus.
        bus = desktop.env["DBUS_SESSION_BUS_ADDRESS"]
        assert desktop.command(f"bindsym Mod1+t exec DBUS_SESSION_BUS_ADDRESS='{bus}' {command}")
        return lambda: desktop.key("alt+t")

    # In a root of its own sway sees no program of this system.
    check_todos_are_added_over(desktop, binary, Typing(desktop, "Typist", desktop.start_typed),
                               bind=None if desktop.has_own_root else bind)


def a_closed_board_comes_back_by_a_double_tap_and_by_another_start(desktop, binary):
    presence.check_board_comes_back(
        desktop, binary, Typing(desktop, "Typist", desktop.start_typed),
        lambda title: desktop.start_foot(title, *presence.CLOCK),
        [("a double tap", lambda: desktop.key("Super_L", "Super_L"))], has_previews=False, may_lose_keys=True)
