"""Kelpa where a message bus, or what answers on it, is stopped: nobody waits for it."""

import subprocess
import time

import board as boards
import settings
from board import TODO
from input_methods import Chewing, Hangul
from kelpa import Kelpa
from processes import find, stopped, wait_until

_GOAL = "Errands"
# What a silent bus may cost beyond the time that the same takes beside buses that answer, in seconds.
# On a busy machine that takes longer, and so does the rest.
_ALLOWED = 2
_PATIENCE = 60
# Says when the first frame is shown.
_WITH_LOG = {"QT_LOGGING_RULES": "kelpa.views.debug=true"}


def _session_bus(desktop):
    return desktop.session_bus.pid


def _accessibility_bus(_desktop):
    return wait_until("the accessibility bus runs",
                      lambda: find("dbus-daemon", "accessibility.conf"))


def _registry(_desktop):
    # The first question starts it.
    boards.outline_of_window()
    return wait_until("the accessibility registry runs", lambda: find("at-spi2-registryd"))


def _service(_desktop):
    return wait_until("the service of the accessibility bus runs", lambda: find("at-spi-bus-launcher"))


def _write_board(desktop, todos=()):
    path = desktop.directory / "board.sqlite"
    path.unlink(missing_ok=True)
    # The next start is to be told from the one before.
    for log in desktop.directory.glob("kelpa-*.log"):
        log.unlink()
    settings.write(path, goals=[(_GOAL, list(todos))], is_auto_sorting=False)
    return path


def _add_todo(desktop, kelpa, path, title):
    """By keys alone, since nobody can ask where anything is: the goal comes after the list of all
    todos and what is unsorted."""
    before = settings.StoredBoard(settings.read_live(path)).todos(_GOAL)
    # The board takes keys from then on.
    wait_until("the first frame is shown", lambda: "first frame shown" in kelpa.output(), _PATIENCE)
    kelpa.focus()
    desktop.key("Right", "Right", "Right", "Return")
    desktop.type(title)
    desktop.key("Return", "Escape")
    wait_until(f"the todo {title!r} is stored", lambda: settings.StoredBoard(
        settings.read_live(path)).todos(_GOAL) == [*before, (title, TODO)], _PATIENCE)


def _end(kelpa):
    kelpa.terminate()
    status = kelpa.wait(_PATIENCE)
    if status != 0:
        raise AssertionError(f"ended with {status}\n{kelpa.output()}")
    kelpa.check_output()


class _Clock:
    """Compares what is done beside silent buses with the same beside buses that answer, in one run."""

    def __init__(self, usual):
        self._usual = usual
        self._begin = time.monotonic()

    def check(self, what):
        seconds = time.monotonic() - self._begin
        if seconds > 2 * self._usual + _ALLOWED:
            raise AssertionError(f"{what}: {seconds:.1f} s instead of {self._usual:.1f} s")


def _use(desktop, kelpa, path):
    """From the start to the end of the program, with a todo in between."""
    kelpa.launch(_PATIENCE)
    _add_todo(desktop, kelpa, path, "Buy milk")
    _end(kelpa)


def _usual(desktop, binary):
    """How many seconds that takes while all buses answer."""
    path = _write_board(desktop)
    begin = time.monotonic()
    _use(desktop, Kelpa(desktop, binary, path, env=_WITH_LOG), path)
    return time.monotonic() - begin


def _runs_beside(desktop, binary, *pids, usual, env=None):
    """With these stopped before the start, the board is there, is typed into and ends, and nobody
    waits for them."""
    path = _write_board(desktop)
    kelpa = Kelpa(desktop, binary, path, env=_WITH_LOG | (env or {}))
    with stopped(*pids):
        clock = _Clock(usual)
        _use(desktop, kelpa, path)
        clock.check("beside what is stopped")


