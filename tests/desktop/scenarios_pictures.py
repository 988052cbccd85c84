"""How the board looks in its main states, in light and in dark."""

import contextlib
import os
import pathlib
import signal

import board as boards
import file_manager
import settings
from disks import Disk
from harness import on_desktop
from kelpa import Kelpa
from pictures import Pictures
from processes import wait_until

_PORTAL = pathlib.Path(__file__).parent / "support" / "portal.py"
_SIZE = (1280, 800)
_GOALS = [("Ship release 0.1", ["Write the release notes", "Build the package", "Tell the testers"]),
          ("Prepare Friday’s proposal for the whole committee", ["Collect the figures"]),
          ("Learn Japanese", ["日本語の本を読む", "قراءة الكتاب"])]
_PROGRAMS = [("Notes", "#fdf6e3"), ("Build log", "#002b36"), ("Figures", "#eee8d5"),
             ("Mail", "#268bd2")]


class _SchemePictures:
    """Compares the screen with two references: one for the light colour scheme, and one for the dark
    one, to which the desktop switches while the program runs."""

    def __init__(self, desktop, size=_SIZE, scale=1, portal_options=()):
        self._desktop = desktop
        self._corner = size[0] - 1, size[1] - 1
        desktop.env["QT_QUICK_BACKEND"] = "software"
        desktop.env["QT_SCALE_FACTOR"] = str(scale)
        self._portal = desktop.start("/usr/bin/python3", _PORTAL, *portal_options)
        wait_until("the portal is there", self._has_portal)
        self._pictures = Pictures(desktop)

    def match(self, name):
        # Nothing below the pointer shows that it could be pressed.
        self._desktop.hover(*self._corner)
        self.match_while(name, lambda: None, lambda: None)

    def match_light(self, name, size):
        """One reference, scaled to `size`, for a screen whose pictures are very large."""
        self._desktop.hover(*self._corner)
        self._pictures.shows(name, "light", size)

    def match_while(self, name, begin, end):
        """Compares between `begin` and `end`, which are called for each scheme."""
        begin()
        self._pictures.shows(name, "light")
        end()
        light = self._ground()
        os.kill(self._portal.pid, signal.SIGUSR1)
        wait_until("it is dark", lambda: self._ground() != light)
        begin()
        self._pictures.shows(name, "dark")
        end()
        os.kill(self._portal.pid, signal.SIGUSR2)
        wait_until("it is light", lambda: self._ground() == light)

    def _ground(self):
        return self._desktop.pixel(*self._corner)

    def _has_portal(self):
        return "org.freedesktop.portal.Desktop" in self._desktop.run(
            "dbus-send", "--session", "--print-reply", "--dest=org.freedesktop.DBus", "/",
            "org.freedesktop.DBus.ListNames")


def _write_board(path, language="en", goals=_GOALS):
    settings.write(path, language=language, goals=goals, is_auto_sorting=False)


@contextlib.contextmanager
def _board_with_windows(desktop, binary, goals=_GOALS, size=_SIZE, scale=1, portal_options=()):
    """Kelpa beside some windows, all of which have a preview, and the pictures of this screen."""
    path = desktop.directory / "board.sqlite"
    _write_board(path, goals=goals)
    for title, color in _PROGRAMS:
        desktop.start_xterm(title, color=color)
        desktop.wait_for_window(title)
    pictures = _SchemePictures(desktop, size, scale, portal_options)
    with Kelpa(desktop, binary, path) as kelpa:
        kelpa.focus()
        kelpa.wait_for_previews(boards.UNSORTED)
        yield kelpa, pictures


def _choose_language(kelpa, name, is_spoken):
    kelpa.board.button("Language").press()
    wait_until("the menu is open", lambda: kelpa.board.menu_item(name)).press()
    wait_until(f"the board speaks {name}", is_spoken)


