"""Kelpa among other programs: what brings it forward, and whether it is."""

import settings
from kelpa import Kelpa
from processes import wait_until

# The moments of a double tap, as a hand makes them, in seconds.
TAP = ("keydown", "super", "sleep", "0.04", "keyup", "super")
BETWEEN = ("sleep", "0.08")


def start_kelpa(desktop, binary, goals=(), env=None):
    """Kelpa with a new board of these goals, and the file of that board. `env` is told to it alone."""
    path = desktop.directory / "board.sqlite"
    settings.write(path, goals=goals, is_auto_sorting=False)
    kelpa = Kelpa(desktop, binary, path, env=env)
    kelpa.start()
    return kelpa, path


def tap_twice(desktop):
    desktop.run("xdotool", *TAP, *BETWEEN, *TAP)


def _is_in_front(desktop, kelpa):
    # A panel is above all others, whichever is in front.
    panels = [window.number for window in desktop.windows() if window.title == "Panel"]
    top = next(number for number in reversed(desktop.stacking()) if number not in panels)
    return desktop.active_window() == kelpa.window.number == top


def await_front(desktop, kelpa):
    wait_until("Kelpa is in front and has the keyboard", lambda: _is_in_front(desktop, kelpa), 10)


def await_monitor(desktop, kelpa, program):
    """Until the keys are heard: a double tap brings Kelpa forward from the program."""
    def comes():
        program.focus()
        tap_twice(desktop)
        try:
            await_front(desktop, kelpa)
        except AssertionError:
            return False
        return True

    wait_until("a double tap brings Kelpa forward", comes, 60)
