"""The search: what it finds, how that is opened, and how it ends."""

import time

import board as boards
import settings
from desktop_search import DesktopSearch, is_revealed
from harness import on_desktop
from kelpa import Kelpa
from processes import wait_until
from selection import Selection


def what_is_searched_is_opened_by_return(desktop, binary):
    path = desktop.directory / "board.sqlite"
    settings.write(path, goals=[("Taxes", ["Ask the bank"])])
    desktop.open_xterms("Bank account", "Notes")
    with Kelpa(desktop, binary, path) as kelpa:
        wait_until("two cards", lambda: len(kelpa.board.cards()) == 2)
        kelpa.focus()
        selection = Selection(desktop, kelpa)
        # Nothing has the keyboard: what is typed is searched.
        desktop.type("bank")
        wait_until("it is searched", lambda: kelpa.board.written() == "bank")
        wait_until("one card is left", lambda: list(kelpa.board.cards()) == ["Bank account"])
        wait_until("it says what it found",
                   lambda: kelpa.board.has_text("Found: windows 1, goals 0, todos 1"))
        selection.press("Return")
        selection.is_card("Bank account")
        selection.press("Return")
        _is_active(desktop, "Bank account")
        wait_until("the search is over", lambda: len(kelpa.board.cards()) == 2)
        kelpa.focus()
        assert kelpa.board.field(boards.SEARCH).text() == ""
        # In one stroke.
        selection.press("ctrl+f")
        desktop.type("not")
        wait_until("one card is left", lambda: list(kelpa.board.cards()) == ["Notes"])
        selection.press("ctrl+Return")
        _is_active(desktop, "Notes")
        wait_until("the search is over", lambda: len(kelpa.board.cards()) == 2)
        # Goals and todos are found where no window matches.
        kelpa.focus()
        desktop.type("taxes")
        wait_until("it says what it found",
                   lambda: kelpa.board.has_text("Found: windows 0, goals 1, todos 0"))
        selection.press("Return")
        selection.is_column("Taxes")


@on_desktop(size="1280x832x24")
def a_search_shows_its_first_match(desktop, binary):
    path = desktop.directory / "board.sqlite"
    titles = [f"Goal {number}" for number in range(40)]
    settings.write(path, goals=[(title, ["One"]) for title in titles], is_auto_sorting=False)
    desktop.open_xterms("Bank account")
    with Kelpa(desktop, binary, path) as kelpa:
        kelpa.focus()
        # Far below, and nothing is selected there.
        desktop.type("goal 39")
        wait_until("its goal is in view", lambda: _is_in_view(kelpa, "Goal 39"))
        assert kelpa.board.selected_column() is None
        desktop.key("Escape")
        wait_until("the search is over", lambda: kelpa.board.field(boards.SEARCH).text() == "")
        assert _is_in_view(kelpa, "Goal 39")


def _is_in_view(kelpa, title):
    column = kelpa.board.column(title)
    if column is None:
        return False
    _, top, _, height = column.node.frame()
    return top > 0 and top + height <= 832


def a_search_reaches_hidden_goals(desktop, binary):
    path = desktop.directory / "board.sqlite"
    settings.write(path, goals=[("Done", []), ("Open", ["One"])], is_auto_sorting=False)
    desktop.open_xterms("Bank account", "Notes")
    with Kelpa(desktop, binary, path) as kelpa:
        wait_until("two cards", lambda: len(kelpa.board.cards()) == 2)
        kelpa.open_move_menu("Bank account", boards.UNSORTED, "Done")()
        kelpa.wait_for_card("Done", "Bank account")
        kelpa.click(lambda: kelpa.board.button(boards.HIDE_EMPTY), "the button that hides goals")
        kelpa.wait_for_goals("Open")
        wait_until("it says what is hidden",
                   lambda: kelpa.board.has_text("Hidden goals: 1, with windows: 1"))
        desktop.key("Escape")
        desktop.type("bank")
        kelpa.click(lambda: kelpa.board.button("1 more in hidden goals"), "the step to what is hidden")
        kelpa.wait_for_goals("Done", "Open")
        Selection(desktop, kelpa).is_card("Bank account")
        assert list(kelpa.board.cards()) == ["Bank account"]


