"""Whose keys they are: a field's, the board's, or another program's."""

from Xlib import X, XK

import board as boards
import settings
from board import TODO
from kelpa import Kelpa
from processes import wait_until
from selection import Selection
from typists import KeyLog, Typing

_ALL_KEYS = ("Left", "Right", "Up", "Down", "space", "Return", "KP_Enter", "Escape")


def _await_field(kelpa, text):
    wait_until(f"{text!r} is written in the field with the keyboard", lambda: kelpa.board.written() == text)


def _await_no_field(kelpa):
    wait_until("no field has the keyboard", lambda: kelpa.board.focused_field() is None)


def _bare_place(kelpa):
    """A place in the window where nothing can be clicked, above the board."""
    x, y, _, _ = kelpa.board.column(boards.ALL_TODOS).node.board_around().frame()
    return x + 700, y - 30


def _close_menu(desktop, kelpa):
    kelpa.centre(lambda: kelpa.board.menu_item("Select all"), "the menu of the field")
    desktop.key("Escape")
    wait_until("the menu is closed", lambda: kelpa.board.menu_item("Select all") is None)


def a_click_elsewhere_leaves_a_field_unless_it_is_of_the_middle_button(desktop, binary):
    path = desktop.directory / "board.sqlite"
    settings.write(path, goals=[("Home", ["One"])])
    with Kelpa(desktop, binary, path) as kelpa:
        kelpa.focus()
        selection = Selection(desktop, kelpa)
        desktop.click(*kelpa.head("Home"))
        selection.is_column("Home")
        x, y = kelpa.centre(lambda: kelpa.board.field(boards.SEARCH), "the search field")
        bare = _bare_place(kelpa)
        desktop.click(x, y)
        _await_field(kelpa, "")
        # A click in the field with either button leaves the keyboard there, and so does one elsewhere
        # with the middle button.
        written = ""
        for place, button, letter in (((x, y), 1, "o"), ((x, y), 3, "n"), (bare, 2, "e"),
                                      (kelpa.head("Home"), 2, "s")):
            desktop.click(*place, button=button)
            if button == 3:
                _close_menu(desktop, kelpa)
            desktop.key("End", letter)
            written += letter
            _await_field(kelpa, written)
        # With a menu open, a click elsewhere only closes that.
        desktop.click(x, y, button=3)
        kelpa.centre(lambda: kelpa.board.menu_item("Select all"), "the menu of the field")
        desktop.click(*kelpa.head("Home"))
        wait_until("the menu is closed", lambda: kelpa.board.menu_item("Select all") is None)
        _await_field(kelpa, "ones")
        for button in (1, 3):
            desktop.click(x, y)
            _await_field(kelpa, "ones")
            desktop.click(*bare, button=button)
            _await_no_field(kelpa)
            # Return is the board's again, and a letter begins another search.
            selection.press("Return")
            _await_field(kelpa, "")
            assert kelpa.board.field(boards.SEARCH).text() == "ones"
            desktop.key("Escape")
            _await_no_field(kelpa)
            desktop.key("x")
            _await_field(kelpa, "x")
            desktop.key("BackSpace")
            desktop.type("ones")
            _await_field(kelpa, "ones")


def a_click_changes_nothing_where_no_field_is_written_in(desktop, binary):
    path = desktop.directory / "board.sqlite"
    settings.write(path, goals=[("Home", ["One"])])
    with Kelpa(desktop, binary, path) as kelpa:
        kelpa.focus()
        selection = Selection(desktop, kelpa)
        selection.press("Left", "Right")
        selection.is_column(boards.UNSORTED)
        for button in (1, 2, 3):
            wait_until("the column has the focus", lambda: kelpa.board.focused_names() == [boards.UNSORTED])
            desktop.click(*_bare_place(kelpa), button=button)
            selection.press("Right")
            selection.is_column("Home")
            wait_until("the column has the focus", lambda: kelpa.board.focused_names() == ["Home"])
            selection.press("Left")
            selection.is_column(boards.UNSORTED)


