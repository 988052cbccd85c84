"""The board and the field for a todo, called and closed."""

import presence
from entry import check_todos_are_added_over
from processes import wait_until
from typists import Typing

# As Qt numbers it.
_META_AND_K = 0x1000004B


def a_todo_is_added_over_another_program_beside_the_board_and_without_it(desktop, binary):
    check_todos_are_added_over(desktop, binary, Typing(desktop, "Typist", desktop.start_typed))


def a_closed_board_comes_back_by_its_key_and_by_another_start(desktop, binary):
    def press():
        wait_until("the settings offer it", lambda: "Kelpa: Bring forward" in desktop.shortcuts())
        desktop.give_key("Kelpa: Bring forward", _META_AND_K)
        desktop.key("Super_L+k")

    presence.check_board_comes_back(
        desktop, binary, Typing(desktop, "Typist", desktop.start_typed),
        desktop.start_program, [("its key", press)], stays=presence.STAYS_FOR_LAUNCHER, has_previews=False,
        may_lose_keys=True)
