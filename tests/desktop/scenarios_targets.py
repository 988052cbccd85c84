"""What shows during a drag: under the pointer, and where it could be let go."""

import board as boards
import settings
from kelpa import Kelpa
from processes import wait_until


def only_what_a_drop_would_change_lights_up_and_what_is_refused_says_so(desktop, binary):
    path = desktop.directory / "board.sqlite"
    settings.write(path, goals=[("Home", ["One", "Two"]), ("Work", ["Three"])], is_auto_sorting=False)
    desktop.open_xterms("Terminal")
    with Kelpa(desktop, binary, path) as kelpa:
        kelpa.focus()

        def row(column, title):
            return kelpa.centre(*kelpa.todo_node(column, title))

        def over(*place):
            """Moves on within what is below the pointer, as a hand does: every move counts."""
            for step in (0, 1, 2, 0):
                desktop.run("xdotool", "mousemove", place[0] + step, place[1], "sleep", "0.1")

        def says(what, image):
            wait_until(f"the pointer says that it {what}", lambda: desktop.pointer() == image)

        grounds = {title: kelpa.ground(title) for title in (boards.UNSORTED, "Home", "Work")}
        at_rest = {title: desktop.pixel(*place) for title, place in grounds.items()}

        def lit():
            return [title for title, place in grounds.items() if desktop.pixel(*place) != at_rest[title]]

        kelpa.wait_for_card(boards.UNSORTED, "Terminal")
        desktop.drag_over(kelpa.card_centre(boards.UNSORTED, "Terminal"), kelpa.head("Work"))
        wait_until("the goal lights up", lambda: lit() == ["Work"])
        taken = desktop.pointer()
        over(*kelpa.head(boards.ALL_TODOS))
        wait_until("the goal is as it was", lambda: not lit())
        wait_until("the pointer says something else", lambda: desktop.pointer() != taken)
        refused = desktop.pointer()
        # Where the window is already it is taken, without a promise.
        over(*kelpa.head(boards.UNSORTED))
        says("is taken", taken)
        assert not lit()
        desktop.let_go()
        kelpa.wait_for_card(boards.UNSORTED, "Terminal")

        # The first goal is before the second already.
        desktop.drag_over(kelpa.head("Home"), kelpa.head("Work"))
        says("is taken", taken)
        assert not lit()
        desktop.let_go()

        # A row of another goal refuses a todo, however long the pointer is above it.
        desktop.drag_over(row("Home", "One"), row("Work", "Three"))
        over(*row("Work", "Three"))
        says("is refused", refused)
        over(*kelpa.head("Work"))
        says("is taken", taken)
        assert lit() == ["Work"]
        desktop.key("Escape")
        desktop.let_go()


def goals_are_dragged_by_all_of_their_card_and_sorted_ones_are_refused(desktop, binary):
    path = desktop.directory / "board.sqlite"
    settings.write(path, goals=[("One", []), ("Two", []), ("Three", [])], is_auto_sorting=False)
    with Kelpa(desktop, binary, path) as kelpa:
        kelpa.focus()

        kelpa.wait_for_goals("One", "Two", "Three")
        desktop.drag(kelpa.ground("Three"), kelpa.head("One"))
        kelpa.wait_for_goals("Three", "One", "Two")
        desktop.drag_over(kelpa.ground("Two"), kelpa.head("One"))
        taken = desktop.pointer()
        desktop.key("Escape")
        desktop.let_go()
        kelpa.wait_for_goals("Three", "One", "Two")

        kelpa.click(lambda: kelpa.board.choice(boards.AUTO_SORT), "auto-sort")
        wait_until("the goals are sorted",
                   lambda: settings.read_live(path).get("kelpa.autoSortingGoals") == 1)
        at_rest = desktop.pointer()
        sorted_goals = kelpa.board.goal_titles()
        desktop.drag_over(kelpa.head(sorted_goals[2]), kelpa.head(sorted_goals[0]))
        assert desktop.pointer() not in (taken, at_rest)
        desktop.let_go()
        assert kelpa.board.goal_titles() == sorted_goals
