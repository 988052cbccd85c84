"""How much the real program has the Shell do for it, counted and not timed."""

import math

import board as boards
import settings
import shell_work
from kelpa import Kelpa
from plain_windows import PlainWindows
from processes import wait_until

_WINDOWS = 30
_SECONDS = 8


def _report(what, work, seconds):
    pictures, size, lists, workspaces, changes = (each / seconds for each in work)
    print(f"{what}: {pictures:.1f} pictures of {size / 1000:.1f} kB together, {lists:.1f} lists of windows and "
          f"{workspaces:.1f} of workspaces a second after {changes:.1f} changes")
    return pictures, size, lists


def _is_at_rest(desktop):
    work, seconds = shell_work.done_in(desktop, _SECONDS)
    pictures, size, lists = _report("at rest", work, seconds)
    return pictures <= 0.5 and size <= 50_000 and lists <= 1 and work.workspaces <= work.lists + 1


def the_shell_does_a_bounded_work_a_second_for_the_board(desktop, binary):
    path = desktop.directory / "board.sqlite"
    settings.write(path, is_unsorted_unfolded=True)
    shell_work.count(desktop)
    plain = PlainWindows()
    for number in range(_WINDOWS):
        plain.open(b"Window %d" % number)
    with Kelpa(desktop, binary, path) as kelpa:
        kelpa.wait_for_card(boards.UNSORTED, f"Window {_WINDOWS - 1}")
        kelpa.wait_for_previews(boards.UNSORTED)
        wait_until("the Shell is left in peace", lambda: _is_at_rest(desktop), 90, pause=0)
        assert shell_work.done(desktop)[0] >= 4, "no picture is counted"
        shell_work.start_drawing(desktop)
        # Before the board, which would hide what it draws.
        desktop.activate(desktop.wait_for_window("Drawing"))
        work, seconds = shell_work.done_in(desktop, _SECONDS)
        pictures, size, lists = _report("while a window changes", work, seconds)
        assert pictures <= 2 and size <= 200_000, (pictures, size)
        assert lists <= 20, lists
        # One for each change that is told, one for what was told just before, and one every two seconds.
        assert 0 < work.lists <= work.changes + 1 + math.ceil(seconds / 2), work
        assert 0 < work.workspaces <= work.lists + 1, work
    plain.end()
