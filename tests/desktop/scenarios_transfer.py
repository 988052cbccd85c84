"""Exports and imports from the menus, by the keyboard, with the desktop's file dialog and without."""

import json
import pathlib

import board as boards
import settings
from disks import Disk
from kelpa import Kelpa
from processes import wait_until

_PORTAL = pathlib.Path(__file__).parent / "support" / "file_portal.py"
_GOALS = [("Taxes", ["Receipts", "Letter"]), ("Garden", ["Dig"])]
_STORED = {"Taxes": ["Letter", "Receipts"], "Garden": ["Dig"]}


def _stored(path):
    board = settings.StoredBoard(settings.read_live(path))
    return {title: sorted(todo for todo, _ in board.todos(title)) for title in _goal_titles(path)}


def _goal_titles(path):
    return settings.StoredBoard(settings.read_live(path)).goal_titles


def _open(desktop, kelpa, entry, button):
    # On the ground beside the cards.
    desktop.click(1500, 800, button=3)
    kelpa.click(lambda: kelpa.board.menu_item(entry), "the board's menu")
    if button:
        wait_until(f"the sheet offers {button}", lambda: kelpa.board.button(button))


def _is_closed(kelpa):
    return not kelpa.board.button("Cancel")


class _FilePortal:
    def __init__(self, desktop):
        self._answer = desktop.directory / "answer"
        self._calls = desktop.directory / "calls"
        self.choose("")
        self._calls.write_text("", encoding="utf-8")
        desktop.start("/usr/bin/python3", _PORTAL, self._answer, self._calls)
        wait_until("the portal is there", lambda: "org.freedesktop.portal.Desktop" in desktop.run(
            "dbus-send", "--session", "--print-reply", "--dest=org.freedesktop.DBus", "/",
            "org.freedesktop.DBus.ListNames"))

    def choose(self, path):
        self._answer.write_text(str(path), encoding="utf-8")

    def calls(self):
        return [json.loads(line) for line in self._calls.read_text(encoding="utf-8").splitlines()]


def a_board_goes_to_a_file_and_comes_back_through_the_desktops_dialog(desktop, binary):
    portal = _FilePortal(desktop)
    path = desktop.directory / "board.sqlite"
    target = desktop.directory / "Tasks & all.md"
    settings.write(path, goals=_GOALS, is_auto_sorting=False)
    with Kelpa(desktop, binary, settings=path) as kelpa:
        kelpa.focus()
        portal.choose(target)
        _open(desktop, kelpa, "Export…", "Export")
        desktop.screenshot(desktop.directory / "export.png")
        desktop.key("Down")
        desktop.key("Return")
        wait_until("the file is there", target.exists)
        wait_until("the sheet is closed", lambda: _is_closed(kelpa))
        wait_until("it is said", lambda: kelpa.board.has_text("Exported"))
        text = target.read_text(encoding="utf-8")
        assert "# Taxes" in text and "- [ ] Receipts" in text, text
        (method, parent, title, name, shown), = portal.calls()
        assert (method, title, name, shown) == ("SaveFile", "Export", "Kelpa.md", "Markdown"), \
            portal.calls()
        assert parent.startswith("x11:"), parent

        _open(desktop, kelpa, "Import…", "Add to the board")
        wait_until("the preview says how much",
                   lambda: kelpa.board.has_text("Goals: 2 · Todos: 3 · Unfinished todos: 3"))
        assert _stored(path) == _STORED, "a preview changes nothing"
        desktop.screenshot(desktop.directory / "import.png")
        desktop.key("Return")
        wait_until("all is there twice", lambda: len(_goal_titles(path)) == 4)
        wait_until("the sheet is closed", lambda: _is_closed(kelpa))
        wait_until("undoing is offered", lambda: kelpa.board.button("Undo")).press()
        wait_until("the board is as it was", lambda: _stored(path) == _STORED)

        portal.choose("")
        _open(desktop, kelpa, "Import…", None)
        wait_until("the dialog was asked for", lambda: len(portal.calls()) == 3)
        assert portal.calls()[-1][4] == "Files that Kelpa reads", portal.calls()
        wait_until("cancelling it closes the sheet", lambda: _is_closed(kelpa))
        assert _stored(path) == _STORED


