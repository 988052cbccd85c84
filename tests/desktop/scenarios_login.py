"""The end of a login and the next one: the X server goes, another one comes, and programs are started
again. Windows that are certainly those of before are back in their goals by themselves; the others a
person opens again from the goals."""

import pathlib
import re
import time

import board as boards
import editor
import settings
from assistant import Assistant
from kelpa import Kelpa
from processes import wait_until

_GOALS = [("Taxes", []), ("Garden", []), ("Travel", [])]
_PLACES = {"Tax return": "Taxes", "Receipts 2024": "Taxes", "Seed list": "Garden",
           "Boarding pass": "Travel"}
# They tell nobody which one they are.
_ALIKE = "Meeting notes"


def _write(path):
    settings.write(path, goals=_GOALS, is_auto_sorting=False, is_unsorted_unfolded=True)


def _put(kelpa, title, goal):
    kelpa.wait_for_card(boards.UNSORTED, title)
    kelpa.drag_card(title, boards.UNSORTED, goal)
    kelpa.wait_for_card(goal, title)


def _work(desktop, kelpa):
    """Windows in three goals, two of which cannot be told apart."""
    for title, goal in (*_PLACES.items(), (_ALIKE, "Garden"), (_ALIKE, "Travel")):
        desktop.start_xterm(title)
        _put(kelpa, title, goal)


def _log_in_again(desktop, kelpa):
    """The X server ends with all its programs, and another one is there."""
    desktop.replace_x_server(kelpa.wait)
    assert not [window for window in desktop.windows() if window.title in _PLACES]


def _await_places(kelpa, titled):
    """Until each window is in its goal; prints how long after the times `titled` of its title that
    was seen."""
    def look():
        kelpa.check_alive()
        cards = kelpa.board.cards()
        for title, goal in _PLACES.items():
            if title not in placed and cards.get(title) == goal:
                placed[title] = time.monotonic()
        return len(placed) == len(_PLACES)

    placed = {}
    wait_until("the windows are in their goals", look)
    for title, at in placed.items():
        print(f"{title!r} was seen in its goal {at - titled[title]:.1f} s after its title")


def _check_others(kelpa):
    """What is not certain stays unsorted, and says where it may have been."""
    wait_until("both are unsorted", lambda: len(
        [card for card in kelpa.board.column(boards.UNSORTED).cards if card.title == _ALIKE]) == 2)
    wait_until("they are offered their goals", lambda: any(
        kelpa.board.has_text(f"Was in: {goals}") for goals in ("Garden, Travel", "Travel, Garden")))


def _undo(desktop, kelpa):
    kelpa.focus()
    wait_until("no goal has its windows by themselves any more", lambda: _undo_once(desktop, kelpa))


def _undo_once(desktop, kelpa):
    if set(kelpa.board.cards().values()) == {boards.UNSORTED}:
        return True
    # One step for each burst.
    desktop.key("ctrl+z")
    time.sleep(0.3)
    return False


def _start(desktop, *titles):
    """Starts terminals, and returns when each of them had its title."""
    titled = {}
    for title in titles:
        desktop.start_xterm(title)
        desktop.wait_for_window(title)
        titled[title] = time.monotonic()
    return titled


def after_a_new_login_windows_that_come_after_kelpa_find_their_goals(desktop, binary):
    path = desktop.directory / "board.sqlite"
    _write(path)
    with Kelpa(desktop, binary, path) as kelpa:
        _work(desktop, kelpa)
        _log_in_again(desktop, kelpa)
        kelpa.start()
        wait_until("each goal tells what it had", lambda: all(
            kelpa.board.column(goal).button("2 windows from last time") for goal, _ in _GOALS))
        titled = _start(desktop, *reversed(_PLACES), _ALIKE, _ALIKE, "Something new")
        _await_places(kelpa, titled)
        _check_others(kelpa)
        kelpa.wait_for_card(boards.UNSORTED, "Something new")
        _undo(desktop, kelpa)
        for title in (*_PLACES, "Something new"):
            kelpa.wait_for_card(boards.UNSORTED, title)


