"""Backups: made by the running program, restored from the command line."""

import subprocess

import board as boards
import settings
from kelpa import Kelpa
from processes import wait_until

_GOAL = "Taxes"


def _run(desktop, binary, path, *options):
    return subprocess.run([str(binary), "--settings", str(path), *options], env=desktop.env,
                          capture_output=True, text=True, timeout=60, check=False)


def _names(desktop, binary, path):
    listed = _run(desktop, binary, path, "--list-backups")
    assert listed.returncode == 0 and not listed.stderr, listed
    return [line.split()[0] for line in listed.stdout.splitlines()
            if not line.startswith("There is no backup")]


def _todos(path):
    return [title for title, _ in settings.StoredBoard(settings.read_live(path)).todos(_GOAL)]


def _add_todo(desktop, kelpa, title):
    kelpa.focus()
    kelpa.click(*kelpa.column_button(_GOAL, boards.ADD_TODO))
    wait_until("a todo can be typed", kelpa.board.focused_field)
    desktop.type(title)
    desktop.key("Return")


def the_board_before_todays_first_change_comes_back_from_the_command_line(desktop, binary):
    path = desktop.directory / "board.sqlite"
    settings.write(path, goals=[(_GOAL, ["Receipts"])], is_auto_sorting=False)
    assert not _names(desktop, binary, path)
    with Kelpa(desktop, binary, settings=path) as kelpa:
        _add_todo(desktop, kelpa, "Letter")
        wait_until("the todo is stored", lambda: len(_todos(path)) == 2)
        wait_until("the board before is kept", lambda: len(_names(desktop, binary, path)) == 1)
        _add_todo(desktop, kelpa, "Form")
        wait_until("the second one is stored", lambda: len(_todos(path)) == 3)
        name, = _names(desktop, binary, path)

        refused = _run(desktop, binary, path, "--restore", name)
        assert refused.returncode == 1 and "Kelpa runs with the board" in refused.stderr, refused
        assert len(_todos(path)) == 3
    restored = _run(desktop, binary, path, "--restore", name)
    assert restored.returncode == 0 and "goals: 1, open todos: 1" in restored.stdout, restored
    assert _todos(path) == ["Receipts"]
    with Kelpa(desktop, binary, settings=path) as kelpa:
        wait_until("the board is as it was", lambda: kelpa.board.has_text("Receipts"))
        assert not kelpa.board.has_text("Form")
    before, = set(_names(desktop, binary, path)) - {name}
    assert _run(desktop, binary, path, "--restore", before).returncode == 0
    assert sorted(_todos(path)) == ["Form", "Letter", "Receipts"]

    unknown = _run(desktop, binary, path, "--restore", "2001-01-01T000000Z")
    assert unknown.returncode == 1 and "there is no backup" in unknown.stderr, unknown


def _listed(kelpa, beginning="Goals: "):
    """What the sheet says of each backup; empty while it is closed."""
    try:
        return [node.description for node, _depth in kelpa.board.walk()
                if node.description.startswith(beginning)]
    except boards.Gone:
        return []


def _open_sheet(desktop, kelpa, expected):
    # On the ground beside the cards.
    desktop.click(1500, 800, button=3)
    kelpa.click(lambda: kelpa.board.menu_item("Restore a backup…"), "the board's menu")
    wait_until("the backups are listed", lambda: _listed(kelpa) == expected)
    desktop.screenshot(desktop.directory / f"sheet-{len(expected)}.png")


def who_is_told_of_a_damaged_file_can_restore_a_backup_there(desktop, binary):
    path = desktop.directory / "board.sqlite"
    settings.write(path, goals=[(_GOAL, ["Receipts"])], is_auto_sorting=False)
    with Kelpa(desktop, binary, settings=path) as kelpa:
        _add_todo(desktop, kelpa, "Letter")
        wait_until("the todo is stored", lambda: len(_todos(path)) == 2)
        wait_until("the board before is kept", lambda: len(_names(desktop, binary, path)) == 1)
    path.write_bytes(b"This is no database. " * 1000)
    with Kelpa(desktop, binary, settings=path) as kelpa:
        # A new board, and so in Chinese.
        kelpa.click(lambda: kelpa.board.button("恢复备份…"), "the button of the banner")
        wait_until("the backup is listed", lambda: _listed(kelpa, "目标："))
        desktop.key("Return")
        wait_until("the board is back", lambda: kelpa.board.has_text("Receipts"))


def a_backup_is_restored_from_the_menu_by_the_keyboard_and_undone(desktop, binary):
    path = desktop.directory / "board.sqlite"
    settings.write(path, goals=[(_GOAL, ["Receipts"])], is_auto_sorting=False)
    with Kelpa(desktop, binary, settings=path) as kelpa:
        _add_todo(desktop, kelpa, "Letter")
        wait_until("the todo is stored", lambda: len(_todos(path)) == 2)
        wait_until("the board before is kept", lambda: len(_names(desktop, binary, path)) == 1)
        first = ["Goals: 1 · Unfinished todos: 1"]

        _open_sheet(desktop, kelpa, first)
        desktop.key("Escape")
        wait_until("the sheet is closed", lambda: not _listed(kelpa))
        assert len(_todos(path)) == 2

        _open_sheet(desktop, kelpa, first)
        desktop.key("Return")
        wait_until("the backup is restored", lambda: _todos(path) == ["Receipts"])
        wait_until("the sheet is closed", lambda: not _listed(kelpa))
        assert len(_names(desktop, binary, path)) == 2
        wait_until("undoing is offered", lambda: kelpa.board.has_text("Backup restored"))
        wait_until("there is a button", lambda: kelpa.board.button("Undo")).press()
        wait_until("the board is as it was", lambda: sorted(_todos(path)) == ["Letter", "Receipts"])

        # The newer of the two was made before the first was restored.
        _open_sheet(desktop, kelpa,
                    ["Goals: 1 · Unfinished todos: 2\nBefore a backup was restored", *first])
        desktop.key("Escape")