@on_desktop(size="1280x800x24")
def the_board_looks_as_it_did(desktop, binary):
    with _board_with_windows(desktop, binary) as (kelpa, pictures):
        pictures.match("board")
        kelpa.drag_card("Notes", boards.UNSORTED, "Ship release 0.1")
        kelpa.drag_card("Figures", boards.UNSORTED, "Ship release 0.1")
        kelpa.click(*kelpa.todo_button("Ship release 0.1", "Write the release notes"))
        desktop.click(*kelpa.head("Ship release 0.1"))
        wait_until("the goal is chosen", lambda: kelpa.board.selected_column() == "Ship release 0.1")
        desktop.key("space")
        wait_until("a card is chosen", kelpa.board.selected_card)
        pictures.match("card-chosen")
        kelpa.open_goal_menu("Ship release 0.1", boards.DELETE_GOAL)
        pictures.match("goal-menu")
        desktop.key("Escape")
        kelpa.open_sheet("Learn Japanese")
        kelpa.click(lambda: kelpa.board.choice("XTerm: Mail"), "a window in the sheet")
        pictures.match("window-sheet")


@on_desktop(size="1280x800x24")
def the_board_in_high_contrast_looks_as_it_did(desktop, binary):
    with _board_with_windows(desktop, binary, portal_options=["--high-contrast"]) as (kelpa, pictures):
        kelpa.drag_card("Notes", boards.UNSORTED, "Ship release 0.1")
        kelpa.click(*kelpa.todo_button("Ship release 0.1", "Write the release notes"))
        kelpa.open_sheet("Learn Japanese")
        kelpa.click(lambda: kelpa.board.choice("XTerm: Mail"), "a window in the sheet")
        pictures.match("high-contrast-sheet")
        desktop.key("Escape")
        desktop.click(*kelpa.head("Ship release 0.1"))
        wait_until("the goal is chosen", lambda: kelpa.board.selected_column() == "Ship release 0.1")
        pictures.match("high-contrast")


@on_desktop(size="1280x800x24")
def an_empty_board_and_its_sheet_look_as_they_did(desktop, binary):
    path = desktop.directory / "board.sqlite"
    settings.write(path)
    pictures = _SchemePictures(desktop)
    with Kelpa(desktop, binary, path) as kelpa:
        kelpa.focus()
        pictures.match("empty")
        kelpa.type_new_goal("Learn to sail")
        pictures.match("goal-sheet")
        desktop.key("Return")
        wait_until("the goal is there", lambda: kelpa.board.column("Learn to sail"))
        kelpa.open_goal_menu("Learn to sail", boards.DELETE_GOAL)()
        wait_until("the goal is gone", lambda: not kelpa.board.goal_titles())
        pictures.match("goal-deleted")


@on_desktop(size="900x641x24")
def a_first_board_in_german_and_japanese_and_its_menu_look_as_they_did(desktop, binary):
    for title, color in _PROGRAMS[:2]:
        desktop.start_xterm(title, color=color)
        desktop.wait_for_window(title)
    pictures = _SchemePictures(desktop, (900, 641))
    for language, locale, offer, new_goal, shortcuts in (
            ("de", "de_DE", "Auf Deutsch fortfahren", "Neues Ziel", "Tastenkürzel"),
            ("ja", "ja_JP", "日本語で続ける", "新規目標", "キーボードショートカット")):
        path = desktop.directory / f"{language}.sqlite"
        env = {"LC_ALL": f"{locale}.UTF-8", "LANGUAGE": language}
        with Kelpa(desktop, binary, path, env=env) as kelpa:
            kelpa.focus()
            wait_until("the language is offered", lambda offer=offer: kelpa.board.button(offer)).press()
            wait_until("the board speaks it", lambda new_goal=new_goal: kelpa.board.button(new_goal))
            # The first goal can be typed; the board has a menu of its own.
            wait_until("a title can be typed", kelpa.board.focused_field)
            desktop.key("Escape")
            wait_until("the board has the keys", lambda: not kelpa.board.focused_field())
            pictures.match(f"first-board-{language}")
            desktop.key("Menu")
            wait_until("the menu is open",
                       lambda shortcuts=shortcuts: kelpa.board.menu_item(shortcuts))
            pictures.match(f"board-menu-{language}")
            desktop.key("Escape")
            wait_until("the menu is closed",
                       lambda shortcuts=shortcuts: not kelpa.board.menu_item(shortcuts))
            desktop.key("F1")
            wait_until("the keys are shown", lambda shortcuts=shortcuts: kelpa.board.has_text(shortcuts))
            pictures.match(f"keys-{language}")
            desktop.key("Escape")


