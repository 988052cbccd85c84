"""Texts that are much longer than anything that a person would read on the board."""

import json

import board as boards
import settings
from clipboard import hold_clipboard
from kelpa import Kelpa
from processes import wait_until

_MEGABYTE = 1 << 20
_TOO_LONG = "Too long: at most 50000 characters fit here. Nothing was inserted."
_OVERLONG = ("The title has {} characters, too many to be edited here. It stays as it is until another "
             "one is entered.")


def what_does_not_fit_into_a_field_is_refused_and_told(desktop, binary):
    path = desktop.directory / "board.sqlite"
    settings.write(path, goals=[("Home", [])], is_auto_sorting=False)
    with Kelpa(desktop, binary, path) as kelpa:
        kelpa.focus()
        kelpa.click(*kelpa.column_button("Home", boards.ADD_TODO))
        wait_until("a todo can be typed", kelpa.board.focused_field)
        desktop.type("a")
        for megabytes, letter in ((1, "b"), (5, "c")):
            holder = hold_clipboard(desktop, "x", str(megabytes * _MEGABYTE))
            desktop.key("ctrl+v")
            wait_until("the field says that it is too long", lambda: kelpa.board.has_text(_TOO_LONG))
            desktop.type(letter)
            wait_until("that is gone", lambda: not kelpa.board.has_text(_TOO_LONG))
            assert kelpa.board.written() == "abc"[:"abc".index(letter) + 1], kelpa.board.written()
            holder.kill()
            holder.wait()
        hold_clipboard(desktop, "d", "49997")
        # What is typed while it is pasted comes after it.
        desktop.key("ctrl+v", "e")
        wait_until("the longest text is refused another letter",
                   lambda: kelpa.board.has_text(_TOO_LONG))
        desktop.key("BackSpace", "f", "Return")
        wait_until("the todo is added", lambda: kelpa.board.written() == "")
        kelpa.quit()
    stored = settings.StoredBoard(settings.read(path))
    assert stored.todos("Home") == [("abc" + "d" * 49996 + "f", boards.TODO)]


def titles_of_any_length_are_kept_shown_and_copied(desktop, binary):
    path = desktop.directory / "board.sqlite"
    long = "x" * (5 * _MEGABYTE)
    titles = [long, "e" + "\u0301" * _MEGABYTE, "first" + "\n" * _MEGABYTE + "last",
              "\u202eabc\u2067" * 200_000, "word " * 2 * _MEGABYTE + "end"]
    settings.write(path, goals=[("Home", [*titles, "Short"]), ("y" * _MEGABYTE, [])],
                   is_auto_sorting=False)
    with Kelpa(desktop, binary, path) as kelpa:
        kelpa.focus()
        shown = "x" * 1000 + "…"
        kelpa.click(*kelpa.todo_button("Home", "Short"))
        kelpa.click(*kelpa.todo_button("Home", shown, boards.HANDLE))
        wait_until("the board says that it copied", lambda: kelpa.board.has_text(boards.COPIED))
        assert desktop.clipboard() == long
        kelpa.click(*kelpa.todo_node("Home", shown))
        wait_until("the board says that the title is too long",
                   lambda: kelpa.board.has_text(_OVERLONG.format(len(long))))
        assert kelpa.board.written() == ""
        desktop.key("Return", "Escape")
        wait_until("no field is open", lambda: not kelpa.board.focused_field())
        kelpa.open_goal_menu("y" * 1000 + "…", boards.RENAME_GOAL)()
        wait_until("the sheet says that the title is too long",
                   lambda: kelpa.board.has_text(_OVERLONG.format(_MEGABYTE)))
        desktop.key("Escape")
        wait_until("the sheet is closed", lambda: not kelpa.board.focused_field())
        kelpa.quit()
    goals = json.loads(settings.read(path)["kelpa.goals"])
    assert [todo["title"] for todo in goals[0]["todos"]] == [*titles, "Short"], "a title has changed"
    assert goals[0]["todos"][-1]["status"] == "ing"
    assert goals[1]["title"] == "y" * _MEGABYTE
