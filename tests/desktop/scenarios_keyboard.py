"""The board by keyboard alone."""

import board as boards
import settings
from board import TODO
from kelpa import Kelpa
from processes import wait_until
from selection import Selection

_GOALS = ("Alpha", "Beta", "Gamma", "Delta")


def arrow_keys_choose_columns_and_return_adds_todos(desktop, binary):
    path = desktop.directory / "board.sqlite"
    settings.write(path, goals=[(goal, []) for goal in _GOALS], is_auto_sorting=False)
    with Kelpa(desktop, binary, path) as kelpa:
        kelpa.focus()
        selection = Selection(desktop, kelpa)

        # Nothing is chosen, so these go by; the first arrow chooses the first column all the same.
        selection.press("space", "Return", "Escape", "Left")
        selection.is_column(boards.ALL_TODOS)
        assert kelpa.board.focused_field() is None
        selection.press("Left", "Up", "Right")
        selection.is_column(boards.UNSORTED)
        # Without windows there is nothing to enter, and only goals take todos by Return.
        selection.press("space", "Escape", "Return", "KP_Enter", "Right")
        selection.is_column("Alpha")
        assert kelpa.board.focused_field() is None
        _walk_the_grid(selection)

        # A click chooses as well, also on a head that could be dragged.
        desktop.click(*kelpa.head("Delta"))
        selection.is_column("Delta")
        desktop.click(*kelpa.head("Beta"))
        selection.is_column("Beta")
        selection.press("Return")
        wait_until("a todo can be typed", kelpa.board.focused_field)
        # Space, letters and Return are the field's; it is empty again for the next todo.
        desktop.type("Buy milk")
        selection.press("Return")
        kelpa.wait_for_todos("Beta", [("Buy milk", TODO)])
        desktop.type("Buy bread")
        selection.press("KP_Enter")
        kelpa.wait_for_todos("Beta", [("Buy milk", TODO), ("Buy bread", TODO)])
        selection.press("space", "Return")
        desktop.type("never mind")
        selection.press("Escape")
        wait_until("no todo is typed", lambda: not kelpa.board.focused_field())
        selection.press("KP_Enter")
        wait_until("a todo can be typed", kelpa.board.focused_field)
        assert kelpa.board.focused_field().text() == ""
        # An arrow leaves the field and moves on in one stroke.
        desktop.type("nor this")
        selection.press("Left")
        selection.is_column("Alpha")
        wait_until("no todo is typed", lambda: not kelpa.board.focused_field())
        kelpa.wait_for_todos(boards.ALL_TODOS, [("Buy milk", TODO), ("Buy bread", TODO)])
        kelpa.check_stored(path)


def _walk_the_grid(selection):
    """From Alpha to Beta, along the edges of the grid of five columns that this screen has room for.
    The arrow keys go by all todos, what is unsorted, and the goals: Delta begins the second row."""
    selection.press("Up", *["Right"] * 6)
    selection.is_column("Gamma")
    selection.press("Down")
    selection.press(*["Left"] * 6)
    selection.is_column(boards.ALL_TODOS)
    selection.press("Down")
    selection.is_column("Delta")
    selection.press("Down", "Left", "Right")
    selection.is_column("Delta")
    selection.press("Up")
    selection.is_column(boards.ALL_TODOS)
    selection.press("Right", "Right", "Right")
    selection.is_column("Beta")


def space_enters_a_column_and_raises_a_window(desktop, binary):
    path = desktop.directory / "board.sqlite"
    settings.write(path, goals=[("Only goal", [])])
    desktop.open_xterms("First", "Second", "Third")
    with Kelpa(desktop, binary, path) as kelpa:
        wait_until("three cards", lambda: len(kelpa.board.cards()) == 3)
        kelpa.wait_for_previews(boards.UNSORTED)
        kelpa.focus()
        selection = Selection(desktop, kelpa)
        selection.press("Right", "Right")
        selection.is_column(boards.UNSORTED)
        # Two columns of cards: the first two lie side by side, the third below the first.
        first, second, third = wait_until(
            "every card has its place", lambda: kelpa.board.cards_by_place(boards.UNSORTED))
        selection.press("space")
        selection.is_card(first)
        selection.press("Left", "Up", "Right")
        selection.is_card(second)
        selection.press("Right", "Down", "Left")
        selection.is_card(first)
        selection.press("Down", "Right", "Down")
        selection.is_card(third)
        selection.press("Up", "Right")
        selection.is_card(second)
        assert kelpa.board.focused_field() is None
        for key in ("Return", "KP_Enter", "space"):
            selection.press(key)
            wait_until(f"{second!r} is the active window", lambda: _active_title(desktop) == second)
            selection.is_card(second)
            if key != "space":
                kelpa.focus()
        # The keys are that window's now.
        selection.press("Left", "Escape")
        kelpa.focus()
        selection.is_card(second)
        selection.press("Escape")
        selection.is_column(boards.UNSORTED)
        selection.press("Right")
        selection.is_column("Only goal")