@on_desktop(size="900x641x24", missing_extension="Composite")
def the_smallest_board_in_german_with_its_banner_looks_as_it_did(desktop, binary):
    path = desktop.directory / "board.sqlite"
    _write_board(path, language="de")
    pictures = _SchemePictures(desktop, (900, 641))
    with Kelpa(desktop, binary, path) as kelpa:
        kelpa.focus()
        wait_until("the board is there", lambda: kelpa.board.column("Unsortiert"))
        pictures.match("german-small")


@on_desktop(size="900x641x24")
def trouble_with_the_file_in_german_and_japanese_looks_as_it_did(desktop, binary):
    disk = Disk(desktop, binary)
    file_manager.install(desktop)
    pictures = _SchemePictures(desktop, (900, 641))
    for language, sort, trouble in (
            ("de", "Ziele nach Priorität und Aufgaben sortieren", "Der Datenträger ist voll"),
            ("ja", "優先度とタスク数で目標を自動並べ替え", "ディスクの空き容量がありません")):
        path = desktop.directory / f"{language}.sqlite"
        _write_board(path, language=language)
        with Kelpa(desktop, binary, path, env=disk.env) as kelpa:
            kelpa.focus()
            disk.fill()
            wait_until("goals can be sorted", lambda: kelpa.board.choice(sort)).press()
            wait_until("the board says it", lambda: kelpa.board.has_text(trouble))
            pictures.match(f"trouble-{language}")
            if language == "de":
                desktop.close(kelpa.window)
                wait_until("the board asks", lambda: kelpa.board.button("Trotzdem schließen"))
                pictures.match("closing-question")
                desktop.key("Escape")
            disk.make_room()


@on_desktop(size="2560x1600x24")
def the_board_in_japanese_at_twice_the_size_looks_as_it_did(desktop, binary):
    with _board_with_windows(desktop, binary, size=(2560, 1600), scale=2) as (kelpa, pictures):
        _choose_language(kelpa, "日本語", lambda: kelpa.board.column("すべてのタスク"))
        pictures.match("japanese-2x")


@on_desktop(size="1280x800x24")
def menus_and_a_goal_that_takes_a_card_look_as_they_did(desktop, binary):
    with _board_with_windows(desktop, binary) as (kelpa, pictures):
        kelpa.open_move_menu("Build log", boards.UNSORTED, "Learn Japanese")
        pictures.match("window-menu")
        desktop.key("Escape")
        wait_until("the menu is closed", lambda: kelpa.board.menu_item("Learn Japanese") is None)
        column = kelpa.board.column("Learn Japanese").node
        column.find(boards.BUTTON_ROLES, lambda name: name == "Priority: P2")[0].press()
        wait_until("the menu is open", lambda: kelpa.board.menu_item("P0"))
        pictures.match("priority-menu")
        desktop.key("Escape")
        wait_until("the menu is closed", lambda: kelpa.board.menu_item("P0") is None)
        entry = kelpa.centre(lambda: kelpa.board.rail_entry("Learn Japanese"), "the entry of the rail")

        def begin(target):
            # What floats below the pointer is a picture of the card as it was when the drag began.
            desktop.drag_over(kelpa.card_centre(boards.UNSORTED, "Notes"), target)
            wait_until("a drag has begun", desktop.is_dragging)

        def end():
            desktop.key("Escape")
            wait_until("the drag is given up", lambda: not desktop.is_dragging())
            desktop.let_go()

        pictures.match_while("card-dragged", lambda: begin(kelpa.head("Learn Japanese")), end)
        pictures.match_while("card-over-rail", lambda: begin(entry), end)


