"""What is dragged by mouse within the board, through the X server."""

import board as boards
import settings
from harness import on_desktop
from kelpa import Kelpa
from processes import wait_until
from selection import Selection


def cards_go_to_goals_and_back_and_only_where_they_are_taken(desktop, binary):
    path = desktop.directory / "board.sqlite"
    settings.write(path, goals=[("Home", ["Water the plants"]), ("Work", [])], is_auto_sorting=False)
    desktop.open_xterms("First", "Second")
    with Kelpa(desktop, binary, path) as kelpa:
        kelpa.focus()

        def places(**cards):
            wait_until(f"the cards are {cards}", lambda: kelpa.board.cards() == cards)

        places(First=boards.UNSORTED, Second=boards.UNSORTED)
        kelpa.drag_card("First", boards.UNSORTED, "Home")
        places(First="Home", Second=boards.UNSORTED)
        kelpa.drag_card("First", "Home", "Work")
        places(First="Work", Second=boards.UNSORTED)
        kelpa.drag_card("First", "Work", boards.UNSORTED)
        places(First=boards.UNSORTED, Second=boards.UNSORTED)

        # The list of all todos and a todo's row take no windows.
        before = settings.read_live(path)
        start = kelpa.card_centre(boards.UNSORTED, "Second")
        desktop.drag(start, kelpa.head(boards.ALL_TODOS))
        start = kelpa.card_centre(boards.UNSORTED, "Second")
        desktop.drag(start, kelpa.centre(*kelpa.todo_node(boards.ALL_TODOS, "Water the plants")))
        # Neither does the area beside the board.
        start = kelpa.card_centre(boards.UNSORTED, "Second")
        desktop.drag(start, (start[0], kelpa.centre(
            lambda: kelpa.board.button(boards.NEW_GOAL), "the header")[1]))
        places(First=boards.UNSORTED, Second=boards.UNSORTED)
        assert settings.read_live(path) == before

        # A goal that would take the card shows it while the card is above it, and no longer.
        ground = kelpa.ground("Work")
        at_rest = desktop.pixel(*ground)
        start = kelpa.card_centre(boards.UNSORTED, "First")
        desktop.drag_over(start, kelpa.head("Work"))
        wait_until("the goal shows that it would take the card",
                   lambda: desktop.pixel(*ground) != at_rest)
        desktop.run("xdotool", "mousemove", *kelpa.head(boards.ALL_TODOS))
        wait_until("the goal is as it was", lambda: desktop.pixel(*ground) == at_rest)
        # Escape gives the card up, wherever it is let go.
        desktop.run("xdotool", "mousemove", *kelpa.head("Work"))
        wait_until("the goal shows it again", lambda: desktop.pixel(*ground) != at_rest)
        desktop.key("Escape")
        wait_until("the goal expects nothing", lambda: desktop.pixel(*ground) == at_rest)
        desktop.let_go()
        places(First=boards.UNSORTED, Second=boards.UNSORTED)
        assert settings.read_live(path) == before

        # The picture of the dragged item is under the pointer, even where nothing accepts it.
        place = kelpa.head(boards.ALL_TODOS)
        beside = place[0] + 30, place[1] + 16
        at_rest = desktop.pixel(*beside)
        desktop.drag_over(kelpa.card_centre(boards.UNSORTED, "First"), place)
        wait_until("a picture of the card is under the pointer",
                   lambda: desktop.pixel(*beside) != at_rest)
        desktop.let_go()
        wait_until("the picture is gone", lambda: desktop.pixel(*beside) == at_rest)


def a_sorted_goal_that_escape_gives_up_is_not_explained(desktop, binary):
    path = desktop.directory / "board.sqlite"
    settings.write(path, goals=[("One", []), ("Two", []), ("Three", [])])
    with Kelpa(desktop, binary, path) as kelpa:
        kelpa.focus()
        kelpa.wait_for_goals("One", "Two", "Three")

        def explains():
            return kelpa.board.button("Stop sorting") is not None

        desktop.drag_over(kelpa.head("Three"), kelpa.head("One"))
        wait_until("a drag has begun", desktop.is_dragging)
        desktop.key("Escape")
        wait_until("the drag has ended", lambda: not desktop.is_dragging())
        desktop.let_go()
        # It would be said before a click that comes after the drag is answered.
        desktop.click(*kelpa.head("Two"))
        Selection(desktop, kelpa).is_column("Two")
        assert not explains()
        desktop.drag(kelpa.head("Three"), kelpa.head("One"))
        wait_until("it says why", explains)
        kelpa.wait_for_goals("One", "Two", "Three")


