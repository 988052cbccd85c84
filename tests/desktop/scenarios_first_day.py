"""What a person meets on the first day: the language, the keys, and what the board says by itself."""

import time

import board as boards
import settings
from board import COMPLETED, IN_PROGRESS, TODO
from front import await_front, await_monitor, start_kelpa, tap_twice
from helper import Helper
from kelpa import Kelpa
from processes import wait_until
from selection import Selection
from typists import KeyLog

_SORTED = "Goals are sorted automatically and cannot be moved"


def a_new_board_offers_the_language_of_the_desktop_once(desktop, binary):
    path = desktop.directory / "board.sqlite"
    german = {"LC_ALL": "de_DE.UTF-8", "LANGUAGE": "de"}
    offer = "Auf Deutsch fortfahren"
    with Kelpa(desktop, binary, path, env=german) as kelpa:
        kelpa.focus()
        wait_until("German is offered", lambda: kelpa.board.button(offer))
        assert kelpa.board.button("新建目标"), "the board itself is in Chinese"
        desktop.key("Return")
        wait_until("the board speaks German", lambda: kelpa.board.button("Neues Ziel"))
        wait_until("the offer is gone", lambda: not kelpa.board.button(offer))
    with Kelpa(desktop, binary, path, env={"LC_ALL": "fr_FR.UTF-8", "LANGUAGE": "fr"}) as kelpa:
        assert kelpa.board.button("Neues Ziel")
        assert not kelpa.board.button("Continuer en français")


def a_new_board_offers_every_language_where_the_desktop_s_is_not_spoken(desktop, binary):
    path = desktop.directory / "board.sqlite"
    with Kelpa(desktop, binary, path, env={"LC_ALL": "pt_BR.UTF-8", "LANGUAGE": "pt_BR"}) as kelpa:
        kelpa.focus()
        for text in ("中文", "English", "日本語", "한국어", "Français", "Deutsch"):
            assert kelpa.board.button(text), text
        # A digit alone is searched, as ever.
        desktop.key("2")
        wait_until("it is searched", lambda: kelpa.board.written() == "2")
        desktop.key("BackSpace", "Escape")
        wait_until("the board has the keys", lambda: not kelpa.board.focused_field())
        desktop.key("alt+2")
        wait_until("the board speaks English", lambda: kelpa.board.button(boards.NEW_GOAL))
        wait_until("the offer is gone", lambda: not kelpa.board.button("Deutsch"))


def _are_keys_shown(kelpa):
    close = kelpa.board.button("Close")
    return kelpa.board.has_text("Keyboard shortcuts") and close is not None \
        and close.has_state(boards.Atspi.StateType.FOCUSED)


def _are_keys_gone(kelpa):
    # A sheet that begins to fade leaves the tree for a moment and comes back until it has faded.
    for _ in range(3):
        if kelpa.board.has_text("Keyboard shortcuts"):
            return False
        time.sleep(0.1)
    return True


def keys_create_a_goal_and_show_all_keys(desktop, binary):
    path = desktop.directory / "board.sqlite"
    settings.write(path)
    with Kelpa(desktop, binary, path) as kelpa:
        kelpa.focus()
        desktop.key("ctrl+n")
        wait_until("a title can be typed", kelpa.board.focused_field)
        desktop.type("Taxes")
        desktop.key("Return")
        wait_until("the goal is there", lambda: kelpa.board.column("Taxes"))
        wait_until("the sheet is gone", lambda: not kelpa.board.has_text("Create a goal"))
        desktop.key("F1")
        wait_until("the keys are shown", lambda: _are_keys_shown(kelpa))
        assert kelpa.board.has_text("Ctrl+N")
        assert kelpa.board.has_text("Super Super")
        desktop.key("Escape")
        wait_until("the keys are gone", lambda: _are_keys_gone(kelpa))
        # Faster than the sheet opens and fades.
        desktop.key("F1", "F1", "ctrl+n")
        wait_until("a title can be typed, which no key reaches while the keys are shown",
                   kelpa.board.focused_field)
        wait_until("the keys have faded", lambda: _are_keys_gone(kelpa))
        assert kelpa.board.has_text("Create a goal")
        desktop.key("Escape")
        wait_until("the sheet is gone", lambda: not kelpa.board.has_text("Create a goal"))
        desktop.key("F1", "Escape", "F1")
        wait_until("the keys are shown", lambda: _are_keys_shown(kelpa))
        desktop.key("F1")
        wait_until("the keys are gone", lambda: _are_keys_gone(kelpa))


