"""How much the real program has the Shell do for it, counted and not timed."""

import board as boards
import settings
import shell_work
from kelpa import Kelpa
from plain_windows import PlainWindows
from processes import wait_until

_WINDOWS = 30
_SECONDS = 8


def _report(what, work, seconds):
    pictures, size, lists = (each / seconds for each in work)
    print(f"{what}: {pictures:.1f} pictures of {size / 1000:.1f} kB together and {lists:.1f} lists a second")
    return pictures, size, lists


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
        wait_until("all have their pictures",
                   lambda: shell_work.done_in(desktop, 4)[0][0] == 0, 90, pause=0)
        assert shell_work.done(desktop)[0] >= 4, "no picture is counted"
        pictures, size, lists = _report("at rest", *shell_work.done_in(desktop, _SECONDS))
        assert pictures <= 0.5 and size <= 50_000 and lists <= 1, (pictures, size, lists)
        shell_work.start_drawing(desktop)
        # Before the board, which would hide what it draws.
        desktop.activate(desktop.wait_for_window("Drawing"))
        pictures, size, lists = _report("while a window changes", *shell_work.done_in(desktop, _SECONDS))
        assert pictures <= 2 and size <= 200_000, (pictures, size)
        assert 0 < lists <= 20, lists
    plain.end()