def _is_accessible_after(desktop, binary, *pids):
    """When these continue, screen readers read the board, which was there before."""
    path = _write_board(desktop)
    kelpa = Kelpa(desktop, binary, path, env=_WITH_LOG)
    with stopped(*pids):
        kelpa.launch(_PATIENCE)
        _add_todo(desktop, kelpa, path, "Buy milk")
    kelpa.await_board(_PATIENCE)
    kelpa.wait_for_todos(_GOAL, [("Buy milk", TODO)])
    # What happens from now on is heard, too.
    kelpa.create_goal("After the silence")
    return kelpa, path


def beside_a_stopped_session_bus_the_board_is_used_and_ends(desktop, binary):
    usual = _usual(desktop, binary)
    _runs_beside(desktop, binary, _session_bus(desktop), usual=usual)
    for method in ("fcitx", "ibus"):
        _runs_beside(desktop, binary, _session_bus(desktop), usual=usual, env={"QT_IM_MODULE": method})
    _runs_beside(desktop, binary, _session_bus(desktop), _accessibility_bus(desktop), _registry(desktop),
                 usual=usual)


def beside_a_stopped_accessibility_bus_the_board_is_used_and_ends(desktop, binary):
    usual = _usual(desktop, binary)
    _runs_beside(desktop, binary, _accessibility_bus(desktop), usual=usual)
    _runs_beside(desktop, binary, _service(desktop), usual=usual)
    # For who names the bus, it is asked for nowhere.
    address = desktop.run("dbus-send", "--session", "--print-reply=literal", "--dest=org.a11y.Bus",
                          "/org/a11y/bus", "org.a11y.Bus.GetAddress").strip()
    _runs_beside(desktop, binary, _accessibility_bus(desktop), usual=usual,
                 env={"AT_SPI_BUS_ADDRESS": address})


def beside_a_stopped_accessibility_registry_the_board_is_used_and_ends(desktop, binary):
    _runs_beside(desktop, binary, _registry(desktop), usual=_usual(desktop, binary))


def a_session_bus_that_continues_has_kelpa_and_its_board(desktop, binary):
    kelpa, path = _is_accessible_after(desktop, binary, _session_bus(desktop))
    # It has its name on the bus as well.
    again = subprocess.run([str(binary), "--settings", str(path)], env=desktop.env, timeout=60,
                           stdin=subprocess.DEVNULL, check=False)
    if again.returncode != 0:
        raise AssertionError(f"a second start ended with {again.returncode}")
    kelpa.quit()


def an_accessibility_bus_that_continues_has_the_board(desktop, binary):
    for stopped_one in (_accessibility_bus, _registry, _service):
        kelpa, _ = _is_accessible_after(desktop, binary, stopped_one(desktop))
        kelpa.quit()


def beside_a_stopped_input_method_the_board_is_used_and_ends(desktop, binary):
    usual = _usual(desktop, binary)
    method = Hangul(desktop)
    _runs_beside(desktop, binary, find("ibus-daemon"), usual=usual, env=method.env)


def an_input_method_is_used_beside_a_stopped_accessibility_bus(desktop, binary):
    method = Chewing(desktop)
    path = _write_board(desktop)
    kelpa = Kelpa(desktop, binary, path, env=_WITH_LOG | method.env)
    with stopped(_accessibility_bus(desktop)):
        kelpa.launch(_PATIENCE)
        kelpa.focus()
        desktop.key("Right", "Right", "Right", "Return")
        method.await_field()
        _end(kelpa)


def a_bus_that_stops_later_does_not_keep_the_board_from_its_user(desktop, binary):
    usual = _usual(desktop, binary)
    for stopped_one in (_registry, _accessibility_bus, _service, _session_bus):
        path = _write_board(desktop)
        kelpa = Kelpa(desktop, binary, path, env=_WITH_LOG)
        kelpa.start()
        kelpa.focus()
        with stopped(stopped_one(desktop)):
            clock = _Clock(usual)
            _add_todo(desktop, kelpa, path, "Buy milk")
            _end(kelpa)
            clock.check("beside what has stopped")