def a_search_ends_by_escape_and_an_old_one_is_announced(desktop, binary):
    path = desktop.directory / "board.sqlite"
    settings.write(path, goals=[("Home", [])])
    desktop.open_xterms("Bank account", "Notes")
    announcement = "Only windows that match “bank” are shown"
    with Kelpa(desktop, binary, path) as kelpa:
        wait_until("two cards", lambda: len(kelpa.board.cards()) == 2)
        kelpa.focus()
        selection = Selection(desktop, kelpa)
        desktop.type("bank")
        wait_until("one card is left", lambda: list(kelpa.board.cards()) == ["Bank account"])
        selection.press("Return")
        selection.is_card("Bank account")
        assert not kelpa.board.has_text(announcement)
        desktop.run("wmctrl", "-a", "Notes")
        _is_active(desktop, "Notes")
        # Within a tenth of a second, the toolkit takes coming back for never having left.
        time.sleep(0.3)
        kelpa.focus()
        wait_until("the board says why it shows so little",
                   lambda: kelpa.board.has_text(announcement))
        selection.press("Escape")
        selection.is_column(boards.UNSORTED)
        assert list(kelpa.board.cards()) == ["Bank account"]
        selection.press("Escape")
        wait_until("both cards are back", lambda: len(kelpa.board.cards()) == 2)
        wait_until("there is nothing to say", lambda: not kelpa.board.has_text(announcement))
        selection.is_column(boards.UNSORTED)


def an_arrow_moves_the_selection_at_once_where_escape_has_cleared_the_search(desktop, binary):
    path = desktop.directory / "board.sqlite"
    settings.write(path, goals=[("Home", []), ("Garden", [])], is_auto_sorting=False)
    with Kelpa(desktop, binary, path) as kelpa:
        kelpa.focus()
        selection = Selection(desktop, kelpa)
        for arrow, title in (("Down", boards.ALL_TODOS), ("Right", boards.UNSORTED),
                             ("Left", boards.ALL_TODOS)):
            desktop.type("bank")
            wait_until("it is searched", lambda: kelpa.board.written() == "bank")
            desktop.key("Escape", arrow)
            selection.is_column(title)
            wait_until("no field has the keyboard", lambda: not kelpa.board.focused_field())


def what_the_desktop_s_search_finds_is_revealed_on_the_board(desktop, binary):
    path = desktop.directory / "board.sqlite"
    goals = [(f"Goal {number}", [f"Step {number}.{step}" for step in range(8)]) for number in range(20)]
    settings.write(path, goals=[*goals, ("Done", [])], is_auto_sorting=False)
    kelpa = Kelpa(desktop, binary, path, arguments=["--hidden"])
    kelpa.begin()
    search = DesktopSearch(desktop)
    # Before the board has ever been shown.
    found = wait_until("Kelpa is asked", lambda: search.find("step", "18.7"))
    search.open(found, "step", "18.7")
    kelpa.window = wait_until("Kelpa's window is shown", kelpa.shown_window)
    kelpa.await_board()
    wait_until("the todo is in view", lambda: is_revealed(kelpa, "Goal 18", "Step 18.7"))
    selection = Selection(desktop, kelpa)
    selection.is_column("Goal 18")
    # The person has scrolled away since, and has closed the board.
    kelpa.focus()
    desktop.key("Home")
    wait_until("the todo is out of view", lambda: not is_revealed(kelpa, "Goal 18", "Step 18.7"))
    search.open(found, "step", "18.7")
    wait_until("the todo is in view again", lambda: is_revealed(kelpa, "Goal 18", "Step 18.7"))
    other = search.find("step", "2.6")
    desktop.close(kelpa.window)
    wait_until("Kelpa's window is closed", lambda: kelpa.shown_window() is None)
    search.open(other, "step", "2.6")
    kelpa.window = wait_until("Kelpa's window is shown", kelpa.shown_window)
    wait_until("the other todo is in view", lambda: is_revealed(kelpa, "Goal 2", "Step 2.6"))
    assert not is_revealed(kelpa, "Goal 18", "Step 18.7")
    # A goal that the board hides.
    kelpa.click(lambda: kelpa.board.button(boards.HIDE_EMPTY), "the button that hides goals")
    wait_until("the goal is hidden", lambda: "Done" not in kelpa.board.columns())
    search.open(search.find("done"), "done")
    wait_until("the goal is there", lambda: "Done" in kelpa.board.columns())
    selection.is_column("Done")
    kelpa.quit()


def _is_active(desktop, title):
    def look():
        number = desktop.active_window()
        return any(each.number == number and each.title == title for each in desktop.windows())

    wait_until(f"{title!r} is the active window", look)
