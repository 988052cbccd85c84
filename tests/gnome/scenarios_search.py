"""GNOME Shell's own search: what is typed in the overview finds what is on the board, and opens it."""

import pathlib

import board as boards
import settings
from activation import Activation, await_end
from harness import on_desktop
from kelpa import Kelpa
from processes import wait_until


def _search(desktop, text, *expected):
    """Types the text in the overview and waits until these are Kelpa's results, best first, each with what
    is said about it."""
    desktop.key("Super_L")
    wait_until("the overview is open", desktop.is_overview_open)
    # The Shell gives its field the keyboard with the first letter, and may read twice what is typed meanwhile.
    desktop.type(text[0])
    wait_until("the first letter is read", lambda: desktop.searched_text() == text[0])
    desktop.type(text[1:])
    try:
        wait_until(f"{text!r} is found", lambda: desktop.search_results() == list(expected))
    except AssertionError as error:
        raise AssertionError(f"{error}: {desktop.search_results()}") from None


def _choose_first(desktop):
    desktop.key("Return")
    wait_until("the overview is closed", lambda: not desktop.is_overview_open())


def _is_highlighted(kelpa, column, title):
    found = kelpa.board.column(column)
    todo = found and found.todo(title)
    return bool(todo) and todo.node.has_state(boards.Atspi.StateType.SELECTED)


@on_desktop(has_search=True)
def what_is_typed_in_the_overview_finds_goals_todos_and_windows_and_opens_them(desktop, binary):
    # Where a person has it: the bus knows only that one by the name that the Shell asks for.
    path = pathlib.Path(desktop.env["XDG_DATA_HOME"]) / "kelpa" / "kelpa.sqlite"
    path.parent.mkdir()
    many = [(f"Goal {number}", [f"Step {number}.{step}" for step in range(8)]) for number in range(20)]
    settings.write(path, goals=[*many, ("Quarterly taxes", ["Find receipts"])], is_auto_sorting=False)
    kelpa = Kelpa(desktop, binary, None, arguments=["--hidden"])
    kelpa.begin()
    wait_until("Kelpa listens", lambda: desktop.has_name("org.kelpa.Kelpa"))
    desktop.settle_search()

    _search(desktop, "quarterly", ["Quarterly taxes", "1 unfinished todo"])
    _choose_first(desktop)
    kelpa.window = wait_until("Kelpa's window is shown", kelpa.shown_window)
    kelpa.await_board()
    desktop.wait_for_active(kelpa.window)
    wait_until("the goal is selected", lambda: kelpa.board.selected_column() == "Quarterly taxes")

    _search(desktop, "step 17.6", ["Step 17.6", "Goal 17"])
    _choose_first(desktop)
    wait_until("its goal is selected", lambda: kelpa.board.selected_column() == "Goal 17")
    wait_until("the todo is highlighted", lambda: _is_highlighted(kelpa, "Goal 17", "Step 17.6"))

    desktop.start_foot("Letter to the bank")
    wait_until("Kelpa lists the window", lambda: "Letter to the bank" in desktop.run(binary, "windows"))
    desktop.activate(kelpa.window)
    desktop.wait_for_active(kelpa.window)
    _search(desktop, "letter bank", ["Letter to the bank", boards.UNSORTED])
    _choose_first(desktop)
    desktop.wait_for_active(desktop.wait_for_window("Letter to the bank"))

    # Where nothing is found, the Shell shows nothing of Kelpa.
    _search(desktop, "nowhere at all")
    desktop.key("Escape", "Escape")
    kelpa.quit()


@on_desktop(has_search=True)
def the_first_search_of_the_overview_starts_the_kelpa_that_does_not_run_once(desktop, binary):
    path = pathlib.Path(desktop.env["XDG_DATA_HOME"]) / "kelpa" / "kelpa.sqlite"
    path.parent.mkdir()
    settings.write(path, goals=(("Quarterly taxes", ["Find receipts"]),), is_auto_sorting=False)
    activation = Activation(desktop, binary)
    desktop.settle_search()
    assert not desktop.has_name("org.kelpa.Kelpa")
    _search(desktop, "quarterly", ["Quarterly taxes", "1 unfinished todo"])
    assert not [window for window in desktop.windows() if window.title == boards.WINDOW]
    _choose_first(desktop)
    shown = desktop.wait_for_window(boards.WINDOW)
    desktop.wait_for_active(shown)
    _search(desktop, "receipts", ["Find receipts", "Quarterly taxes"])
    assert activation.starts() == 1
    desktop.key("Escape", "Escape")
    await_end(desktop, shown.pid)