def goals_change_places_by_mouse(desktop, binary):
    path = desktop.directory / "board.sqlite"
    settings.write(path, goals=[("One", []), ("Two", []), ("Three", [])], is_auto_sorting=False)
    with Kelpa(desktop, binary, path) as kelpa:
        kelpa.focus()

        kelpa.wait_for_goals("One", "Two", "Three")
        desktop.drag(kelpa.head("Three"), kelpa.head("One"))
        kelpa.wait_for_goals("Three", "One", "Two")
        # The goal is inserted before the one that it is dropped on.
        desktop.drag(kelpa.head("Three"), kelpa.head("Two"))
        kelpa.wait_for_goals("One", "Three", "Two")
        # Neither the unsorted column nor the list of all todos is a goal.
        desktop.drag(kelpa.head("Two"), kelpa.head(boards.UNSORTED))
        desktop.drag(kelpa.head("Two"), kelpa.head(boards.ALL_TODOS))
        desktop.pull(kelpa.head(boards.UNSORTED), kelpa.head("One"))
        kelpa.wait_for_goals("One", "Three", "Two")
        kelpa.check_stored(path)
        # Goals that are sorted cannot be moved by hand: they are refused where they are dropped.
        kelpa.click(lambda: kelpa.board.choice(boards.AUTO_SORT), "auto-sort")
        wait_until("the goals are sorted",
                   lambda: settings.read_live(path).get("kelpa.autoSortingGoals") == 1)
        sorted_goals = kelpa.board.goal_titles()
        desktop.drag(kelpa.head(sorted_goals[2]), kelpa.head(sorted_goals[0]))
        wait_until("it says why", lambda: kelpa.board.button("Stop sorting")).press()
        wait_until("the goals have their own order",
                   lambda: settings.read_live(path).get("kelpa.autoSortingGoals") == 0)
        kelpa.wait_for_goals(*sorted_goals)
        desktop.drag(kelpa.head(sorted_goals[2]), kelpa.head(sorted_goals[0]))
        kelpa.wait_for_goals(sorted_goals[2], *sorted_goals[:2])


def _records(path):
    """What a drag may change of the board."""
    values = settings.read_live(path)
    return {key: values.get(key) for key in ("kelpa.goals", "kelpa.unassignedTodos",
                                             "kelpa.windowAssignments")}