def who_moves_a_sorted_goal_is_told_why_it_stays(desktop, binary):
    path = desktop.directory / "board.sqlite"
    settings.write(path, goals=[("Home", []), ("Work", [])], is_auto_sorting=True)
    with Kelpa(desktop, binary, path) as kelpa:
        kelpa.focus()
        selection = Selection(desktop, kelpa)
        selection.press("Right", "Right", "Right")
        selection.is_column("Home")
        wait_until("the goal has the focus", lambda: "Home" in kelpa.board.focused_names())
        desktop.key("alt+Right")
        wait_until("it says why", lambda: kelpa.board.has_text(_SORTED))
        kelpa.wait_for_goals("Home", "Work")
        kelpa.click(lambda: kelpa.board.button("Stop sorting"), "the offer not to sort")
        wait_until("there is nothing to say", lambda: not kelpa.board.has_text(_SORTED))
        desktop.key("alt+Right")
        kelpa.wait_for_goals("Work", "Home")


def the_last_todo_of_a_goal_that_is_hidden_then_comes_back_by_the_toast(desktop, binary):
    path = desktop.directory / "board.sqlite"
    settings.write(path, goals=[("Taxes", ["Ask the bank"]), ("Home", ["Sweep"])], is_auto_sorting=False)
    with Kelpa(desktop, binary, path) as kelpa:
        kelpa.focus()
        kelpa.click(lambda: kelpa.board.button(boards.HIDE_EMPTY), "the button that hides goals")
        status = kelpa.todo_button(boards.ALL_TODOS, "Ask the bank")
        kelpa.click(*status)
        kelpa.wait_for_todos(boards.ALL_TODOS, [("Ask the bank", IN_PROGRESS), ("Sweep", TODO)])
        kelpa.click(*status)
        # It is struck through for a moment.
        kelpa.wait_for_todos(boards.ALL_TODOS, [("Ask the bank", COMPLETED), ("Sweep", TODO)])
        # Its goal is hidden a moment later, and the toast says why.
        kelpa.wait_for_goals("Home")
        kelpa.wait_for_todos(boards.ALL_TODOS, [("Sweep", TODO)])
        assert kelpa.board.has_text("Last todo of the goal completed")
        kelpa.click(lambda: kelpa.board.button("Undo"), "the button of the toast")
        kelpa.wait_for_goals("Taxes", "Home")
        kelpa.wait_for_todos(boards.ALL_TODOS, [("Ask the bank", IN_PROGRESS), ("Sweep", TODO)])


_TYPE = "Type what you are working on"
_DRAG = "Drag a window’s card onto the goal"
_RETURN = "Press Super twice to bring Kelpa forward instantly"


def an_empty_board_teaches_three_steps_and_no_more(desktop, binary):
    kelpa, path = start_kelpa(desktop, binary)
    other = KeyLog(desktop, "Key log")
    kelpa.wait_for_card(boards.UNSORTED, "Key log")

    def steps():
        """The steps that are told, each with whether it was done."""
        panel = kelpa.board.group("Getting started")
        return {label.name: label.description
                for label in (panel.find((boards.Atspi.Role.LABEL,), lambda _: True) if panel else ())}

    wait_until("the steps are there", lambda: steps() == {_TYPE: "", _DRAG: "", _RETURN: ""})
    kelpa.focus()
    # No trap: the Tab key goes in, writes, and leads on.
    kelpa.click(lambda: kelpa.board.field(_TYPE), "the field of the first step")
    wait_until("a title can be typed", kelpa.board.focused_field)
    desktop.key("Tab")
    wait_until("the keyboard went on", lambda: not kelpa.board.focused_field())
    desktop.key("shift+Tab")
    wait_until("the keyboard came back", kelpa.board.focused_field)
    desktop.type("Taxes")
    desktop.key("Return")
    kelpa.wait_for_goals("Taxes")
    wait_until("the first step is done", lambda: steps().get(_TYPE) == "Completed")
    # The keys are the board's again.
    desktop.key("Down")
    assert kelpa.board.written() is None
    kelpa.drag_card("Key log", boards.UNSORTED, "Taxes")
    kelpa.wait_for_card("Taxes", "Key log")
    wait_until("the second step is done", lambda: steps().get(_DRAG) == "Completed")
    await_monitor(desktop, kelpa, other)
    wait_until("there is nothing left to teach", lambda: not steps())
    kelpa.quit()
    with Kelpa(desktop, binary, path) as again:
        assert not again.board.has_text(_TYPE)


