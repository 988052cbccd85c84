"""The board in everyday use: listing, assigning, ending and starting again."""

import pathlib

import board as boards
import settings
from kelpa import Kelpa
from processes import wait_until


def _titles(kelpa, column):
    """Titles of the column's cards, sorted."""
    found = kelpa.board.column(column)
    return sorted(card.title for card in found.cards) if found else []


def four_real_windows_are_cards_and_one_dragged_onto_a_goal_is_there_after_a_restart(desktop, binary):
    text = pathlib.Path(desktop.env["HOME"]) / "notes.txt"
    text.write_text("Some notes.\n", encoding="utf-8")
    desktop.start_xterm("First terminal")
    desktop.start_xterm("Second terminal")
    desktop.start("mousepad", "--disable-server", text)
    desktop.start("pcmanfm", "--no-desktop", "/usr/share")
    for title in ("First terminal", "Second terminal", "notes.txt", "share"):
        desktop.wait_for_window(title)
    titles = sorted(window.title for window in desktop.windows())
    path = desktop.directory / "board.sqlite"
    settings.write(path)

    with Kelpa(desktop, binary, path) as kelpa:
        wait_until("four cards are unsorted", lambda: _titles(kelpa, boards.UNSORTED) == titles)
        kelpa.create_goal("Ship the release")
        kelpa.drag_card("First terminal", boards.UNSORTED, "Ship the release")
        kelpa.wait_for_card("Ship the release", "First terminal")
        assert kelpa.board.card(boards.UNSORTED, "First terminal") is None
        kelpa.quit()
        stored = settings.StoredBoard(settings.read(path))
        assert stored.window_counts == {"Ship the release": 1}, stored
        kelpa.start()
        kelpa.wait_for_card("Ship the release", "First terminal")
        kelpa.wait_for_card(boards.UNSORTED, "Second terminal")
        assert kelpa.board.card(boards.UNSORTED, "First terminal") is None


def windows_elsewhere_minimised_and_maximised_with_one_title_are_all_listed(desktop, binary):
    names = ("Elsewhere", "Minimised", "Report", "Report")
    for name in names:
        desktop.start_xterm(name)
    wait_until("four windows are shown", lambda: len(desktop.windows()) == 4)
    number = {window.title: hex(window.number) for window in desktop.windows()}
    desktop.run("wmctrl", "-i", "-r", number["Elsewhere"], "-t", "1")
    desktop.run("xdotool", "windowminimize", int(number["Minimised"], 16))
    for window in desktop.windows():
        if window.title == "Report":
            desktop.run("wmctrl", "-i", "-r", hex(window.number), "-b", "add,maximized_vert,maximized_horz")

    def state(title, name):
        window = next(found for found in desktop.windows() if found.title == title)
        atoms = desktop.property(desktop.x.create_resource_object("window", window.number), "_NET_WM_STATE")
        return atoms is not None and desktop.x.intern_atom(name) in atoms

    wait_until("one is minimised", lambda: state("Minimised", "_NET_WM_STATE_HIDDEN"))
    wait_until("one is maximised", lambda: state("Report", "_NET_WM_STATE_MAXIMIZED_VERT"))
    path = desktop.directory / "board.sqlite"
    settings.write(path)
    with Kelpa(desktop, binary, path) as kelpa:
        wait_until("all four are cards", lambda: _titles(kelpa, boards.UNSORTED) == sorted(names))


def only_a_minimised_window_says_that_it_is_minimised(desktop, binary):
    # Their programs end with them: no picture of them is left from an earlier time.
    for name in ("Elsewhere", "Minimised"):
        desktop.start_xterm(name)
    number = {name: desktop.wait_for_window(name).number for name in ("Elsewhere", "Minimised")}
    desktop.run("wmctrl", "-i", "-r", hex(number["Elsewhere"]), "-t", "1")
    desktop.run("xdotool", "windowminimize", number["Minimised"])
    path = desktop.directory / "board.sqlite"
    settings.write(path)
    with Kelpa(desktop, binary, path) as kelpa:
        for _ in range(2):
            for name, message in (("Elsewhere", boards.CANNOT_BE_CAPTURED),
                                  ("Minimised", boards.MINIMISED)):
                kelpa.wait_for_card(boards.UNSORTED, name)
                wait_until(f"the card {name!r} says {message!r}",
                           lambda: _messages(kelpa, name) == [message])
            card = kelpa.board.card(boards.UNSORTED, "Elsewhere")
            assert not card.is_minimised, card.node.description
            kelpa.quit()
            kelpa.start()


def _messages(kelpa, title):
    """What the card of the window says in place of a picture."""
    try:
        card = kelpa.board.card(boards.UNSORTED, title)
        return card and card.messages
    except boards.Gone:
        return None