def _row(kelpa, column, title):
    """Of a todo's row: where it is held, and a place of its upper edge that the picture of a row that
    is held there leaves free when the pointer rests on the third, in the right half."""
    find, what = kelpa.todo_node(column, title)
    kelpa.centre(find, what)
    x, y, width, height = find().frame()
    return (x + 50, y + height // 2), (x + 80, y + 1), (x + width // 2 + 10, y + height // 2)


def _gap_before(kelpa, goal):
    """The middle of the gap to the left of a goal's card."""
    kelpa.ground(goal)
    x, y, _, height = kelpa.board.column(goal).node.frame()
    return x - 11, y + height // 2


def what_is_dragged_shows_where_it_would_go_and_escape_gives_it_up(desktop, binary):
    path = desktop.directory / "board.sqlite"
    settings.write(path, goals=[("Home", ["One", "Two", "Three"]), ("Work", ["Four"]), ("Rest", [])],
                   is_auto_sorting=False)
    with Kelpa(desktop, binary, path) as kelpa:
        kelpa.focus()
        before = _records(path)
        home, work = kelpa.ground("Home"), kelpa.ground("Work")
        gap = _gap_before(kelpa, "Work")
        at_rest, no_line = desktop.pixel(*work), desktop.pixel(*gap)
        assert desktop.pixel(*home) == at_rest

        def begins():
            wait_until("a drag has begun", desktop.is_dragging, seconds=10)

        def escape():
            desktop.key("Escape")
            wait_until("the drag is given up", lambda: not desktop.is_dragging())
            desktop.let_go()
            # An item below the pointer looks different.
            desktop.hover(*kelpa.head(boards.ALL_TODOS))
            assert _records(path) == before

        # A goal over another one.
        desktop.drag_over(kelpa.head("Rest"), kelpa.head("Work"))
        begins()
        wait_until("a line shows where the goal would stand", lambda: desktop.pixel(*gap) != no_line)
        assert desktop.pixel(*home) == at_rest
        assert desktop.pixel(*work) == at_rest
        escape()
        wait_until("the line is gone", lambda: desktop.pixel(*gap) == no_line)

        # A todo over the card of another goal.
        held, line, aside = _row(kelpa, "Home", "One")
        desktop.drag_over(_row(kelpa, "Home", "Three")[0], kelpa.head("Work"))
        begins()
        wait_until("the goal shows that it would take the todo", lambda: desktop.pixel(*work) != at_rest)
        escape()
        wait_until("the goal is as it was", lambda: desktop.pixel(*work) == at_rest)

        # Over a row of its own goal a line shows where the todo would be inserted.
        bare = desktop.pixel(*line)
        desktop.drag_over(_row(kelpa, "Home", "Three")[0], aside)
        begins()
        wait_until("a line shows where the todo would stand", lambda: desktop.pixel(*line) != bare)
        assert desktop.pixel(*home) == at_rest
        escape()
        wait_until("the line is gone", lambda: desktop.pixel(*line) == bare)

        # A row of another goal shows none, and its goal does not take it in the row's stead.
        _, other_line, other_aside = _row(kelpa, "Work", "Four")
        other_bare = desktop.pixel(*other_line)
        desktop.drag_over(_row(kelpa, "Home", "Three")[0], aside)
        begins()
        wait_until("the line shows again", lambda: desktop.pixel(*line) != bare)
        desktop.move_through(kelpa.head("Rest"), other_aside)
        wait_until("the line is gone", lambda: desktop.pixel(*line) == bare)
        wait_until("the goal between is as it was",
                   lambda: desktop.pixel(*kelpa.ground("Rest")) == at_rest)
        assert desktop.is_dragging()
        assert desktop.pixel(*other_line) == other_bare
        assert desktop.pixel(*work) == at_rest
        desktop.let_go()
        wait_until("the drag has ended", lambda: not desktop.is_dragging())

        # The same gestures without Escape, where they are taken; so nothing was left behind.
        desktop.drag(_row(kelpa, "Home", "Three")[0], aside)
        kelpa.wait_for_todos("Home", [(title, boards.TODO) for title in ("Three", "One", "Two")])
        kelpa.wait_for_todos("Work", [("Four", boards.TODO)])
        desktop.drag(_row(kelpa, "Home", "Two")[0], kelpa.head("Work"))
        kelpa.wait_for_todos("Work", [(title, boards.TODO) for title in ("Two", "Four")])
        desktop.drag(kelpa.head("Rest"), kelpa.head("Work"))
        wait_until("the goals change places",
                   lambda: kelpa.board.goal_titles() == ["Home", "Rest", "Work"])
        kelpa.check_stored(path)


@on_desktop(size="1280x800x24")
def a_drag_at_the_edge_of_the_board_scrolls_to_what_is_beyond(desktop, binary):
    path = desktop.directory / "board.sqlite"
    goals = [f"Goal {number}" for number in range(16)]
    settings.write(path, goals=[(goal, ["One", "Two"]) for goal in goals], is_auto_sorting=False)
    with Kelpa(desktop, binary, path) as kelpa:
        kelpa.focus()
        wait_until("the board is there", lambda: kelpa.board.column("Goal 0"))
        board = kelpa.board.column("Goal 0").node.board_around()
        x, y, width, height = board.frame()
        assert kelpa.board.column("Goal 15") is None

        def is_in_view(goal):
            """Whether the head of the goal is in the inner part of the board."""
            try:
                column = kelpa.board.column(goal)
                return column and y + 30 < column.node.frame()[1] + 28 < y + height - 60
            except boards.Gone:
                return False

        desktop.drag_over(kelpa.head("Goal 0"), (x + width // 2, y + height - 4))
        wait_until("a drag has begun", desktop.is_dragging, seconds=10)
        wait_until("the last goal is in view", lambda: is_in_view("Goal 15"))
        # Away from the edge the board stays where it is.
        desktop.hover(x + width // 2, y + height // 2)
        desktop.move_through(kelpa.head("Goal 15"))
        desktop.let_go()
        wait_until("the goal stands before the last", lambda: settings.StoredBoard(
            settings.read_live(path)).goal_titles == [*goals[1:15], "Goal 0", "Goal 15"])

        # And back again at the upper edge.
        desktop.drag_over(kelpa.head("Goal 0"), (x + width // 2, y + 3))
        wait_until("a drag has begun", desktop.is_dragging, seconds=10)
        wait_until("the first goal is in view", lambda: is_in_view("Goal 1"))
        desktop.key("Escape")
        wait_until("the drag is given up", lambda: not desktop.is_dragging())
        desktop.let_go()
        kelpa.quit()
        assert settings.StoredBoard(settings.read(path)).goal_titles == [*goals[1:15], "Goal 0", "Goal 15"]


def todos_and_goals_are_dragged_to_the_end(desktop, binary):
    path = desktop.directory / "board.sqlite"
    settings.write(path, goals=[("Home", ["One", "Two", "Three"]), ("Work", ["Four"]), ("Rest", [])],
                   is_auto_sorting=False)
    with Kelpa(desktop, binary, path) as kelpa:
        kelpa.focus()

        def todos(*titles):
            kelpa.wait_for_todos("Home", [(title, boards.TODO) for title in titles])

        def end_of(title):
            """The lower edge of the row, and a place in its lower half."""
            find, what = kelpa.todo_node("Home", title)
            kelpa.centre(find, what)
            x, y, _, height = find().frame()
            return (x + 80, y + height - 1), (x + 120, y + height - 8)

        # On the lower half of the last row, a line below it shows the place.
        line, place = end_of("Three")
        bare = desktop.pixel(*line)
        desktop.drag_over(_row(kelpa, "Home", "One")[0], place)
        wait_until("a line shows the end", lambda: desktop.pixel(*line) != bare)
        # On the upper half it would be inserted before that row.
        desktop.move_through((place[0], place[1] - 18))
        wait_until("a line shows the place before the row",
                   lambda: desktop.pixel(line[0], line[1] - 33) != bare)
        desktop.move_through(place)
        desktop.let_go()
        todos("Two", "Three", "One")

        # Below the last row, too.
        place = end_of("One")[1]
        desktop.drag(_row(kelpa, "Home", "Three")[0], (place[0], place[1] + 40))
        todos("Two", "One", "Three")
        # A todo of another goal that is let go there goes to the goal.
        desktop.drag(_row(kelpa, "Work", "Four")[0], (place[0], place[1] + 40))
        wait_until("the todo is in its new goal", lambda: len(kelpa.board.todos("Home")) == 4)
        assert not kelpa.board.todos("Work")

        # A goal comes to the end on the last card, which lights up.
        adding = kelpa.centre(lambda: kelpa.board.button("Add goal"), "the card for another goal")
        corner = adding[0] - 120, adding[1] - 40
        at_rest = desktop.pixel(*corner)
        desktop.drag_over(kelpa.head("Home"), adding)
        wait_until("the last card lights up", lambda: desktop.pixel(*corner) != at_rest)
        desktop.let_go()
        wait_until("the goal is the last",
                   lambda: kelpa.board.goal_titles() == ["Work", "Rest", "Home"])
        kelpa.check_stored(path)


def the_rail_takes_what_is_dragged_onto_it(desktop, binary):
    path = desktop.directory / "board.sqlite"
    settings.write(path, goals=[("Home", ["One"]), ("Work", []), ("Rest", [])], is_auto_sorting=False)
    desktop.open_xterms("Notes")
    with Kelpa(desktop, binary, path) as kelpa:
        kelpa.focus()

        def entry(goal):
            return kelpa.centre(lambda: kelpa.board.rail_entry(goal), f"the entry of {goal}")

        # The entry shows that it would take the window, which then goes to its goal.
        place = entry("Work")
        edge = place[0] - 40, place[1] + 8
        at_rest = desktop.pixel(*edge)
        desktop.drag_over(kelpa.card_centre(boards.UNSORTED, "Notes"), place)
        wait_until("the entry lights up", lambda: desktop.pixel(*edge) != at_rest)
        desktop.let_go()
        wait_until("the window is in the goal", lambda: kelpa.board.cards() == {"Notes": "Work"})
        # A todo, too.
        desktop.drag(_row(kelpa, "Home", "One")[0], entry("Rest"))
        kelpa.wait_for_todos("Rest", [("One", boards.TODO)])
        # A goal is inserted before that of the entry.
        desktop.drag(kelpa.head("Rest"), entry("Home"))
        wait_until("the goal is the first",
                   lambda: kelpa.board.goal_titles() == ["Rest", "Home", "Work"])
        kelpa.check_stored(path)