def a_drag_names_the_place_below_it_and_covers_none(desktop, binary):
    path = desktop.directory / "board.sqlite"
    settings.write(path, goals=[("Home", []), ("Taxes", [])], is_auto_sorting=False)
    desktop.start_xterm("First", color="#d33682")
    with Kelpa(desktop, binary, path) as kelpa:
        kelpa.focus()
        kelpa.wait_for_card(boards.UNSORTED, "First")
        kelpa.wait_for_previews(boards.UNSORTED)
        entry = kelpa.centre(lambda: kelpa.board.rail_entry("Taxes"), "the entry of the rail")

        def is_named():
            """Whether the ground of a name, in the colour of the theme's accent, is below the pointer."""
            return desktop.pixel(*chip)[:3] == bytes.fromhex("eb6325")

        chip, beside = (entry[0] + 16, entry[1] + 40), (entry[0], entry[1] - 60)
        bare = desktop.pixel(*beside), desktop.pixel(*chip)
        desktop.drag_over(kelpa.card_centre(boards.UNSORTED, "First"), entry)
        wait_until("the place is named below the pointer", is_named)
        wait_until("in words", lambda: kelpa.board.has_text("→ Taxes"))
        wait_until("nothing else covers the rail", lambda: desktop.pixel(*beside) == bare[0])
        # Where nothing takes the card, its picture follows again, as wide as the card.
        desktop.run("xdotool", "mousemove", *kelpa.head(boards.ALL_TODOS))
        wait_until("no place is named", lambda: desktop.pixel(*chip) == bare[1])
        desktop.run("xdotool", "mousemove", *entry)
        wait_until("the place is named again", is_named)
        desktop.let_go()
        kelpa.wait_for_card("Taxes", "First")
        wait_until("nothing is named any more", lambda: not is_named())


def _check_second_press_of_fold(desktop, kelpa):
    """A double click on the fold closes none of the windows that come up below the pointer."""
    places = [card.node.frame() for card in kelpa.board.column(boards.UNSORTED).cards]
    x, y, width, _ = places[2]
    # The middle of the button that closes the first card of the next row.
    close = x + width - 13, y + (y - places[0][1]) + 13
    left, top, across, height = kelpa.board.button("Show 6 more").frame()
    assert left < close[0] < left + across and top < close[1] < top + height, (close, left, top, across, height)
    desktop.run("xdotool", "mousemove", *close, "click", "--repeat", 2, "--delay", 150, 1)
    wait_until("the cards have come", lambda: len(kelpa.board.column(boards.UNSORTED).cards) == 10)
    desktop.hover(*close)
    # Long enough for a window to be gone.
    time.sleep(2)


def many_unsorted_windows_are_folded_and_arrow_keys_reach_them(desktop, binary):
    path = desktop.directory / "board.sqlite"
    settings.write(path, goals=[("Home", [])], is_auto_sorting=False)
    titles = [f"Window {number}" for number in range(10)]
    desktop.open_xterms(*titles)

    def shown(kelpa):
        return len(kelpa.board.column(boards.UNSORTED).cards)

    with Kelpa(desktop, binary, path) as kelpa:
        kelpa.focus()
        wait_until("six windows are folded away", lambda: kelpa.board.button("Show 6 more"))
        assert shown(kelpa) == 4
        # A search reaches them.
        desktop.key("ctrl+f")
        desktop.type("xterm")
        wait_until("all are found", lambda: shown(kelpa) == 10)
        desktop.key("ctrl+a", "Delete", "Escape")
        wait_until("they are folded again", lambda: shown(kelpa) == 4)
        selection = Selection(desktop, kelpa)
        selection.press("Left", "Right")
        selection.is_column(boards.UNSORTED)
        selection.press("space", "Down", "Down")
        wait_until("all are there", lambda: shown(kelpa) == 10 and kelpa.board.selected_card())
        kelpa.click(lambda: kelpa.board.button("Show fewer"), "the fold")
        wait_until("they are folded", lambda: shown(kelpa) == 4)
        kelpa.click(lambda: kelpa.board.button("Show 6 more"), "the fold")
        wait_until("they are unfolded", lambda: shown(kelpa) == 10)
        kelpa.click(lambda: kelpa.board.button("Show fewer"), "the fold")
        wait_until("they are folded", lambda: shown(kelpa) == 4)
        _check_second_press_of_fold(desktop, kelpa)
        wait_until("they are unfolded", lambda: shown(kelpa) == 10)
    with Kelpa(desktop, binary, path) as again:
        wait_until("they stay unfolded", lambda: shown(again) == 10)


