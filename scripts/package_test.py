"""package_test.py PACKAGE DIRECTORY [SUITE]: tries the package on a Debian that has only its dependencies,
of the release that it was made on. It has to be activated by the session bus, to start and show its board, and to leave nothing behind when it
is removed."""

import json
import pathlib
import shutil
import subprocess
import sys
import time

root = pathlib.Path(__file__).resolve().parent.parent
sys.path.insert(0, str(root / "tests" / "desktop" / "support"))
sys.dont_write_bytecode = True

import processes  # noqa: E402
from clean_root import USER, USER_ENV, CleanRoot  # noqa: E402
from harness import Desktop  # noqa: E402
from processes import wait_until  # noqa: E402


def _field(package, name):
    return subprocess.run(["dpkg-deb", "--field", package, name], check=True, text=True,
                          stdout=subprocess.PIPE).stdout.strip()


def _colours(picture):
    return int(subprocess.run(["identify", "-format", "%k", picture], check=True, text=True,
                              stdout=subprocess.PIPE).stdout)


class _Session:
    """A session bus in `clean`, with the services installed there, for a display outside of it. It ends
    with the desktop."""

    def __init__(self, clean, desktop, log):
        self._clean = clean
        self._desktop = desktop
        self._log = log
        self._log.unlink(missing_ok=True)
        self._env = {**USER_ENV, "DISPLAY": desktop.env["DISPLAY"]}
        address = clean.path / USER_ENV["HOME"].lstrip("/") / "bus-address"
        # Programs that the bus starts write to its streams, so to this log.
        self.start("dbus-run-session", "--", "sh", "-c",
                   'echo "$DBUS_SESSION_BUS_ADDRESS" > ~/bus-address; exec sleep infinity')
        wait_until("the session bus is there", lambda: address.exists() and address.read_text().strip())
        self._env["DBUS_SESSION_BUS_ADDRESS"] = address.read_text().strip()

    def start(self, *argv):
        return processes.start(self._clean.command(*argv, user=USER, env=self._env), self._desktop.env,
                               self._log)

    def call(self, *words):
        """A call on the bus, as busctl wants it; an AssertionError when it is not answered."""
        return self._clean.run("busctl", "--user", "call", *words, user=USER, env=self._env).strip()

    def activate(self):
        """Activates it as a launcher does for a D-Bus activatable entry."""
        self.call("org.kelpa.Kelpa", "/org/kelpa/Kelpa", "org.freedesktop.Application", "Activate",
                  "a{sv}", "0")

    def has_kelpa(self):
        return self.call("org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus",
                         "NameHasOwner", "s", "org.kelpa.Kelpa") == "b true"

    def windows(self):
        return [window for window in self._desktop.windows() if window.title == "Kelpa"]

    def is_in_front(self):
        return [window.number for window in self.windows()] == [self._desktop.active_window()]

    def check_nothing_is_lacking(self):
        said = [line for line in self._log.read_text().splitlines() if "module" in line or "plugin" in line]
        if said:
            raise AssertionError("it lacks something:\n" + "\n".join(said))


def _is_activated_by_the_bus(desktop, session):
    """First while it does not run, then while it runs behind another window."""
    if session.has_kelpa():
        raise AssertionError("it runs already")
    session.activate()
    wait_until("Kelpa's window is in front", session.is_in_front, 60)
    other = desktop.start_xterm("In front of the board")
    window = desktop.wait_for_window("In front of the board")
    wait_until("the other window is in front", lambda: desktop.active_window() == window.number)
    session.activate()
    wait_until("Kelpa's window is in front again", session.is_in_front)
    other.terminate()
    desktop.key("ctrl+q")
    wait_until("Kelpa has left the bus", lambda: not session.has_kelpa(), 30)