def after_a_new_login_windows_that_came_before_kelpa_find_their_goals(desktop, binary):
    path = desktop.directory / "board.sqlite"
    _write(path)
    with Kelpa(desktop, binary, path) as kelpa:
        _work(desktop, kelpa)
        _log_in_again(desktop, kelpa)
        _start(desktop, "Something new", _ALIKE, *reversed(_PLACES), _ALIKE)
        kelpa.launch()
        shown = time.monotonic()
        kelpa.await_board()
        # They had their titles before Kelpa was there to see them.
        _await_places(kelpa, dict.fromkeys(_PLACES, shown))
        _check_others(kelpa)
        kelpa.wait_for_card(boards.UNSORTED, "Something new")
        # The toast offers to take all of them back at once.
        kelpa.click(lambda: kelpa.board.button("Undo"), "the toast's button")
        wait_until("the windows are unsorted",
                   lambda: set(kelpa.board.cards().values()) == {boards.UNSORTED})
        kelpa.quit()
        kelpa.start()
        # A person has said no.
        for title in _PLACES:
            kelpa.wait_for_card(boards.UNSORTED, title)


def after_a_new_login_kelpa_may_start_in_the_middle_of_the_programs(desktop, binary):
    path = desktop.directory / "board.sqlite"
    _write(path)
    with Kelpa(desktop, binary, path) as kelpa:
        _work(desktop, kelpa)
        _log_in_again(desktop, kelpa)
        first, *others = reversed(_PLACES)
        _start(desktop, _ALIKE, first)
        kelpa.launch()
        titled = {first: time.monotonic()} | _start(desktop, *others, _ALIKE)
        kelpa.await_board()
        _await_places(kelpa, titled)
        _check_others(kelpa)
        # Started anew within the login, it has all of them, and mixes nothing up.
        before = kelpa.board.cards()
        kelpa.quit()
        kelpa.start()
        wait_until("the board is as it was", lambda: kelpa.board.cards() == before)


def _editor(desktop, document):
    entry = editor.install(desktop.env["XDG_DATA_HOME"])
    desktop.start("/usr/bin/python3", "-B", editor.__file__, document)
    desktop.wait_for_window(document.name)
    return entry


def after_a_new_login_an_editor_is_opened_again_with_its_document_and_a_terminal(desktop, binary):
    document = pathlib.Path(desktop.env["HOME"]) / "Seed list.txt"
    document.write_text("Beans\n", encoding="utf-8")
    path = desktop.directory / "board.sqlite"
    _write(path)
    title = f"{document.name} - {editor.NAME}"
    _editor(desktop, document)
    notes = pathlib.Path(desktop.env["HOME"]) / "notes.txt"
    notes.write_text("Passport\n", encoding="utf-8")
    desktop.start("mousepad", "--disable-server", notes)
    desktop.wait_for_window("notes.txt")
    desktop.start_xterm("Tax return")
    with Kelpa(desktop, binary, path) as kelpa:
        _put(kelpa, title, "Garden")
        mousepad = desktop.wait_for_window("notes.txt").title
        _put(kelpa, mousepad, "Travel")
        _put(kelpa, "Tax return", "Taxes")
        wait_until("the document is remembered",
                   lambda: b"Seed%20list.txt" in settings.read_live(path)["kelpa.windowMemory"])
        _log_in_again(desktop, kelpa)
        kelpa.start()
        assistant = Assistant(desktop, kelpa)
        for goal in ("Garden", "Travel", "Taxes"):
            assistant.press_button("1 window from last time", goal)
            assistant.press_button("Open again")
            wait_until(f"a window is in {goal}", lambda goal=goal: kelpa.board.column(goal).cards)
        # The editor shows its document again.
        kelpa.wait_for_card("Garden", title)
        wait_until("nothing is left to be opened",
                   lambda: not kelpa.board.has_text("1 window from last time"))
        cards = kelpa.board.cards()
        assert sorted(cards.values()) == ["Garden", "Taxes", "Travel"], cards


