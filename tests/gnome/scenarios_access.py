"""Who is answered. The scenario itself runs the program that the extension was installed with; strangers are
run by another Python."""

import os
import pathlib
import shutil

from gi.repository import Gio, GLib

from caller import KELPA, Caller, Refused
from plain_windows import PlainWindows
from processes import wait_until

_SUPPORT = pathlib.Path(__file__).resolve().parent / "support"
_DENIED = ["AccessDenied"] * 16
# Counts the proofs, and holds each back until it is told.
_WATCH_PROOFS = """
const access = Main.extensionManager.lookup('windows@kelpa.org').stateObj._access;
const prove = access._prove;
globalThis.kelpaProofs = 0;
globalThis.kelpaAccess = access;
const isOpen = new Promise(resolve => { globalThis.kelpaOpen = resolve; });
access._prove = async function (caller) {
    ++globalThis.kelpaProofs;
    const proved = await prove.call(this, caller);
    await isOpen;
    return proved;
};
true
"""


class _Stranger:
    def __init__(self, desktop, name=""):
        self._log = desktop.directory / f"stranger-{name}.log"
        self._log.unlink(missing_ok=True)
        folders = [_SUPPORT, *(_SUPPORT.parents[1] / folder / "support" for folder in ("wayland", "desktop"))]
        self._process = desktop.start(
            "/usr/bin/env", f"PYTHONPATH={os.pathsep.join(map(str, folders))}",
            "/usr/bin/python3", "-B", _SUPPORT / "stranger.py", name, log=self._log)
        self.errors = wait_until("the stranger listens", self._errors_before_listening)

    def _lines(self):
        return self._log.read_text(encoding="utf-8", errors="replace").splitlines()

    def _errors_before_listening(self):
        lines = self._lines()
        assert self._process.poll() is None, lines
        return lines[:lines.index("listening")] if "listening" in lines else None

    def heard(self):
        return self._lines()[len(self.errors) + 1:]

    def end(self):
        self._process.terminate()
        self._process.wait()


def _is_denied(caller):
    """Also what must be proved when it attaches."""
    for call in (("List",), ("Attach", "(u)", 1), ("List",)):
        try:
            caller.call(*call)
            return False
        except Refused as refused:
            assert refused.reason == "AccessDenied", refused
    return True


def a_stranger_learns_nothing(desktop, _program):
    plain = PlainWindows()
    window = plain.open(b"A secret")
    desktop.wait_for_window("A secret")
    # While there is no Kelpa, not even its own program is answered.
    nobody = Caller(desktop.bus, is_kelpa=False)
    assert _is_denied(nobody)
    stranger = _Stranger(desktop)
    assert stranger.errors == _DENIED, stranger.errors
    stranger.end()

    # Beside a Kelpa that listens, which was refused before it had the name.
    nobody.take_name()
    nobody.attach()
    stranger = _Stranger(desktop)
    assert stranger.errors == _DENIED, stranger.errors
    plain.rename(window, b"Another secret")
    wait_until("Kelpa hears of it", lambda: "Changed" in nobody.names())
    assert stranger.heard() == [], stranger.heard()
    # Another connection of Kelpa's, which has the name of no board, has to attach too.
    other = Caller(desktop.own_connection(), is_kelpa=False)
    try:
        other.list()
        raise AssertionError("who has not attached is answered")
    except Refused as refused:
        assert refused.reason == "AccessDenied", refused
    other.attach()
    assert other.row("Another secret")


def a_stranger_with_kelpas_name_learns_nothing(desktop, _program):
    plain = PlainWindows()
    window = plain.open(b"A secret")
    desktop.wait_for_window("A secret")
    for name in (KELPA, f"{KELPA}.board0"):
        stranger = _Stranger(desktop, name)
        assert stranger.errors == _DENIED, (name, stranger.errors)
        # With the name elsewhere, Kelpa's own program is not answered either.
        assert _is_denied(Caller(desktop.own_connection(), is_kelpa=False))
        stranger.end()
        wait_until("the name is free", lambda name=name: not desktop.has_name(name))

    # When Kelpa has gone, the name is anybody's, and what it was told is not.
    own = desktop.own_connection()
    kelpa = Caller(own)
    assert kelpa.row("A secret")
    own.close_sync()
    wait_until("the name is free", lambda: not desktop.has_name(KELPA))
    stranger = _Stranger(desktop, KELPA)
    assert stranger.errors == _DENIED, stranger.errors
    plain.rename(window, b"Another secret")
    desktop.wait_for_window("Another secret")
    assert stranger.heard() == [], stranger.heard()
    stranger.end()
    wait_until("the name is free", lambda: not desktop.has_name(KELPA))

    # A Kelpa with another board.
    board = Caller(desktop.own_connection(), is_kelpa=False)
    board.take_name(f"{KELPA}.board0")
    board.attach()
    assert board.row("Another secret")