def _active_title(desktop):
    number = desktop.active_window()
    return next((window.title for window in desktop.windows() if window.number == number), None)


def the_search_field_keeps_its_keys(desktop, binary):
    path = desktop.directory / "board.sqlite"
    settings.write(path, goals=[("Only goal", [])])
    desktop.open_xterms("Some notes", "Mail")
    with Kelpa(desktop, binary, path) as kelpa:
        wait_until("two cards", lambda: len(kelpa.board.cards()) == 2)
        kelpa.focus()
        selection = Selection(desktop, kelpa)
        selection.press("Right", "Right", "Right")
        selection.is_column("Only goal")
        kelpa.click(lambda: kelpa.board.field(boards.SEARCH), "the search field")
        wait_until("the search field has the keyboard", kelpa.board.focused_field)
        desktop.type("some not")
        wait_until("one card is left", lambda: list(kelpa.board.cards()) == ["Some notes"])
        assert kelpa.board.focused_field().text() == "some not"
        selection.is_column("Only goal")
        # Return and the arrow lead to what was found, Ctrl+F leads back.
        for key in ("Return", "KP_Enter", "Down"):
            selection.press(key)
            selection.is_card("Some notes")
            wait_until("no field has the keyboard", lambda: kelpa.board.focused_field() is None)
            selection.press("ctrl+f")
            wait_until("the search field has the keyboard", kelpa.board.focused_field)
        desktop.type("nobody")
        wait_until("no card is left", lambda: not kelpa.board.cards())
        selection.press("Return", "Down")
        assert kelpa.board.focused_field().text() == "nobody"
        selection.press("Escape")
        wait_until("both cards are back", lambda: len(kelpa.board.cards()) == 2)
        assert kelpa.board.field(boards.SEARCH).text() == ""
        # The card that the search had hidden is still chosen.
        selection.is_card("Some notes")
        # An arrow leaves the field and moves among the cards that are left; the search text stays.
        desktop.type("mail")
        selection.press("Right")
        selection.is_card("Mail")
        assert kelpa.board.focused_field() is None
        # A click beside the field leaves it as well, and keys are the board's again.
        kelpa.click(lambda: kelpa.board.field(boards.SEARCH), "the search field")
        wait_until("the search field has the keyboard", kelpa.board.focused_field)
        desktop.click(*kelpa.head("Only goal"))
        wait_until("no field has the keyboard", lambda: not kelpa.board.focused_field())
        selection.is_column("Only goal")
        selection.press("Return")
        wait_until("a todo can be typed", kelpa.board.focused_field)


def the_focus_follows_the_keyboard_selection(desktop, binary):
    path = desktop.directory / "board.sqlite"
    settings.write(path, goals=[("Only goal", [])])
    desktop.open_xterms("First", "Second")
    with Kelpa(desktop, binary, path) as kelpa:
        wait_until("two cards", lambda: len(kelpa.board.cards()) == 2)
        kelpa.wait_for_previews(boards.UNSORTED)
        kelpa.focus()
        selection = Selection(desktop, kelpa)

        def is_focused(name):
            wait_until(f"{name!r} has the focus", lambda: name in kelpa.board.focused_names())

        # A screen reader says what has the focus.
        for column in (boards.ALL_TODOS, boards.UNSORTED, "Only goal"):
            selection.press("Right")
            selection.is_column(column)
            is_focused(column)
        # A goal has a menu, and so has a window, by key alone.
        selection.press("Menu")
        wait_until("the goal's menu is open", lambda: kelpa.board.menu_item(boards.DELETE_GOAL))
        selection.press("Escape")
        wait_until("the menu is closed", lambda: not kelpa.board.menu_item(boards.DELETE_GOAL))
        selection.press("Left", "space")
        first, second = wait_until(
            "every card has its place", lambda: kelpa.board.cards_by_place(boards.UNSORTED))
        selection.is_card(first)
        selection.press("Right")
        selection.is_card(second)
        wait_until("the card has the focus", lambda: any(
            name.endswith(second) for name in kelpa.board.focused_names()))
        selection.press("shift+F10")
        wait_until("the window's menu is open", lambda: kelpa.board.menu_item("Only goal"))
        x, y = kelpa.centre(lambda: kelpa.board.menu_item("Only goal"), "the entry of the goal")
        desktop.click(x, y)
        kelpa.wait_for_card("Only goal", second)


