"""How much the real program has the Shell do for it, counted and not timed."""

import math

import board as boards
import settings
import shell_work
from caller import Caller
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
        # Of the signals, of which the first ones come sooner, and every two seconds unasked.
        assert lists <= 5, lists
        # One for each change that is told, one for what was told just before, and one every two seconds.
        assert 0 < work.lists <= work.changes + 1 + math.ceil(seconds / 2), work
        assert 0 < work.workspaces <= work.lists + 1, work
    plain.end()


# Notes the kinds of change that the extension hears of.
_NOTE_KINDS = """(extension => {
    const kinds = globalThis.kelpaKinds = [];
    const changed = extension._changed;
    extension._changed = function (kind) {
        kinds.push(kind);
        changed.call(this, kind);
    };
    return true;
})(Main.extensionManager.lookup('windows@kelpa.org').stateObj)"""


def _kinds(desktop):
    """Those since the last call."""
    return desktop.evaluate("[...new Set(globalThis.kelpaKinds.splice(0))].sort()")


def _await_rest(desktop):
    wait_until("nothing changes", lambda: shell_work.done_in(desktop, 1)[0].changes == 0, pause=0)
    _kinds(desktop)


def a_window_that_changes_all_the_time_is_told_four_times_a_second(desktop, _program):
    shell_work.count(desktop)
    caller = Caller(desktop.bus)
    assert desktop.evaluate(_NOTE_KINDS)
    plain = PlainWindows()
    window = plain.open(b"Before")
    caller.row("Before")
    assert "windows" in _kinds(desktop)
    _await_rest(desktop)
    before = shell_work.done(desktop).changes
    plain.rename(window, b"After")
    caller.row("After")
    wait_until("it is told", lambda: shell_work.done(desktop).changes == before + 1)
    kinds = _kinds(desktop)
    assert kinds == ["looks"], kinds

    drawing = shell_work.start_drawing(desktop)
    # While it opens they are told sooner.
    shell_work.done_in(desktop, 2)
    _kinds(desktop)
    work, seconds = shell_work.done_in(desktop, 5)
    kinds = _kinds(desktop)
    assert kinds == ["looks"], kinds
    assert seconds < work.changes <= 4 * seconds + 1, (work, seconds)
    drawing.terminate()
    plain.end()
