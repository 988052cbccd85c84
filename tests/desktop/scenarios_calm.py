"""A board at rest: what it shows, what only appears where it is wanted, and what stays in its place."""

import board as boards
import screen
import settings
from harness import on_desktop
from kelpa import Kelpa
from processes import wait_until
from selection import Selection

_LONG = "Prepare Friday’s proposal for the whole committee and everybody who is to hear of it"
_PINK = "#d33682"
_COUNT = "1 unfinished todo"


@on_desktop(size="1280x832x24")
def a_title_has_most_of_its_head_and_nothing_jumps_below_the_pointer(desktop, binary):
    path = desktop.directory / "board.sqlite"
    settings.write(path, goals=[(_LONG, ["Collect the figures"]), ("Home", [])], is_auto_sorting=False)
    with Kelpa(desktop, binary, path) as kelpa:
        kelpa.focus()
        # The columns are narrow in a window as wide as the screen, and wide in one of the default size.
        for is_maximised in (True, False):
            if not is_maximised:
                desktop.run("wmctrl", "-i", "-r", hex(kelpa.window.number), "-b",
                            "remove,maximized_vert,maximized_horz")
            column = _at_rest(kelpa, _LONG)
            head = column.frame()[0] + 8, column.frame()[1] + 8, column.frame()[2] - 16, 52
            title = _title_line(column, head)
            shown = screen.ink_width(desktop, title)
            assert shown >= 0.55 * head[2], f"{shown} of {head[2]} points"
            desktop.hover(*kelpa.head("Home"))
            places, picture = _controls(column), screen.rows(desktop, title)
            assert len(places) == 5, places
            for name, (x, y, width, height) in places.items():
                at_rest = screen.rows(desktop, (x, y, width, height))
                desktop.hover(x + width // 2, y + height // 2)
                if name != _COUNT:
                    wait_until(f"{name!r} is below the pointer", lambda frame=places[name], was=at_rest:
                               screen.rows(desktop, frame) != was)
                assert _controls(column) == places
                assert screen.rows(desktop, title) == picture


def _at_rest(kelpa, title):
    """The column's node, as soon as it has stopped moving."""
    kelpa.head(title)
    return kelpa.board.column(title).node


def _controls(column):
    """The frames of what stands in the head of a goal, by its name."""
    names = (boards.ADD_TODO, _COUNT, "Priority: P2", boards.ADD_WINDOWS, boards.GOAL_ACTIONS)
    return {node.name: node.frame() for node in column.each_named(lambda name: name in names)}


def _title_line(column, head):
    """The place of the title: beside its dot, up to the first control that stands in its line."""
    left, top, width, _ = head
    beside = [x for x, y, _, _ in _controls(column).values() if y < top + 4 + 18]
    right = min([left + width, *beside])
    return left + 22, top + 4, right - left - 22, 18


def a_card_has_its_buttons_only_where_they_are_wanted(desktop, binary):
    path = desktop.directory / "board.sqlite"
    settings.write(path, goals=[("Home", [])], is_auto_sorting=False)
    for title in ("First", "Second"):
        desktop.start_xterm(title, color=_PINK)
        desktop.wait_for_window(title)
    with Kelpa(desktop, binary, path) as kelpa:
        kelpa.focus()
        kelpa.wait_for_previews(boards.UNSORTED)
        places = {}
        for title in ("First", "Second"):
            kelpa.card_centre(boards.UNSORTED, title)
            card = kelpa.board.card(boards.UNSORTED, title).node
            # They are always there for who cannot see them.
            close, = card.find(boards.BUTTON_ROLES, lambda name: name == boards.CLOSE_PROCESS)
            menu, = card.find(boards.BUTTON_ROLES, lambda name: name == boards.MOVE_TO_GOAL)
            # Beside their symbols, where the picture of the window is below them.
            places[title] = ((close.frame()[0] + 5, close.frame()[1] + 13),
                             (menu.frame()[0] + menu.frame()[2] - 6, menu.frame()[1] + 13))

        def bare():
            return [title for title, corners in places.items()
                    if all(screen.has_color(desktop.pixel(*corner), _PINK) for corner in corners)]

        def covered():
            return [title for title, corners in places.items()
                    if not any(screen.has_color(desktop.pixel(*corner), _PINK) for corner in corners)]

        desktop.hover(*kelpa.head("Home"))
        wait_until("no card has buttons", lambda: bare() == ["First", "Second"])
        desktop.hover(*kelpa.card_centre(boards.UNSORTED, "First"))
        wait_until("the card below the pointer has them",
                   lambda: covered() == ["First"] and bare() == ["Second"])
        desktop.hover(*kelpa.head("Home"))
        wait_until("no card has buttons again", lambda: bare() == ["First", "Second"])
        selection = Selection(desktop, kelpa)
        selection.press("Right", "Right")
        selection.is_column(boards.UNSORTED)
        selection.press("space")
        chosen = wait_until("a card is chosen", kelpa.board.selected_card)
        wait_until("the chosen card has them", lambda: covered() == [chosen] and len(bare()) == 1)
        selection.press("Escape")
        wait_until("no card has buttons any more", lambda: bare() == ["First", "Second"])
        # The Tab key reaches them on the next card as well.
        for _ in range(40):
            desktop.key("Tab")
            if boards.CLOSE_PROCESS in kelpa.board.focused_names():
                break
        wait_until("who has the keyboard shows them", lambda: len(covered()) == 1 and len(bare()) == 1)


def beside_a_picture_is_nothing_but_the_card(desktop, binary):
    path = desktop.directory / "board.sqlite"
    settings.write(path)
    desktop.start_xterm("First", color=_PINK)
    with Kelpa(desktop, binary, path) as kelpa:
        kelpa.focus()
        kelpa.wait_for_card(boards.UNSORTED, "First")
        kelpa.card_centre(boards.UNSORTED, "First")
        card = kelpa.board.card(boards.UNSORTED, "First").node
        picture = next(card.each((boards.Atspi.Role.IMAGE,), lambda name: name == boards.PREVIEW)).frame()
        left, _, width, _ = card.frame()
        middle = picture[1] + picture[3] // 2
        before, after = picture[0] - left, left + width - picture[0] - picture[2]
        assert before >= 8 and after >= 8
        desktop.hover(*kelpa.head(boards.ALL_TODOS))

        def beside():
            """The colours on both sides of the picture, without the outline of the card."""
            line, = screen.rows(desktop, (left, middle, width, 1))
            return {*line[2:before], *line[width - after:-2]}

        wait_until("there is one colour beside the picture", lambda: len(beside()) == 1)
        assert screen.has_color(desktop.pixel(left + width // 2, middle), _PINK)


def what_is_not_selected_stays_in_its_column(desktop, binary):
    path = desktop.directory / "board.sqlite"
    goals = [(f"Goal {number}", [f"Todo {todo}" for todo in range(10)]) for number in range(12)]
    settings.write(path, goals=goals, is_auto_sorting=False)
    with Kelpa(desktop, binary, path) as kelpa:
        kelpa.focus()
        titles = [title for title, _ in goals]
        kelpa.head(titles[0])

        def frames():
            return {title: column.node.frame() for title in titles
                    if (column := kelpa.board.column(title)) is not None}

        def rest():
            """Where the goals are as soon as none moves."""
            before = None

            def look():
                nonlocal before
                before, last = frames(), before
                return before if before == last else None

            return wait_until("no goal moves", look, pause=0.3)

        before = rest()
        assert len({left for left, _, _, _ in before.values()}) >= 4
        for title in titles[:7]:
            desktop.click(*kelpa.head(title))
            wait_until("the goal is chosen", lambda title=title: kelpa.board.selected_column() == title)
            now = rest()
            assert now[title][3] > before[title][3], "it shows more"
            moved = [each for each in now if now[each][0] != before[each][0]]
            assert not moved, f"{title} moves {moved}"


def free_space_is_used_before_anything_fades(desktop, binary):
    path = desktop.directory / "board.sqlite"
    todos = [f"Todo {number}" for number in range(12)]
    settings.write(path, goals=[("Home", todos), ("Work", todos)], is_auto_sorting=False)
    with Kelpa(desktop, binary, path) as kelpa:
        kelpa.focus()
        for title in ("Home", "Work"):
            kelpa.head(title)
            column = kelpa.board.column(title)
            _, top, _, height = column.node.frame()
            last = column.todo(todos[-1]).node.frame()
            assert last[1] + last[3] <= top + height
            # The empty place for windows is below it.
            assert height > 12 * 34 + 92, height
        # With more goals than the screen has room for, each shows its beginning.
        for number in range(12):
            kelpa.create_goal(f"Goal {number}")
        desktop.key("Left")
        wait_until("a goal that is not selected shows less",
                   lambda: kelpa.board.column("Work").node.frame()[3] == 292)


def the_rail_shows_more_below_the_pointer_and_the_board_stays(desktop, binary):
    path = desktop.directory / "board.sqlite"
    settings.write(path, goals=[(_LONG, []), ("Home", [])], is_auto_sorting=False)
    with Kelpa(desktop, binary, path) as kelpa:
        kelpa.focus()
        place = kelpa.centre(lambda: kelpa.board.rail_entry(_LONG), "the entry of the rail")

        def entry():
            return kelpa.board.rail_entry(_LONG).frame()

        def columns():
            return {title: kelpa.board.column(title).node.frame()
                    for title in (boards.ALL_TODOS, _LONG, "Home", boards.UNSORTED)}

        desktop.hover(*kelpa.head("Home"))
        narrow, board = entry(), columns()
        desktop.hover(*place)
        wait_until("the rail shows more letters", lambda: entry()[2] >= 2 * narrow[2])
        assert columns() == board
        # What it covers below its entries can be reached.
        desktop.hover(narrow[0] + narrow[2] + 30, place[1])
        desktop.hover(narrow[0] + narrow[2] + 30, place[1] + 200)
        wait_until("the rail is as it was", lambda: entry() == narrow)
        desktop.hover(*place)
        wait_until("the rail shows more letters", lambda: entry()[2] >= 2 * narrow[2])
        desktop.hover(*kelpa.head("Home"))
        wait_until("the rail is as it was", lambda: entry() == narrow)
        assert columns() == board


def the_rail_goes_back_when_a_drag_onto_it_has_ended(desktop, binary):
    path = desktop.directory / "board.sqlite"
    settings.write(path, goals=[(_LONG, []), ("Home", [])], is_auto_sorting=False)
    desktop.open_xterms("First", "Second")
    with Kelpa(desktop, binary, path) as kelpa:
        kelpa.focus()
        place = kelpa.centre(lambda: kelpa.board.rail_entry(_LONG), "the entry of the rail")

        def entry():
            return kelpa.board.rail_entry(_LONG).frame()

        desktop.hover(*kelpa.head("Home"))
        narrow = entry()
        # Dropped on the part that has grown, which covers the board.
        desktop.drag_over(kelpa.card_centre(boards.UNSORTED, "First"), place)
        wait_until("the rail shows more letters", lambda: entry()[2] >= 2 * narrow[2])
        desktop.run("xdotool", "mousemove", narrow[0] + narrow[2] + 60, place[1])
        desktop.let_go()
        kelpa.wait_for_card(_LONG, "First")
        wait_until("the rail is as it was", lambda: entry() == narrow)
        # Dropped where the rail itself is: there the pointer rests on it.
        desktop.drag_over(kelpa.card_centre(boards.UNSORTED, "Second"), place)
        wait_until("the rail shows more letters", lambda: entry()[2] >= 2 * narrow[2])
        desktop.let_go()
        kelpa.wait_for_card(_LONG, "Second")
        desktop.hover(place[0] + 2, place[1])
        wait_until("the rail shows more letters again", lambda: entry()[2] >= 2 * narrow[2])
        desktop.hover(*kelpa.head("Home"))
        wait_until("the rail is narrow again", lambda: entry() == narrow)


def a_todo_is_highlighted_while_its_menu_is_open(desktop, binary):
    path = desktop.directory / "board.sqlite"
    settings.write(path, goals=[("Home", ["Sweep", "Wash"])], is_auto_sorting=False)
    with Kelpa(desktop, binary, path) as kelpa:
        kelpa.focus()
        place = kelpa.centre(*kelpa.todo_node("Home", "Sweep"))
        x, y, _, height = kelpa.board.column("Home").todo("Sweep").node.frame()
        edge = x + 4, y + height // 2
        other = edge[0], edge[1] + height
        desktop.hover(*kelpa.head(boards.ALL_TODOS))
        at_rest = desktop.pixel(*other)
        wait_until("no row is highlighted", lambda: desktop.pixel(*edge) == at_rest)
        desktop.click(*place, button=3)
        desktop.hover(*kelpa.centre(lambda: kelpa.board.menu_item(boards.DELETE_TODO), "an entry"))
        wait_until("the row stays highlighted", lambda: desktop.pixel(*edge) != at_rest)
        assert desktop.pixel(*other) == at_rest
        desktop.key("Escape")
        desktop.hover(*kelpa.head(boards.ALL_TODOS))
        wait_until("no row is highlighted any more", lambda: desktop.pixel(*edge) == at_rest)


def a_card_names_the_file_at_the_end_of_a_long_path(desktop, binary):
    path = desktop.directory / "board.sqlite"
    settings.write(path)
    folder = "/home/anna/Documents/2026/Taxes and insurance"
    titles = f"{folder}/letter.txt", "…/letter.txt", f"{folder}/report.txt"
    for place, title in enumerate(titles):
        number = desktop.open_window(f"Document {place}", 300, 200)
        desktop.run("wmctrl", "-i", "-r", hex(number), "-T", title)
        wait_until("the window has its title", lambda number=number, title=title:
                   any(window.number == number and window.title == title for window in desktop.windows()))
    with Kelpa(desktop, binary, path) as kelpa:
        kelpa.focus()
        desktop.hover(*kelpa.head(boards.ALL_TODOS))

        def caption(title):
            """How wide the letters are that stand for the title."""
            kelpa.wait_for_card(boards.UNSORTED, title)
            kelpa.centre(lambda: kelpa.board.card(boards.UNSORTED, title).node, title)
            x, y, width, height = kelpa.board.card(boards.UNSORTED, title).node.frame()
            return screen.ink_width(desktop, (x + 39, y + height - 40, width - 48, 16))

        letter, short, report = map(caption, titles)
        assert abs(letter - short) <= 1, (letter, short)
        assert report - letter >= 4, (letter, report)