def what_is_gone_is_told_when_a_window_is_opened_again(desktop, binary):
    document = pathlib.Path(desktop.env["HOME"]) / "Seed list.txt"
    document.write_text("Beans\n", encoding="utf-8")
    path = desktop.directory / "board.sqlite"
    _write(path)
    title = f"{document.name} - {editor.NAME}"
    entry = _editor(desktop, document)
    desktop.start_xterm("Tax return")
    with Kelpa(desktop, binary, path) as kelpa:
        _put(kelpa, "Tax return", "Taxes")
        _put(kelpa, title, "Garden")
        wait_until("the document is remembered",
                   lambda: b"Seed%20list.txt" in settings.read_live(path)["kelpa.windowMemory"])
        _log_in_again(desktop, kelpa)
        document.unlink()
        kelpa.start()
        assistant = Assistant(desktop, kelpa)
        assistant.press_button("1 window from last time", "Garden")
        assistant.press_button("Open again")
        wait_until("the document is missed", lambda: kelpa.board.has_text(
            "“Seed list.txt” is gone; its application was opened without it"))
        kelpa.wait_for_card("Garden", f"Untitled - {editor.NAME}")
        desktop.close(desktop.wait_for_window("Untitled"))

        # A program may show what it was given in a window that is there, and end.
        entry.write_text(re.sub("Exec=.*", "Exec=/bin/true", entry.read_text(encoding="utf-8")),
                         encoding="utf-8")
        assistant.press_button("1 closed window", "Garden")
        assistant.press_button("Open again")
        wait_until("the window is missed", lambda: kelpa.board.has_text(
            f"“{editor.NAME}” has not opened a new window"))

        entry.unlink()
        assistant.press_button("Open again")
        wait_until("the application is missed", lambda: kelpa.board.has_text(
            f"“{editor.NAME}” is no longer installed"))
        assistant.press_button("Close")

        # A goal that goes takes along what it had; a window of it is a new one.
        assistant.press_button(boards.GOAL_ACTIONS, "Taxes")
        assistant.choose(boards.DELETE_GOAL)
        wait_until("the goal is gone", lambda: kelpa.board.column("Taxes") is None)
        desktop.start_xterm("Tax return")
        kelpa.wait_for_card(boards.UNSORTED, "Tax return")
        wait_until("nothing of it is on the disk", lambda: b"Tax return" not in settings.read_live(path)[
            "kelpa.windowMemory"])


def _retitle(desktop, window, title):
    desktop.run("xprop", "-id", window, "-f", "_NET_WM_NAME", "8u", "-set", "_NET_WM_NAME", title)


def windows_that_browse_in_private_are_not_on_the_disk(desktop, binary):
    def remembered():
        return settings.read_live(path)["kelpa.windowMemory"]

    path = desktop.directory / "board.sqlite"
    _write(path)
    private = "Weather - Chromium (Incognito)"
    turned = "Bank — Mozilla Firefox (Navigation privée)"
    desktop.open_window(private, 300, 200)
    bank = desktop.open_window("Bank", 300, 200)
    desktop.open_window("Recipes", 300, 200)
    with Kelpa(desktop, binary, path) as kelpa:
        _put(kelpa, private, "Taxes")
        _put(kelpa, "Bank", "Garden")
        _put(kelpa, "Recipes", "Travel")
        wait_until("what is not private is remembered",
                   lambda: b"Bank" in remembered() and b"Recipes" in remembered())
        assert b"Weather" not in remembered()
        _retitle(desktop, bank, turned)
        kelpa.wait_for_card("Garden", turned)
        wait_until("it is forgotten", lambda: b"Bank" not in remembered())
        # What it says later changes nothing.
        _retitle(desktop, bank, "Account")
        kelpa.wait_for_card("Garden", "Account")
        kelpa.quit()
        stored = settings.read(path)["kelpa.windowMemory"]
        assert b"Recipes" in stored, stored
        assert not [title for title in (b"Weather", b"Bank", b"Account") if title in stored], stored
