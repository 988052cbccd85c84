"""Leaving fields, by key and when the program ends."""

import os
import signal

import board as boards
import settings
from kelpa import Kelpa
from processes import wait_until


def an_arrow_closes_every_field_for_a_new_todo_and_keeps_what_was_typed(desktop, binary):
    path = desktop.directory / "board.sqlite"
    settings.write(path, goals=[("Only goal", [])], is_auto_sorting=False)
    with Kelpa(desktop, binary, path) as kelpa:
        kelpa.focus()

        def open_field(column):
            kelpa.click(*kelpa.column_button(column, boards.ADD_TODO))
            return wait_until("a todo can be typed", kelpa.board.focused_field)

        for column in (boards.ALL_TODOS, boards.UNSORTED, "Only goal"):
            open_field(column)
            desktop.type("Draft")
            desktop.key("Left")
            wait_until("no field is open", lambda: kelpa.board.field(boards.ADD_TODO) is None)
            wait_until("a column is chosen", kelpa.board.selected_column)
            assert open_field(column).text() == "Draft"
            desktop.key("Escape")
            wait_until("the field is closed", lambda: kelpa.board.field(boards.ADD_TODO) is None)


def escape_in_the_empty_search_gives_the_keys_back_to_the_board(desktop, binary):
    path = desktop.directory / "board.sqlite"
    settings.write(path)
    desktop.open_xterms("Terminal")
    with Kelpa(desktop, binary, path) as kelpa:
        kelpa.focus()
        kelpa.wait_for_card(boards.UNSORTED, "Terminal")
        desktop.click(*kelpa.head(boards.UNSORTED))
        wait_until("the column is chosen", lambda: kelpa.board.selected_column() == boards.UNSORTED)
        kelpa.click(lambda: kelpa.board.field(boards.SEARCH), "the search field")
        wait_until("the search field has the keyboard", kelpa.board.focused_field)
        desktop.key("Escape")
        wait_until("no field has the keyboard", lambda: not kelpa.board.focused_field())
        desktop.key("space")
        wait_until("the card is chosen", lambda: kelpa.board.selected_card() == "Terminal")


def what_is_being_written_when_it_ends_is_kept(desktop, binary):
    path = desktop.directory / "board.sqlite"
    settings.write(path, goals=[("Home", ["One"]), ("Garden", [])], is_auto_sorting=False)
    kelpa = Kelpa(desktop, binary, path)
    kelpa.start()
    kelpa.focus()
    # What an arrow has given up is not wanted.
    kelpa.click(*kelpa.column_button(boards.UNSORTED, boards.ADD_TODO))
    wait_until("a todo can be typed", kelpa.board.focused_field)
    desktop.type("Given up")
    desktop.key("Down")
    wait_until("no field is open", lambda: kelpa.board.field(boards.ADD_TODO) is None)
    # The field of one goal closes that of another, where nothing was given up.
    for goal, text in (("Garden", "Sow"), ("Home", "Two")):
        kelpa.click(*kelpa.column_button(goal, boards.ADD_TODO))
        wait_until("a todo can be typed", lambda: _focused_text(kelpa) == "")
        desktop.type(text)
        wait_until("it is typed", lambda text=text: _focused_text(kelpa) == text)
    # Going to another field leaves the first as a draft.
    kelpa.click(*kelpa.todo_node("Home", "One"))
    wait_until("the title can be changed", lambda: _focused_text(kelpa) == "One")
    desktop.type("First")
    wait_until("it is typed", lambda: _focused_text(kelpa) == "First")
    os.kill(kelpa.process_id(), signal.SIGTERM)
    assert kelpa.wait() == 0
    stored = settings.StoredBoard(settings.read(path))
    assert stored.todos("Home") == [("First", boards.TODO), ("Two", boards.TODO)], stored.todos("Home")
    assert stored.todos("Garden") == [("Sow", boards.TODO)], stored.todos("Garden")
    assert stored.todos() == [], stored.todos()


def _focused_text(kelpa):
    field = kelpa.board.focused_field()
    return field and field.text()