def return_is_for_goals_and_windows_alone(desktop, binary):
    path = desktop.directory / "board.sqlite"
    settings.write(path, goals=[("Home", []), ("Work", [])], is_auto_sorting=False)
    desktop.open_xterms("First")
    with Kelpa(desktop, binary, path) as kelpa:
        kelpa.wait_for_card(boards.UNSORTED, "First")
        kelpa.open_move_menu("First", boards.UNSORTED, "Home")()
        kelpa.wait_for_card("Home", "First")
        selection = Selection(desktop, kelpa)

        def is_left_alone(*keys):
            """What follows is answered, and no field has been opened before it."""
            selection.press("Return", "KP_Enter", *keys)

        selection.is_nothing()
        is_left_alone("Right")
        selection.is_column(boards.ALL_TODOS)
        is_left_alone("Right")
        selection.is_column(boards.UNSORTED)
        is_left_alone("Right", "space")
        selection.is_card("First")
        selection.press("Return")
        wait_until("the window is active", lambda: _active_title(desktop) == "First")
        kelpa.focus()
        selection.press("Escape")
        selection.is_column("Home")
        assert kelpa.board.focused_field() is None
        assert kelpa.board.field(boards.ADD_TODO) is None
        for key in ("Return", "KP_Enter"):
            selection.press(key)
            wait_until("a todo can be typed", kelpa.board.focused_field)
            selection.press("Escape")
            wait_until("no todo is typed", lambda: not kelpa.board.field(boards.ADD_TODO))
            selection.is_column("Home")


def what_is_made_or_asked_for_is_chosen(desktop, binary):
    path = desktop.directory / "board.sqlite"
    settings.write(path, goals=[("Home", []), ("Work", [])], is_auto_sorting=False)
    with Kelpa(desktop, binary, path) as kelpa:
        selection = Selection(desktop, kelpa)
        kelpa.create_goal("Sport")
        selection.is_column("Sport")
        kelpa.click(lambda: kelpa.board.column("Home").button(boards.ADD_TODO), "the button for a todo")
        selection.is_column("Home")
        wait_until("a todo can be typed", kelpa.board.focused_field)
        desktop.type("Buy milk")
        selection.press("Return", "Escape", "Left")
        selection.is_column(boards.UNSORTED)
        kelpa.wait_for_todos("Home", [("Buy milk", TODO)])


def a_choice_goes_with_the_goal_that_is_hidden(desktop, binary):
    path = desktop.directory / "board.sqlite"
    settings.write(path, goals=[("Empty", []), ("Home", ["One"]), ("Work", ["Two"])],
                   is_auto_sorting=False)
    with Kelpa(desktop, binary, path) as kelpa:
        kelpa.focus()
        selection = Selection(desktop, kelpa)

        # A goal without open todos, with a field for one.
        desktop.click(*kelpa.head("Empty"))
        selection.is_column("Empty")
        selection.press("Return")
        wait_until("a todo can be typed", kelpa.board.focused_field)
        kelpa.click(lambda: kelpa.board.button(boards.HIDE_EMPTY), "the button that hides goals")
        kelpa.wait_for_goals("Home", "Work")
        selection.is_nothing()
        selection.press("Right")
        selection.is_column(boards.ALL_TODOS)
        # One whose last todo is done.
        desktop.click(*kelpa.head("Work"))
        selection.is_column("Work")
        for goals in (("Home", "Work"), ("Home",)):
            kelpa.click(*kelpa.todo_button("Work", "Two"))
            kelpa.wait_for_goals(*goals)
        selection.is_nothing()
        # One whose last todo goes elsewhere; another keeps its choice.
        desktop.click(*kelpa.head(boards.UNSORTED))
        selection.is_column(boards.UNSORTED)
        kelpa.choose_in_todo_menu("Home", "One", boards.MOVE_TO_GOAL, boards.UNSORTED)
        kelpa.wait_for_goals()
        selection.is_column(boards.UNSORTED)
        # What comes back is not chosen again, and its field is closed.
        kelpa.click(lambda: kelpa.board.button(boards.SHOW_ALL), "the button that shows all goals")
        kelpa.wait_for_goals("Empty", "Home", "Work")
        selection.is_column(boards.UNSORTED)
        assert kelpa.board.field(boards.ADD_TODO) is None


def after_the_chosen_window_is_gone_the_first_is_chosen(desktop, binary):
    path = desktop.directory / "board.sqlite"
    settings.write(path)
    terminals = desktop.open_xterms("First", "Second", "Third")
    with Kelpa(desktop, binary, path) as kelpa:
        wait_until("three cards", lambda: len(kelpa.board.cards()) == 3)
        kelpa.wait_for_previews(boards.UNSORTED)
        kelpa.focus()
        selection = Selection(desktop, kelpa)
        selection.press("Right", "Right", "space", "Down")
        first, second, third = wait_until(
            "every card has its place", lambda: kelpa.board.cards_by_place(boards.UNSORTED))
        selection.is_card(third)
        terminals[third].terminate()
        selection.is_card(first)
        selection.press("Right")
        selection.is_card(second)
        terminals[second].terminate()
        selection.is_card(first)
        # It is the only one.
        selection.press("Right", "Down")
        selection.is_card(first)
        terminals[first].terminate()
        # Without windows there is but the column, and Escape is nobody's.
        selection.is_column(boards.UNSORTED)
        selection.press("Escape", "space", "Left")
        selection.is_column(boards.ALL_TODOS)