def _shows_its_board(desktop, session, picture):
    """Started by hand, beside another program's window."""
    desktop.start_xterm("Beside the board")
    desktop.wait_for_window("Beside the board")
    kelpa = session.start("kelpa")

    def shown():
        if kelpa.poll() is not None:
            raise AssertionError(f"Kelpa ended with {kelpa.poll()}")
        return next(iter(session.windows()), None)

    window = wait_until("Kelpa's window is listed", shown, 60)
    x_window = desktop.x.create_resource_object("window", window.number)
    names = x_window.get_wm_class()
    if names != ("kelpa", "kelpa"):
        raise AssertionError(f"its WM_CLASS is {names}")
    if not desktop.property(x_window, "_NET_WM_ICON"):
        raise AssertionError("its window has no icon")
    # An empty window has one colour, a drawn board hundreds.
    wait_until("the board is drawn", lambda: _colours(desktop.screenshot(picture)) > 100, 30)
    desktop.close(window)
    wait_until("its window is closed", lambda: not session.windows())
    session.activate()
    wait_until("its window is back and in front", session.is_in_front)
    desktop.key("ctrl+q")
    wait_until("Kelpa has ended", lambda: kelpa.poll() is not None, 30)
    if kelpa.poll() != 0:
        raise AssertionError(f"Kelpa ended with {kelpa.poll()}")


def _check_searches(clean):
    """Desktops find there who answers what is typed into their searches."""
    for name, key in (
            ("gnome-shell/search-providers/org.kelpa.Kelpa-search-provider.ini", "BusName"),
            ("krunner/dbusplugins/org.kelpa.Kelpa.Runner.desktop", "X-Plasma-DBusRunner-Service")):
        path = clean.path / "usr/share" / name
        if not path.is_file() or f"{key}=org.kelpa.Kelpa" not in path.read_text().splitlines():
            raise AssertionError(f"{path} does not name Kelpa")


_EXTENSION = "usr/share/gnome-shell/extensions/windows@kelpa.org"


def _check_extension(clean):
    """GNOME Shell finds the extension for everybody, and it answers the program of the package."""
    metadata = json.loads((clean.path / _EXTENSION / "metadata.json").read_text(encoding="utf-8"))
    if metadata["program"] != "/usr/bin/kelpa" or not metadata["shell-version"]:
        raise AssertionError(f"the extension of GNOME Shell is not for the package: {metadata}")


def _try_out(clean, directory):
    """Starts Kelpa in `clean` in every way that there is; returns a picture of its board."""
    log, picture = directory / "kelpa.log", directory / "board.png"
    with Desktop(directory / "desktop") as desktop:
        session = _Session(clean, desktop, log)
        try:
            _is_activated_by_the_bus(desktop, session)
            _shows_its_board(desktop, session, picture)
            session.check_nothing_is_lacking()
        except AssertionError as error:
            raise AssertionError(f"{error}\n{log.read_text()}") from error
    return picture


def main():
    package, directory = map(pathlib.Path, sys.argv[1:3])
    processes.exit_on_signals()
    started = time.monotonic()

    def done(what):
        print(f"package test: {what} ({time.monotonic() - started:.0f} s)", flush=True)

    with CleanRoot(directory, *sys.argv[3:]) as clean:
        done("a Debian of its own")
        clean.run("apt-get", "-q", "update")
        clean.run("apt-get", "-q", "-y", "-o", "APT::Keep-Downloaded-Packages=true",
                  "-o", "DPkg::Options::=--force-unsafe-io", "satisfy", "--no-install-recommends",
                  _field(package, "Depends"))
        shutil.copy(package, clean.path / "tmp/kelpa.deb")
        done("what the package depends on")
        with clean.unchanged_by("The package"):
            clean.run("dpkg", "--install", "/tmp/kelpa.deb")
            clean.run("dpkg", "--verify", "kelpa")
            version = clean.run("kelpa", "--version", user=USER,
                                env={**USER_ENV, "QT_QPA_PLATFORM": "offscreen"}).strip()
            if version != f"kelpa {_field(package, 'Version')}":
                raise AssertionError(f"it says that it is {version!r}")
            _check_searches(clean)
            _check_extension(clean)
            picture = _try_out(clean, directory)
            done(f"installed and started, {picture}")
            # It has no settings of its own that only a purge would remove.
            clean.run("dpkg", "--remove", "kelpa")
        with clean.unchanged_by("Purging the package"):
            clean.run("dpkg", "--purge", "kelpa")
        done("removed without a trace")
    return 0


if __name__ == "__main__":
    try:
        sys.exit(main())
    except AssertionError as error:
        print(f"The package test failed: {error}", file=sys.stderr)
        sys.exit(1)
