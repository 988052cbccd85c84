"""search.py PROGRAM [--rounds N]: how soon a hidden Kelpa with a board of 200 goals and 10,000 todos answers the
searches of GNOME Shell and KRunner on a session bus, letter by letter as somebody types, and beside each a
call that only says that the program is there. Milliseconds from the call to its reply, both processes included;
the first search of a program, which has yet to prepare the board for it, stands apart."""

import argparse
import pathlib
import statistics
import sys
import tempfile
import time

from gi.repository import Gio, GLib

root = pathlib.Path(__file__).resolve().parents[3]
sys.path[:0] = [str(root / "tests" / "desktop" / "support")]
sys.dont_write_bytecode = True

import processes  # noqa: E402
import settings  # noqa: E402
from harness import Desktop  # noqa: E402
from processes import wait_until  # noqa: E402

_GOALS = [(f"Goal {goal}", [f"Letter {goal * 50 + todo} of spring" for todo in range(50)]) for goal in range(200)]
_TYPED = "letter 9998"
_PATIENCE = 60


def _timed(connection, name, path, interface, method, arguments):
    before = time.monotonic()
    reply = connection.call_sync(name, path, interface, method, arguments, None, Gio.DBusCallFlags.NONE, 20_000, None)
    return 1000 * (time.monotonic() - before), reply.unpack()


def _type_in_shell(connection, name, text):
    """Of each letter: the search, and what describes its results."""
    taken = []
    for end in range(1, len(text) + 1):
        searched, (results,) = _timed(connection, name, "/org/kelpa/SearchProvider", "org.gnome.Shell.SearchProvider2",
                                      "GetInitialResultSet", GLib.Variant("(as)", (text[:end].split(),)))
        described, _ = _timed(connection, name, "/org/kelpa/SearchProvider", "org.gnome.Shell.SearchProvider2",
                              "GetResultMetas", GLib.Variant("(as)", (results,)))
        taken.append(searched + described)
    if not results:
        raise SystemExit(f"nothing was found for {text}")
    return taken


def _type_in_krunner(connection, name, text):
    taken = []
    for end in range(1, len(text) + 1):
        searched, (matches,) = _timed(connection, name, "/org/kelpa/Runner", "org.kde.krunner1", "Match",
                                      GLib.Variant("(s)", (text[:end],)))
        taken.append(searched)
    if not matches:
        raise SystemExit(f"nothing was found for {text}")
    return taken


def _ping(connection, name, count):
    return [_timed(connection, name, "/", "org.freedesktop.DBus.Peer", "Ping", None)[0] for _ in range(count)]


def _report(what, taken):
    ordered = sorted(taken)
    print(f"{what:42} {statistics.median(ordered):8.2f} {ordered[int(len(ordered) * 0.95)]:8.2f} {ordered[-1]:8.2f}",
          flush=True)


def _name_of(connection, pid):
    names = connection.call_sync("org.freedesktop.DBus", "/", "org.freedesktop.DBus", "ListNames", None, None,
                                 Gio.DBusCallFlags.NONE, -1, None).unpack()[0]
    for name in names:
        if name.startswith("org.kelpa.Kelpa") and connection.call_sync(
                "org.freedesktop.DBus", "/", "org.freedesktop.DBus", "GetConnectionUnixProcessID",
                GLib.Variant("(s)", (name,)), None, Gio.DBusCallFlags.NONE, -1, None).unpack()[0] == pid:
            return name
    return None


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("program", type=lambda text: pathlib.Path(text).resolve())
    parser.add_argument("--rounds", type=int, default=20)
    arguments = parser.parse_args()
    processes.exit_on_signals()
    with tempfile.TemporaryDirectory(prefix="kelpa-search-") as directory, \
            Desktop(pathlib.Path(directory) / "desktop") as desktop:
        path = desktop.directory / "board.sqlite"
        settings.write(path, goals=_GOALS, is_auto_sorting=False)
        kelpa = desktop.start(arguments.program, "--hidden", "--settings", path)
        connection = Gio.DBusConnection.new_for_address_sync(
            desktop.env["DBUS_SESSION_BUS_ADDRESS"],
            Gio.DBusConnectionFlags.AUTHENTICATION_CLIENT | Gio.DBusConnectionFlags.MESSAGE_BUS_CONNECTION, None, None)
        name = wait_until("Kelpa is on the bus", lambda: _name_of(connection, kelpa.pid), _PATIENCE)
        # What a start has left to do.
        time.sleep(2)
        first = _type_in_shell(connection, name, _TYPED[:1])
        shell, krunner, ping = [], [], []
        for _ in range(arguments.rounds):
            shell += _type_in_shell(connection, name, _TYPED)
            krunner += _type_in_krunner(connection, name, _TYPED)
            ping += _ping(connection, name, len(_TYPED))
        kelpa.terminate()
        wait_until("Kelpa ends", lambda: kelpa.poll() is not None, _PATIENCE)
    print(f"{'milliseconds':42} {'median':>8} {'95 %':>8} {'worst':>8}")
    _report("GNOME Shell, the first search", first)
    _report("GNOME Shell, found and described", shell)
    _report("KRunner", krunner)
    _report("a call that does nothing", ping)


if __name__ == "__main__":
    sys.exit(main())
