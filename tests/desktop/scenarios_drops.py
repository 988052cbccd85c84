"""Text that other programs drop on the board."""

import os

import board as boards
import settings
from kelpa import Kelpa
from processes import wait_until

_SOURCE = os.path.join(os.path.dirname(os.path.abspath(__file__)), "support",
                       "foreign_drag_source.py")


class _Source:
    """Another program's window, in the corner where the board's header has its title."""

    def __init__(self, desktop, *texts):
        self._desktop = desktop
        self._log = desktop.directory / "source.log"
        desktop.start("/usr/bin/python3", _SOURCE, "Source", *texts, log=self._log)
        window = desktop.x.create_resource_object("window", desktop.wait_for_window("Source").number)
        geometry = window.get_geometry()
        corner = window.translate_coords(desktop.x.screen().root, 0, 0)
        self._place = -corner.x + geometry.width // 2, -corner.y + geometry.height // 2
        self._read = 0

    def drop_next(self, place):
        """Drags the next text to `place`, and returns what became of it."""
        # Its own record reports that the drag began.
        self._desktop.drag_over(self._place, place)
        self._desktop.let_go()
        lines = wait_until("the other program's drag has ended", self._ended)
        self._read += len(lines)
        return lines

    def _ended(self):
        lines = self._log.read_text(encoding="utf-8").splitlines()[self._read:]
        return lines if "ended" in lines else None


def what_other_programs_drop_changes_nothing(desktop, binary):
    path = desktop.directory / "board.sqlite"
    settings.write(path, goals=[("First goal", ["First todo", "Second todo"]), ("Second goal", [])])
    desktop.start_xterm("Terminal")
    window = desktop.wait_for_window("Terminal")
    with Kelpa(desktop, binary, path) as kelpa:
        kelpa.wait_for_card(boards.UNSORTED, "Terminal")
        before = settings.read_live(path)
        stored = settings.StoredBoard(before)
        number = int(desktop.property(
            desktop.x.create_resource_object("window", window.number), "_KELPA_WINDOW_NUMBER")[0])
        second_goal = f"kelpa-goal:{stored.goal_ids['Second goal']}"
        todo = f"kelpa-todo:{stored.goal_ids['First goal']}:{stored.todo_id('Second todo', 'First goal')}"
        head = kelpa.head("First goal")
        # The first four would change the board if they were dragged within it.
        drops = ((str(number), head),
                 (second_goal, head),
                 (todo, kelpa.head("Second goal")),
                 (todo, kelpa.centre(*kelpa.todo_node("First goal", "First todo"))),
                 ("hello", head),
                 ("9" * 400, head),
                 ("\u202e\u0007kelpa-unassigned", head))
        source = _Source(desktop, *(text for text, _ in drops))
        for text, place in drops:
            became = source.drop_next(place)
            assert became == ["began", "refused", hex(kelpa.window.number), "ended"], (text, became)
            kelpa.wait_for_card(boards.UNSORTED, "Terminal")
            assert kelpa.board.goal_titles() == ["First goal", "Second goal"]
            assert settings.read_live(path) == before
        kelpa.create_goal("Still alive")