def on_a_disk_that_hangs_an_export_keeps_nobody_waiting_and_leaves_no_half_file(desktop, binary):
    portal = _FilePortal(desktop)
    path = desktop.directory / "board.sqlite"
    folder = desktop.directory / "exports"
    folder.mkdir()
    target = folder / "board.json"
    settings.write(path, goals=_GOALS, is_auto_sorting=False)
    disk = Disk(desktop, binary)
    with Kelpa(desktop, binary, settings=path, env=disk.env) as kelpa:
        kelpa.focus()
        disk.hang()
        portal.choose(target)
        _open(desktop, kelpa, "Export…", "Export")
        desktop.key("Return")
        wait_until("it says what it does", lambda: kelpa.board.has_text("Writing the file…"))
        assert not list(folder.iterdir()), "a file is there whole or not at all"
        desktop.key("Escape")
        wait_until("the sheet is closed", lambda: _is_closed(kelpa))
        kelpa.click(*kelpa.column_button("Garden", boards.ADD_TODO))
        wait_until("a todo can be typed", kelpa.board.focused_field)
        desktop.type("Weed")
        desktop.key("Return")
        wait_until("the board goes on", lambda: kelpa.board.has_text("Weed"))
        assert not list(folder.iterdir())
        disk.recover()
        wait_until("the file is there", target.exists)
        wait_until("it is said", lambda: kelpa.board.has_text("Exported"))
        goals = json.loads(target.read_text(encoding="utf-8"))["goals"]
        assert [goal["title"] for goal in goals] == ["Taxes", "Garden"], goals
        assert "Weed" not in target.read_text(encoding="utf-8"), "the board when it was asked for"

        # Who ends it meanwhile has the file of before, and nothing beside it.
        before = target.read_bytes()
        disk.hang()
        _open(desktop, kelpa, "Export…", "Export")
        desktop.key("Return")
        wait_until("it says what it does", lambda: kelpa.board.has_text("Writing the file…"))
        kelpa.kill()
        assert list(folder.iterdir()) == [target] and target.read_bytes() == before


def on_a_disk_that_hangs_an_import_waits_beside_a_board_that_goes_on(desktop, binary):
    portal = _FilePortal(desktop)
    path = desktop.directory / "board.sqlite"
    listed = desktop.directory / "list.md"
    listed.write_text("# Errands\n\n- [ ] Milk\n", encoding="utf-8")
    settings.write(path, goals=_GOALS, is_auto_sorting=False)
    disk = Disk(desktop, binary)
    with Kelpa(desktop, binary, settings=path, env=disk.env) as kelpa:
        kelpa.focus()
        disk.hang()
        kelpa.click(*kelpa.column_button("Garden", boards.ADD_TODO))
        wait_until("a todo can be typed", kelpa.board.focused_field)
        desktop.type("Weed")
        desktop.key("Return")
        wait_until("it is on the board", lambda: kelpa.board.has_text("Weed"))
        portal.choose(listed)
        _open(desktop, kelpa, "Import…", "Add to the board")
        desktop.key("Return")
        wait_until("it says that it saves",
                   lambda: kelpa.board.has_text("Saving the board’s changes first…"))
        desktop.key("Escape")
        wait_until("the sheet is closed", lambda: _is_closed(kelpa))
        _open(desktop, kelpa, "Import…", "Add to the board")
        desktop.key("Return")
        wait_until("it says that it saves",
                   lambda: kelpa.board.has_text("Saving the board’s changes first…"))
        disk.recover()
        wait_until("it is imported", lambda: kelpa.board.has_text("Imported"))
        wait_until("once", lambda: _stored(path) == {
            "Taxes": ["Letter", "Receipts"], "Garden": ["Dig", "Weed"], "Errands": ["Milk"]})


def without_a_file_dialog_the_path_is_typed(desktop, binary):
    path = desktop.directory / "board.sqlite"
    target = desktop.directory / "board.json"
    settings.write(path, goals=_GOALS, is_auto_sorting=False)
    with Kelpa(desktop, binary, settings=path) as kelpa:
        kelpa.focus()
        _open(desktop, kelpa, "Export…", "Export")
        desktop.key("Return")
        wait_until("a path can be typed", kelpa.board.focused_field)
        desktop.type(str(target))
        desktop.screenshot(desktop.directory / "path.png")
        desktop.key("Return")
        wait_until("the file is there", target.exists)
        wait_until("the sheet is closed", lambda: _is_closed(kelpa))

        _open(desktop, kelpa, "Import…", None)
        wait_until("a path can be typed", kelpa.board.focused_field)
        desktop.type(str(desktop.directory / "missing"))
        desktop.key("Return")
        wait_until("it is said", lambda: kelpa.board.has_text(
            "The file does not exist or cannot be read."))
        desktop.key("ctrl+a")
        desktop.type(str(target))
        desktop.key("Return")
        wait_until("it is read", lambda: kelpa.board.button("Add to the board"))
        desktop.key("Return")
        wait_until("the sheet is closed", lambda: _is_closed(kelpa))
        wait_until("all is there twice", lambda: len(_goal_titles(path)) == 4)