def keys_for_another_program_reach_it_and_change_nothing(desktop, binary):
    path = desktop.directory / "board.sqlite"
    settings.write(path, goals=[("Home", []), ("Work", [])], is_auto_sorting=False)
    desktop.open_xterms("First", "Second")
    other = KeyLog(desktop, "Key log")
    with Kelpa(desktop, binary, path) as kelpa:
        kelpa.wait_for_previews(boards.UNSORTED)
        selection = Selection(desktop, kelpa)

        def pass_by():
            other.focus()
            desktop.key(*_ALL_KEYS)
            other.check_strokes(*_ALL_KEYS)

        # Nothing is chosen, a column is, a card is.
        pass_by()
        kelpa.focus()
        selection.is_nothing()
        selection.press("Left", "Right", "Right")
        selection.is_column("Home")
        pass_by()
        kelpa.focus()
        selection.press("Left")
        selection.is_column(boards.UNSORTED)
        first, second = wait_until(
            "two cards have their places", lambda: kelpa.board.cards_by_place(boards.UNSORTED))[:2]
        selection.press("space")
        selection.is_card(first)
        pass_by()
        kelpa.focus()
        selection.press("Right")
        selection.is_card(second)
        # Out of sight, it has no keys either.
        desktop.run("xdotool", "windowminimize", kelpa.window.number)
        wait_until("Kelpa is out of sight", lambda: desktop.active_window() != kelpa.window.number)
        pass_by()
        kelpa.focus()
        selection.press("Left")
        selection.is_card(first)
        assert kelpa.board.todos(boards.ALL_TODOS) == []


def a_field_keeps_its_keyboard_while_somebody_borrows_it(desktop, binary):
    path = desktop.directory / "board.sqlite"
    settings.write(path, goals=[("Home", ["One"])])
    other = KeyLog(desktop, "Key log")
    with Kelpa(desktop, binary, path) as kelpa:
        kelpa.focus()
        selection = Selection(desktop, kelpa)
        desktop.click(*kelpa.head("Home"))
        selection.is_column("Home")
        selection.press("Return")
        _await_field(kelpa, "")
        desktop.type("a")
        _await_field(kelpa, "a")
        # A key that a program has for itself, wherever it is pressed.
        root = desktop.x.screen().root
        volume = desktop.x.keysym_to_keycode(XK.XK_F9)
        root.grab_key(volume, 0, False, X.GrabModeAsync, X.GrabModeAsync)
        desktop.x.sync()
        desktop.key("F9", "b")
        _await_field(kelpa, "ab")
        # A program that takes every key for a while.
        assert root.grab_keyboard(False, X.GrabModeAsync, X.GrabModeAsync, X.CurrentTime) == X.GrabSuccess
        desktop.key("x")
        desktop.x.ungrab_keyboard(X.CurrentTime)
        desktop.x.sync()
        desktop.key("c")
        _await_field(kelpa, "abc")
        # The window manager's list of windows, from which none is taken.
        desktop.run("xdotool", "keydown", "alt", "key", "Tab", "key", "Escape", "keyup", "alt", "key", "d")
        _await_field(kelpa, "abcd")
        # From which one is taken.
        desktop.run("xdotool", "keydown", "alt", "key", "Tab", "keyup", "alt")
        wait_until("the other window has the keyboard", other.has_keyboard)
        _await_no_field(kelpa)
        desktop.key("z")
        kelpa.focus()
        selection.press("Return")
        _await_field(kelpa, "abcd")


def an_arrow_leaves_a_todo_that_is_edited_and_moves_the_selection(desktop, binary):
    path = desktop.directory / "board.sqlite"
    settings.write(path, goals=[("Home", ["One"]), ("Work", ["Two"])], is_auto_sorting=False)
    with Kelpa(desktop, binary, path) as kelpa:
        kelpa.focus()
        selection = Selection(desktop, kelpa)
        desktop.click(*kelpa.head("Work"))
        selection.is_column("Work")
        # With Shift it is the field's.
        kelpa.click(*kelpa.todo_node("Work", "Two"))
        _await_field(kelpa, "Two")
        desktop.key("End")
        desktop.type(" pots")
        desktop.key("shift+Left", "x")
        _await_field(kelpa, "Two potx")
        selection.press("Left")
        selection.is_column("Home")
        _await_no_field(kelpa)
        kelpa.wait_for_todos("Work", [("Two potx", TODO)])
        # The next one moves from there.
        selection.press("Left")
        selection.is_column(boards.UNSORTED)
        kelpa.check_stored(path)