def a_stranger_that_calls_without_end_keeps_nobody_waiting(desktop, _program):
    kelpa = Caller(desktop.bus)
    desktop.start_foot("A terminal")
    stranger = desktop.own_connection()
    answers = []

    def answered(connection, result):
        try:
            connection.call_finish(result)
            answers.append("answered")
        except GLib.Error as error:
            answers.append(Gio.DBusError.get_remote_error(error).rpartition(".")[2])

    for number in range(3000):
        method, arguments = (("List", None), ("Picture", GLib.Variant("(tuut)", (1, 1, 1, 1))))[number % 2]
        stranger.call("org.kelpa.Windows", "/org/kelpa/Windows", "org.kelpa.Windows1", method, arguments, None,
                      Gio.DBusCallFlags.NONE, 60000, None, answered)
        if number % 300 == 0:
            assert kelpa.row("A terminal")
    wait_until("all calls are answered", lambda: kelpa.spin(0.05) or len(answers) == 3000)
    # The bus itself has a limit for calls that wait.
    assert {"AccessDenied"} <= set(answers) <= {"AccessDenied", "LimitsExceeded"}, set(answers)
    assert kelpa.row("A terminal")


def _attach(connection, answered):
    connection.call("org.kelpa.Windows", "/org/kelpa/Windows", "org.kelpa.Windows1", "Attach",
                    GLib.Variant("(u)", (1,)), None, Gio.DBusCallFlags.NONE, 60000, None, answered)


def who_wants_to_attach_without_end_costs_few_proofs(desktop, _program):
    kelpa = Caller(desktop.bus)
    assert desktop.evaluate(_WATCH_PROOFS)
    reasons = []

    def answered(connection, result):
        try:
            connection.call_finish(result)
            reasons.append("answered")
        except GLib.Error as error:
            reasons.append(Gio.DBusError.get_remote_error(error).rpartition(".")[2])

    connection = desktop.own_connection()
    for _ in range(100):
        _attach(connection, answered)
    # Calls before it are answered first.
    Caller(connection, is_kelpa=False).version()
    assert desktop.evaluate("globalThis.kelpaProofs") == 1
    desktop.evaluate("globalThis.kelpaOpen(true)")
    wait_until("all have the same answer", lambda: kelpa.spin(0.05) or len(reasons) == 100)
    assert set(reasons) == {"answered"}, set(reasons)

    reasons.clear()
    connections = [desktop.own_connection() for _ in range(100)]
    # All of them are there when the Shell comes to the first.
    for connection in connections:
        _attach(connection, answered)
    wait_until("all are answered", lambda: kelpa.spin(0.05) or len(reasons) == 100)
    assert set(reasons) == {"answered", "Busy"}, set(reasons)
    assert desktop.evaluate("globalThis.kelpaProofs") == 1 + reasons.count("answered")


def who_leaves_during_the_proof_is_not_admitted(desktop, _program):
    kelpa = Caller(desktop.bus)
    assert desktop.evaluate(_WATCH_PROOFS)
    connection = desktop.own_connection()
    name = connection.get_unique_name()
    _attach(connection, None)
    wait_until("the proof is under way", lambda: desktop.evaluate("globalThis.kelpaProofs") == 1)
    connection.close_sync()
    wait_until("it has left", lambda: not desktop.has_name(name))
    desktop.evaluate("globalThis.kelpaOpen(true)")
    kelpa.version()
    admitted = desktop.evaluate("[...globalThis.kelpaAccess._admitted.keys()]")
    assert admitted == [desktop.bus.get_unique_name()], admitted


def kelpa_that_was_updated_while_it_runs_is_told_so(desktop, program):
    kelpa = Caller(desktop.bus)
    fresh = program.with_name("fresh")
    shutil.copyfile(program, fresh)
    fresh.chmod(0o755)
    os.replace(fresh, program)
    # Goes on until the extension is switched off, as a locked screen does.
    kelpa.list()
    desktop.set_extension(False)
    desktop.set_extension(True)
    for _ in range(2):
        try:
            kelpa.attach()
            raise AssertionError("a program of before is answered")
        except Refused as refused:
            assert refused.reason == "Outdated", refused
    # Another program is not told so.
    kelpa.release_name()
    stranger = _Stranger(desktop, KELPA)
    assert stranger.errors == _DENIED, stranger.errors