@on_desktop(size="1280x800x24")
def todos_and_goals_that_are_written_look_as_they_did(desktop, binary):
    path = desktop.directory / "board.sqlite"
    _write_board(path)
    pictures = _SchemePictures(desktop)
    with Kelpa(desktop, binary, path) as kelpa:
        kelpa.focus()
        kelpa.click(*kelpa.todo_node("Ship release 0.1", "Build the package"))
        wait_until("the title can be typed", kelpa.board.focused_field)
        pictures.match("todo-edited")
        desktop.key("Escape")
        wait_until("nothing is typed", lambda: not kelpa.board.focused_field())
        kelpa.click(lambda: next(iter(kelpa.board.column("Learn Japanese").node.find(
            boards.BUTTON_ROLES, lambda name: name == boards.ADD_TODO)), None), "the button for a todo")
        wait_until("a todo can be typed", kelpa.board.focused_field)
        pictures.match("todo-added")
        desktop.key("Escape")
        wait_until("nothing is typed", lambda: not kelpa.board.focused_field())
        kelpa.open_goal_menu("Ship release 0.1", "Rename goal")()
        wait_until("the title can be typed", kelpa.board.focused_field)
        pictures.match("rename-sheet")
        desktop.key("Escape")


_LONG = "Everything that has to be thought of before the committee meets on Friday afternoon"
_RIGHT_TO_LEFT = "تحضير كل ما يجب التفكير فيه قبل اجتماع اللجنة بعد ظهر يوم الجمعة القادم"


@on_desktop(size="1280x800x24")
def long_titles_and_those_from_right_to_left_look_as_they_did(desktop, binary):
    path = desktop.directory / "board.sqlite"
    settings.write(path, is_auto_sorting=False,
                   goals=[(_RIGHT_TO_LEFT, [_RIGHT_TO_LEFT, "שלום", _LONG, "ab" * 60]), (_LONG, [_LONG])])
    for name, color, title in (("First", "#eee8d5", _RIGHT_TO_LEFT), ("Second", "#002b36", _LONG)):
        desktop.start_xterm(name, color=color)
        # A terminal cannot be told such a title when it starts.
        desktop.run("wmctrl", "-i", "-r", hex(desktop.wait_for_window(name).number), "-T", title)
        desktop.wait_for_window(title)
    pictures = _SchemePictures(desktop)
    with Kelpa(desktop, binary, path) as kelpa:
        kelpa.focus()
        for title in (_RIGHT_TO_LEFT, _LONG):
            kelpa.open_move_menu(title, boards.UNSORTED, _RIGHT_TO_LEFT)()
            kelpa.wait_for_card(_RIGHT_TO_LEFT, title)
        kelpa.wait_for_previews(_RIGHT_TO_LEFT)
        desktop.click(*kelpa.head(_RIGHT_TO_LEFT))
        wait_until("the goal is chosen", lambda: kelpa.board.selected_column() == _RIGHT_TO_LEFT)
        pictures.match("long-titles")


@on_desktop(size="1920x1200x24")
def the_board_in_french_at_one_and_a_half_times_the_size_looks_as_it_did(desktop, binary):
    with _board_with_windows(desktop, binary, size=(1920, 1200), scale=1.5) as (kelpa, pictures):
        _choose_language(kelpa, "Français", lambda: kelpa.board.button("Nouvel objectif"))
        pictures.match("french-1.5x")


@on_desktop(size="3840x2160x24")
def the_board_on_a_very_large_screen_looks_as_it_did(desktop, binary):
    goals = [*_GOALS, *((f"Goal {number}", ["Begin", "Go on", "End"]) for number in range(24))]
    with _board_with_windows(desktop, binary, goals, size=(3840, 2160)) as (kelpa, pictures):
        pictures.match_light("very-large", "25%")


