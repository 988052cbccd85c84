"""What is dragged by mouse within the board, through the X server."""

import time

import board as boards
import settings
from kelpa import Kelpa
from processes import wait_until


def cards_go_to_goals_and_back_and_only_where_they_are_taken(desktop, binary):
    path = desktop.directory / "board.sqlite"
    settings.write(path, goals=[("Home", ["Water the plants"]), ("Work", [])], is_auto_sorting=False)
    for title in ("First", "Second"):
        desktop.start_xterm(title)
        desktop.wait_for_window(title)
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
        # Nor does what is beside the board.
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

        # What is dragged is seen under the pointer, also where nothing takes it.
        place = kelpa.head(boards.ALL_TODOS)
        beside = place[0] + 30, place[1] + 16
        at_rest = desktop.pixel(*beside)
        desktop.drag_over(kelpa.card_centre(boards.UNSORTED, "First"), place)
        wait_until("a picture of the card is under the pointer",
                   lambda: desktop.pixel(*beside) != at_rest)
        desktop.let_go()
        wait_until("the picture is gone", lambda: desktop.pixel(*beside) == at_rest)


def goals_change_places_by_mouse(desktop, binary):
    path = desktop.directory / "board.sqlite"
    settings.write(path, goals=[("One", []), ("Two", []), ("Three", [])], is_auto_sorting=False)
    with Kelpa(desktop, binary, path) as kelpa:
        kelpa.focus()

        def order(*titles):
            wait_until(f"the goals are {titles}", lambda: tuple(kelpa.board.goal_titles()) == titles)

        order("One", "Two", "Three")
        desktop.drag(kelpa.head("Three"), kelpa.head("One"))
        order("Three", "One", "Two")
        # It comes to stand before the one that it is dropped on.
        desktop.drag(kelpa.head("Three"), kelpa.head("Two"))
        order("One", "Three", "Two")
        # Neither what is unsorted nor the list of all todos is a goal.
        desktop.drag(kelpa.head("Two"), kelpa.head(boards.UNSORTED))
        desktop.drag(kelpa.head("Two"), kelpa.head(boards.ALL_TODOS))
        desktop.drag(kelpa.head(boards.UNSORTED), kelpa.head("One"))
        order("One", "Three", "Two")
        kelpa.check_stored(path)
        # Goals that are sorted cannot be moved by hand.
        kelpa.click(lambda: kelpa.board.choice(boards.AUTO_SORT), "auto-sort")
        wait_until("the goals are sorted",
                   lambda: settings.read_live(path).get("kelpa.autoSortingGoals") == 1)
        sorted_goals = kelpa.board.goal_titles()
        desktop.drag(kelpa.head(sorted_goals[2]), kelpa.head(sorted_goals[0]))
        time.sleep(0.3)
        assert kelpa.board.goal_titles() == sorted_goals