def a_field_gives_its_keyboard_up_with_the_program_and_keeps_what_was_written(desktop, binary):
    path = desktop.directory / "board.sqlite"
    settings.write(path, goals=[("Home", ["One"]), ("Work", [])], is_auto_sorting=False)
    with Kelpa(desktop, binary, path) as kelpa:
        terminal = Typing(desktop, "Typist")
        selection = Selection(desktop, kelpa)

        def go_and_come_back(word):
            terminal.focus()
            _await_no_field(kelpa)
            terminal.type_sentinel(word)
            kelpa.focus()

        # The same with nothing selected to which the focus could go.
        kelpa.focus()
        kelpa.click(lambda: kelpa.board.field(boards.SEARCH), "the search field")
        _await_field(kelpa, "")
        go_and_come_back("nothing")
        selection.press("x", "Left")
        selection.is_column(boards.ALL_TODOS)
        assert kelpa.board.field(boards.SEARCH).text() == ""

        # A new todo: Return on its goal takes up what was begun.
        desktop.click(*kelpa.head("Work"))
        selection.is_column("Work")
        selection.press("Return")
        _await_field(kelpa, "")
        desktop.type("Buy mi")
        go_and_come_back("first")
        # A letter is nobody's.
        selection.press("x", "Return")
        _await_field(kelpa, "Buy mi")
        desktop.type("lk")
        # A click in it does so as well.
        go_and_come_back("second")
        kelpa.click(lambda: kelpa.board.field(boards.ADD_TODO), "the field for a new todo")
        _await_field(kelpa, "Buy milk")
        selection.press("Return")
        kelpa.wait_for_todos("Work", [("Buy milk", TODO)])
        selection.press("Escape")
        _await_no_field(kelpa)

        # A title that is being changed waits for the next click in it.
        kelpa.click(*kelpa.todo_node("Home", "One"))
        _await_field(kelpa, "One")
        desktop.type("Two")
        go_and_come_back("third")
        kelpa.click(lambda: kelpa.board.field(boards.EDIT_TODO), "the title that is being changed")
        desktop.key("End")
        desktop.type(" three")
        _await_field(kelpa, "Two three")
        # What comes next on the board ends it, as if it had been left only now.
        go_and_come_back("fourth")
        assert kelpa.board.field(boards.EDIT_TODO).text() == "Two three"
        desktop.click(*kelpa.head("Home"))
        selection.is_column("Home")
        kelpa.wait_for_todos("Home", [("Two three", TODO)])
        kelpa.click(*kelpa.todo_node("Home", "Two three"))
        _await_field(kelpa, "Two three")
        desktop.type("Four")
        go_and_come_back("fifth")
        selection.press("Left")
        selection.is_column(boards.UNSORTED)
        kelpa.wait_for_todos("Home", [("Four", TODO)])

        # Its button gives it up, as ever.
        for word in (None, "sixth"):
            kelpa.click(*kelpa.todo_node("Home", "Four"))
            _await_field(kelpa, "Four")
            desktop.type("Five")
            _await_field(kelpa, "Five")
            if word:
                go_and_come_back(word)
            kelpa.click(lambda: kelpa.board.button(boards.CANCEL), "the button that gives it up")
            wait_until("no title is changed", lambda: not kelpa.board.field(boards.EDIT_TODO))
            kelpa.wait_for_todos("Home", [("Four", TODO)])

        # The search text stays, and the keys are the board's.
        kelpa.click(lambda: kelpa.board.field(boards.SEARCH), "the search field")
        _await_field(kelpa, "")
        desktop.type("typ")
        go_and_come_back("seventh")
        selection.press("Escape", "space")
        selection.is_card("Typist")
        assert kelpa.board.field(boards.SEARCH).text() == "typ"
        assert terminal.lines() == ["nothing", "first", "second", "third", "fourth", "fifth", "sixth",
                                    "seventh"]
        kelpa.check_stored(path)


def who_goes_on_typing_where_a_field_was_does_no_harm(desktop, binary):
    path = desktop.directory / "board.sqlite"
    settings.write(path, goals=[("Home", ["One"])])
    with Kelpa(desktop, binary, path) as kelpa:
        terminal = Typing(desktop, "Typist")
        selection = Selection(desktop, kelpa)
        kelpa.focus()
        # There is something to undo.
        kelpa.click(*kelpa.todo_button("Home", "One"))
        kelpa.wait_for_todos("Home", [("One", boards.IN_PROGRESS)])
        kelpa.wait_for_previews(boards.UNSORTED)
        desktop.click(*kelpa.head(boards.UNSORTED))
        selection.is_column(boards.UNSORTED)
        selection.press("space")
        selection.is_card("Typist")
        kelpa.click(lambda: kelpa.board.field(boards.SEARCH), "the search field")
        _await_field(kelpa, "")
        desktop.type("typ")
        terminal.focus()
        _await_no_field(kelpa)
        terminal.type_sentinel("first")
        kelpa.focus()
        desktop.type("ist and  more")
        desktop.key("BackSpace", "Delete", "ctrl+z", "space")
        # The arrow comes after them.
        selection.press("Right")
        selection.is_card("Typist")
        assert desktop.active_window() == kelpa.window.number
        assert kelpa.board.field(boards.SEARCH).text() == "typ"
        assert kelpa.board.todos("Home") == [("One", boards.IN_PROGRESS)]
        selection.press("space")
        wait_until("the board raises its window", terminal.has_keyboard)
