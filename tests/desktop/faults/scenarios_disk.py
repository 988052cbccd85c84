"""A disk that takes its time, or all the time there is."""

import board as boards
import settings
from disks import Disk
from kelpa import Kelpa
from processes import wait_until

_GOAL = "Errands"
_TODOS = ["Buy milk", "Call back", "Read the letter", "Pay the rent", "Water the plants"]


def _add_todo(desktop, kelpa, title):
    kelpa.click(*kelpa.column_button(_GOAL, boards.ADD_TODO))
    wait_until("a todo can be typed", kelpa.board.focused_field)
    desktop.type(title)
    desktop.key("Return")


def _open_todos(count):
    return [(title, boards.TODO) for title in _TODOS[:count]]


def on_a_disk_that_hangs_the_board_goes_on_and_says_that_it_is_saving(desktop, binary):
    path = desktop.directory / "board.sqlite"
    settings.write(path, goals=[(_GOAL, [])], is_auto_sorting=False)
    disk = Disk(desktop, binary)
    with Kelpa(desktop, binary, path, env=disk.env) as kelpa:
        kelpa.focus()
        disk.hang()
        for count, title in enumerate(_TODOS, 1):
            _add_todo(desktop, kelpa, title)
            kelpa.wait_for_todos(_GOAL, _open_todos(count))
        wait_until("the board says that it is saving", lambda: kelpa.board.has_text(boards.SAVING))
        assert settings.StoredBoard(settings.read_live(path)).todos(_GOAL) == []

        disk.recover()
        wait_until("all todos are stored", lambda: settings.StoredBoard(
            settings.read_live(path)).todos(_GOAL) == _open_todos(len(_TODOS)))
        wait_until("the board has nothing to say", lambda: not kelpa.board.has_text(boards.SAVING))


def _start_before_the_disk_hangs(desktop, binary):
    """Kelpa with an empty goal, its disk that hangs from now on, and its file."""
    path = desktop.directory / "board.sqlite"
    settings.write(path, goals=[(_GOAL, [])], is_auto_sorting=False)
    disk = Disk(desktop, binary)
    kelpa = Kelpa(desktop, binary, path, env=disk.env)
    kelpa.start()
    kelpa.focus()
    disk.hang()
    return kelpa, disk, path


def closing_waits_for_a_slow_disk_and_asks(desktop, binary):
    kelpa, disk, path = _start_before_the_disk_hangs(desktop, binary)
    for count, title in enumerate(_TODOS[:2], 1):
        _add_todo(desktop, kelpa, title)
        kelpa.wait_for_todos(_GOAL, _open_todos(count))
    desktop.close(kelpa.window)
    wait_until("the person is asked", lambda: kelpa.board.has_text(boards.CHANGES_STILL_SAVING))
    assert kelpa.is_running()
    assert settings.StoredBoard(settings.read_live(path)).todos(_GOAL) == []
    disk.recover()
    wait_until("the window is closed", lambda: kelpa.shown_window() is None)
    assert settings.StoredBoard(settings.read_live(path)).todos(_GOAL) == _open_todos(2)
    assert kelpa.is_running(), "it listens"
    kelpa.terminate()
    assert kelpa.wait() == 0


def a_disk_that_hangs_for_good_does_not_keep_it_from_ending(desktop, binary):
    kelpa, disk, path = _start_before_the_disk_hangs(desktop, binary)
    _add_todo(desktop, kelpa, _TODOS[0])
    kelpa.wait_for_todos(_GOAL, _open_todos(1))
    desktop.close(kelpa.window)
    wait_until("it can be closed all the same",
               lambda: kelpa.board.button(boards.CLOSE_ANYWAY)).press()
    kelpa.wait(60)
    assert f"the disk with {path} does not reply" in kelpa.output()