_MANY = 40


def the_first_day_is_done_by_keys_alone(desktop, binary):
    path = desktop.directory / "board.sqlite"
    settings.write(path)
    desktop.open_xterms("Bank account", "Notes")
    reader = Helper(desktop, "alert_listener.py", "listening")
    with Kelpa(desktop, binary, path) as kelpa:
        board = kelpa.board
        kelpa.wait_for_card(boards.UNSORTED, "Bank account")
        kelpa.focus()
        selection = Selection(desktop, kelpa)

        # The first goal, and what there is to do for it.
        desktop.key("ctrl+n")
        wait_until("a title can be typed", board.focused_field)
        desktop.type("Taxes")
        desktop.key("Return")
        kelpa.wait_for_goals("Taxes")
        selection.is_column("Taxes")
        desktop.key("Return")
        wait_until("a todo can be typed", board.focused_field)
        desktop.type("Ask the bank")
        desktop.key("Return")
        kelpa.wait_for_todos("Taxes", [("Ask the bank", TODO)])
        desktop.key("Escape")
        wait_until("the board has the keys", lambda: not board.focused_field())

        # A window joins it, by the menu of its card.
        selection.press("Left")
        selection.is_column(boards.UNSORTED)
        selection.press("space")
        wait_until("a card is chosen", board.selected_card)
        _step_to(desktop, "Right", lambda: board.selected_card() == "Bank account", "the card")
        selection.press("Menu")
        wait_until("the menu is open", lambda: board.menu_item("Taxes"))
        _step_to(desktop, "Down", lambda: "Taxes" in board.focused_names(), "the entry of the goal")
        desktop.key("Return")
        kelpa.wait_for_card("Taxes", "Bank account")

        # It is found and brought forward, and the board comes back.
        desktop.key("ctrl+f")
        desktop.type("bank")
        wait_until("it says what it found",
                   lambda: board.has_text("Found: windows 1, goals 0, todos 1"))
        desktop.key("Return")
        selection.is_card("Bank account")
        desktop.key("Return")
        number = desktop.wait_for_window("Bank account").number
        wait_until("the window is in front", lambda: desktop.active_window() == number)
        tap_twice(desktop)
        await_front(desktop, kelpa)

        # The todo is completed, which the reader hears, and open again.
        _step_to(desktop, "Tab", lambda: _is_status_focused(board, "Taxes"), "the status of the todo")
        desktop.key("space")
        kelpa.wait_for_todos("Taxes", [("Ask the bank", IN_PROGRESS)])
        desktop.key("space")
        kelpa.wait_for_todos("Taxes", [("Ask the bank", COMPLETED)])
        wait_until("the reader says so",
                   lambda: any(line.startswith("Last todo of the goal completed") for line in reader.lines()))
        desktop.key("ctrl+z")
        wait_until("the todo is open again",
                   lambda: ("Ask the bank", COMPLETED) not in (board.todos("Taxes") or ()))


def _step_to(desktop, key, is_there, what):
    for _ in range(_MANY):
        if is_there():
            return
        desktop.key(key)
    wait_until(f"{what} is reached", is_there)


def _is_status_focused(board, title):
    """Whether the status of a todo in that column has the keyboard."""
    column = board.column(title)
    return column is not None and any(todo.status_button.has_state(boards.Atspi.StateType.FOCUSED)
                                      for todo in column.todos)