@on_desktop(size="1280x800x24")
def a_board_of_many_windows_and_goals_looks_as_it_did(desktop, binary):
    path = desktop.directory / "board.sqlite"
    goals = [(f"Goal {number}", ["Begin", "Go on"]) for number in range(12)]
    _write_board(path, goals=goals)
    for number in range(30):
        desktop.start_xterm(f"Window {number:02}", color=_PROGRAMS[number % len(_PROGRAMS)][1])
        desktop.wait_for_window(f"Window {number:02}")
    pictures = _SchemePictures(desktop)
    with Kelpa(desktop, binary, path) as kelpa:
        kelpa.focus()
        wait_until("the windows are folded", lambda: kelpa.board.button("Show 26 more"))
        kelpa.wait_for_previews(boards.UNSORTED)
        pictures.match("many-windows")
        desktop.type("window 1")
        wait_until("it says what it found",
                   lambda: kelpa.board.has_text("Found: windows 10, goals 0, todos 0"))
        desktop.key("Return")
        wait_until("a card is chosen", kelpa.board.selected_card)
        kelpa.wait_for_previews(boards.UNSORTED)
        pictures.match("searched")


def _remember(path):
    """Windows that two goals had, one of which may be back."""
    settings.remember(path, ("Notes", "Ship release 0.1"), ("Packages", "Ship release 0.1"),
                      ("Mail", _GOALS[1][0]), ("Mail", "Learn Japanese"))


@on_desktop(size="1280x800x24")
def windows_that_goals_had_look_as_they_did(desktop, binary):
    path = desktop.directory / "board.sqlite"
    _write_board(path)
    _remember(path)
    for title, color in _PROGRAMS:
        desktop.start_xterm(title, color=color)
        desktop.wait_for_window(title)
    pictures = _SchemePictures(desktop)
    with Kelpa(desktop, binary, path) as kelpa:
        kelpa.focus()
        kelpa.wait_for_previews(boards.UNSORTED)
        wait_until("a card names its goal", lambda: kelpa.board.has_text("Was in: Ship release 0.1"))
        pictures.match("remembered-board")
        kelpa.click(*kelpa.column_button("Ship release 0.1", "2 windows from last time"))
        wait_until("the list is open", lambda: kelpa.board.button("Open all again"))
        pictures.match("remembered-list")


@on_desktop(size="900x641x24")
def windows_that_goals_had_in_german_and_japanese_look_as_they_did(desktop, binary):
    for title, color in _PROGRAMS[:2]:
        desktop.start_xterm(title, color=color)
        desktop.wait_for_window(title)
    pictures = _SchemePictures(desktop, (900, 641))
    for language, was_in, line, close in (
            ("de", "War in: Ship release 0.1", "2 Fenster vom letzten Mal", "Schließen"),
            ("ja", "以前の目標：Ship release 0.1", "前回のウィンドウ2個", "閉じる")):
        path = desktop.directory / f"{language}.sqlite"
        _write_board(path, language=language)
        _remember(path)
        with Kelpa(desktop, binary, path) as kelpa:
            kelpa.focus()
            wait_until("a card names its goal", lambda was_in=was_in: kelpa.board.has_text(was_in))
            pictures.match(f"remembered-board-{language}")
            wait_until("the goal's line", lambda line=line: kelpa.board.button(line)).press()
            wait_until("the list is open", lambda close=close: kelpa.board.button(close))
            pictures.match(f"remembered-list-{language}")


@on_desktop(size="1280x800x24")
def cards_of_windows_elsewhere_and_a_goal_among_twelve_look_as_they_did(desktop, binary):
    goals = [(f"Goal {number}", [f"Step {step}" for step in range(number * 5 % 9)]) for number in range(1, 13)]
    with _board_with_windows(desktop, binary, goals=goals) as (kelpa, pictures):
        number = desktop.wait_for_window("Mail").number
        desktop.run("wmctrl", "-i", "-r", hex(number), "-t", "1")
        desktop.open_dialog("Save changes?", desktop.wait_for_window("Figures").number)
        kelpa.focus()
        kelpa.wait_for_previews(boards.UNSORTED)
        for title, mark in (("Mail", "On desktop"), ("Figures", "A dialog waits")):
            wait_until(f"{title!r} has its mark", lambda title=title, mark=mark: mark in (
                kelpa.board.card(boards.UNSORTED, title).node.description))
        desktop.click(*kelpa.head("Goal 1"))
        wait_until("the goal is chosen", lambda: kelpa.board.selected_column() == "Goal 1")
        pictures.match("cards-marked")