def two_applications_in_one_process_have_the_icon_of_each(desktop, binary):
    colors = {"Letter": (200, 30, 40), "Slides": (30, 60, 200)}
    data = pathlib.Path(desktop.env["XDG_DATA_HOME"])
    (data / "applications").mkdir()
    for title, color in colors.items():
        icon = data / f"{title}.png"
        desktop.run("convert", "-size", "64x64", f"xc:rgb{color}", f"PNG32:{icon}")
        (data / "applications" / f"org.example.{title}.desktop").write_text(
            f"[Desktop Entry]\nType=Application\nName=Office {title}\nExec=cat\n"
            f"Icon={icon}\nStartupWMClass=office-{title}\n", encoding="utf-8")
    # Both are windows of this process; the one opened last is in front.
    for title in colors:
        desktop.open_window(title, 300, 200, window_class=f"office-{title}")
    path = desktop.directory / "board.sqlite"
    settings.write(path)
    with Kelpa(desktop, binary, path) as kelpa:
        for title, color in colors.items():
            kelpa.wait_for_card(boards.UNSORTED, title)
            wait_until(f"the card {title!r} has the icon of its application",
                       lambda: _icon(desktop, kelpa, title) == color)
            assert kelpa.board.card(boards.UNSORTED, title).owner == f"Office {title}"


def _icon(desktop, kelpa, title):
    """The colour in the middle of the icon on the window's card, which is at the left below the
    picture."""
    try:
        card = kelpa.board.card(boards.UNSORTED, title)
        frame = card and card.node.frame()
    except boards.Gone:
        frame = None
    if not frame:
        return None
    left, top, _, height = frame
    blue, green, red = desktop.pixel(left + 20, top + height - 24)[:3]
    return red, green, blue


def a_window_with_a_recycled_number_of_the_x_server_starts_unsorted(desktop, binary):
    path = desktop.directory / "board.sqlite"
    settings.write(path, goals=[("Old work", [])])
    terminal = desktop.start_xterm("Old terminal")
    old = desktop.wait_for_window("Old terminal")
    with Kelpa(desktop, binary, path) as kelpa:
        kelpa.drag_card("Old terminal", boards.UNSORTED, "Old work")
        kelpa.wait_for_card("Old work", "Old terminal")
        for attempt in range(30):
            terminal.terminate()
            terminal.wait()
            wait_until("the terminal is gone", lambda: all(
                "terminal" not in window.title for window in desktop.windows()))
            title = f"New terminal {attempt}"
            terminal = desktop.start_xterm(title)
            if desktop.wait_for_window(title).number == old.number:
                break
        else:
            raise AssertionError("the X server gave no number a second time")
        kelpa.wait_for_card(boards.UNSORTED, title)
        assert kelpa.board.cards() == {title: boards.UNSORTED}


def buttons_can_be_pressed_through_the_accessibility_bus(desktop, binary):
    path = desktop.directory / "board.sqlite"
    settings.write(path, goals=[("Only goal", [])])
    with Kelpa(desktop, binary, path) as kelpa:
        wait_until("the new-goal button", lambda: kelpa.board.button(boards.NEW_GOAL)).press()
        wait_until("the new goal's title can be typed", kelpa.board.focused_field)
        desktop.key("Escape")
        wait_until("the sheet is closed", lambda: kelpa.board.button(boards.CREATE) is None)
        wait_until("the menu button", lambda: kelpa.board.button(boards.GOAL_ACTIONS)).press()
        wait_until("the menu", lambda: kelpa.board.menu_item(boards.DELETE_GOAL)).press()
        wait_until("the goal is gone", lambda: kelpa.board.goal_titles() == [])


def a_board_whose_file_cannot_be_written_runs_and_says_so(desktop, binary):
    in_the_way = desktop.directory / "a-file"
    in_the_way.write_text("not a folder", encoding="utf-8")
    desktop.open_xterms("Terminal")
    # Even the superuser cannot make a file below a file. Nothing can be stored beforehand either,
    # so the interface has its first language, and the cards are looked for wherever they are.
    with Kelpa(desktop, binary, in_the_way / "kelpa.sqlite") as kelpa:
        wait_until("the terminal has a card", lambda: "Terminal" in kelpa.board.cards())
        wait_until("the path is named on the error stream",
                   lambda: str(in_the_way) in kelpa.output())
        desktop.start_xterm("Later terminal")
        wait_until("a new terminal has a card", lambda: "Later terminal" in kelpa.board.cards())
        assert in_the_way.read_text(encoding="utf-8") == "not a folder"
