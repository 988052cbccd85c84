"""A private GNOME Shell without a screen, with Kelpa's extension, on which scenarios do what they do on
X11."""

import json
import os
import pathlib
import shutil
import subprocess

import gi

gi.require_version("Gio", "2.0")
from gi.repository import Gio, GLib

import other_root
from harness import Desktop, Window
from keyboard import Keyboard
from processes import wait_until

UUID = "windows@kelpa.org"
_SOURCES = pathlib.Path(__file__).resolve().parents[3]
_GENERATOR = _SOURCES / "data" / "gnome" / "generate.py"

# No keys are repeated: a busy Shell repeats those that it sees released late.
_SETTINGS = """[org/gnome/shell]
enabled-extensions={enabled}
welcome-dialog-last-shown-version='99'
disable-extension-version-validation=false

[org/gnome/desktop/interface]
enable-animations={animations}

[org/gnome/desktop/screensaver]
lock-enabled=false

[org/gnome/desktop/session]
idle-delay=uint32 0

[org/gnome/desktop/peripherals/keyboard]
repeat=false
"""

# Parts of lines in the Shell's log.
_COMPLAINTS = (UUID, "org.kelpa", "disposed", "g_object_", "g_signal_", "Unhandled promise rejection")

_APPLICATION = "org.kelpa.Kelpa.desktop"
_PROVIDER = "org.kelpa.Kelpa-search-provider.ini"

_SEARCHED = f"""Main.overview._overview.controls._searchController._searchResults._providers
    .filter(provider => provider.id === '{_APPLICATION}')"""
_RESULTS = f"""{_SEARCHED}.filter(provider => provider.display)
    .flatMap(provider => Object.values(provider.display._resultDisplays))
    .filter(result => result.mapped)
    .map(result => [result.metaInfo.name, result.metaInfo.description])"""

_LIST = """global.get_window_actors().map(actor => actor.meta_window)
    .filter(window => !window.is_override_redirect())
    .map(window => [window.get_id(), window.get_title() || '', window.get_pid(), window.has_focus()])"""


class GnomeDesktop(Desktop):
    """The same as a desktop on X11, as far as a scenario needs it. A window's number is the Shell's. The
    extension answers `program`; with None it is not installed. The Shell is this system's own or, if
    `is_other`, that of the root that is visible. With `has_search` it knows who answers its search; `is_hurried`
    is for a scenario that is faster than the Shell's own scripts expect."""

    def __init__(self, directory, program, is_other=False, is_enabled=True, has_xwayland=False,
                 has_animations=True, has_search=False, is_hurried=False):
        super().__init__(directory)
        self._program = program
        self._is_other = is_other
        self._is_enabled = is_enabled
        self._xwayland = [] if has_xwayland else ["--no-x11"]
        self._has_animations = has_animations
        self._has_search = has_search
        self._is_hurried = is_hurried
        self.shell = None
        self.shell_log = None
        self.bus = None
        self._keyboard = None

    def _start_x_server(self):
        """Instead of it, what the Shell needs before there is a session bus: a login manager."""
        for name in ("GDK_BACKEND", "QT_QPA_PLATFORM", "GTK_MODULES", "GTK_THEME"):
            del self.env[name]
        self.env |= {
            "XDG_SESSION_TYPE": "wayland",
            "XDG_CURRENT_DESKTOP": "GNOME",
            "XDG_SESSION_CLASS": "user",
            "GSETTINGS_BACKEND": "keyfile",
            "SHELL": "/bin/sh",
        }
        # What this process was started with belongs to another desktop.
        for name in ("DISPLAY", "WAYLAND_DISPLAY", "SWAYSOCK", "QT_QPA_PLATFORM"):
            os.environ.pop(name, None)
        self._write_settings()
        if self._program is not None:
            self.install_extension()
        if self._has_search:
            self._install_search()

    def _install_search(self):
        """As the package does it, for the program under test."""
        share = self._private / "share"
        for folder in ("applications", "gnome-shell/search-providers"):
            (share / folder).mkdir(parents=True)
        entry = (_SOURCES / "packaging" / _APPLICATION).read_text(encoding="utf-8")
        (share / "applications" / _APPLICATION).write_text(
            entry.replace("Exec=kelpa ", f"Exec={self._program} "), encoding="utf-8")
        shutil.copy(_SOURCES / "data" / "search" / _PROVIDER, share / "gnome-shell" / "search-providers")
        self.env["XDG_DATA_DIRS"] = f"{share}:{self._share_without_searches()}"

    def _share_without_searches(self):
        """What the system shares, except for the other programs that answer the Shell's search."""
        share = self._private / "system-share"
        system = pathlib.Path("/usr/share")
        (share / "gnome-shell").mkdir(parents=True)
        for each in [*system.iterdir(), *(system / "gnome-shell").iterdir()]:
            link = share / each.relative_to(system)
            if link != share / "gnome-shell" and each.name != "search-providers":
                link.symlink_to(each)
        return share

    def _write_settings(self):
        folder = pathlib.Path(self.env["XDG_CONFIG_HOME"]) / "glib-2.0" / "settings"
        folder.mkdir(parents=True)
        (folder / "keyfile").write_text(_SETTINGS.format(
            enabled=[UUID] if self._is_enabled else "@as []",
            animations=str(self._has_animations).lower()), encoding="utf-8")

    def extension_folder(self):
        return pathlib.Path(self.env["XDG_DATA_HOME"]) / "gnome-shell" / "extensions" / UUID

    def install_extension(self):
        form = "modules" if self._has_modules() else "old"
        subprocess.run(["/usr/bin/python3", "-B", str(_GENERATOR), form, str(self._program), "0",
                        str(self.extension_folder())], check=True, env=self.env)

    def _has_modules(self):
        version = self.run(*self._of_shell("gnome-shell", "--version")).split()[-1]
        return int(version.split(".")[0]) >= 45

    def _of_shell(self, *command):
        """The command line of a program of the system that the Shell is of."""
        return other_root.inside(command) if self._is_other else command

    def _connect(self):
        system, self.env["DBUS_SYSTEM_BUS_ADDRESS"] = self._start_reporting(
            ["dbus-daemon", f"--config-file={self._private / 'bus.conf'}", "--nofork", "--nopidfile",
             "--print-address={fd}"],
            "the system bus's address")
        os.environ["DBUS_SYSTEM_BUS_ADDRESS"] = self.env["DBUS_SYSTEM_BUS_ADDRESS"]
        self.start("/usr/bin/python3", "-m", "dbusmock", "--system", "--template", "logind")
        wait_until("there is a login manager", lambda: self.run(
            "gdbus", "call", "--system", "-d", "org.freedesktop.login1", "-o", "/org/freedesktop/login1",
            "-m", "org.freedesktop.DBus.Peer.Ping", check=False).startswith("()"))
        self.bus = Gio.bus_get_sync(Gio.BusType.SESSION)
        self.start_shell()

    def start_shell(self):
        self.shell_log = self._log("gnome-shell")
        self.env.pop("WAYLAND_DISPLAY", None)
        command = self._of_shell(
            "gnome-shell", "--headless", "--wayland", "--unsafe-mode", "--virtual-monitor", "1600x1000",
            "--wayland-display", "wayland-shell", *self._xwayland)
        self.shell = self.start(*command, log=self.shell_log)
        wait_until("the Shell runs scripts", self._is_ready, 60)
        self.env["WAYLAND_DISPLAY"] = "wayland-shell"
        if not self._xwayland:
            for name in ("DISPLAY", "XAUTHORITY"):
                self.env[name] = self.evaluate(f"imports.gi.GLib.getenv('{name}')")
        os.environ.update(self.env)
        # It starts with the overview.
        self.hide_overview()
        self._keyboard = Keyboard(self.bus)

    def start_notifications(self):
        """The part of the Shell that programs show notifications by, which the bus starts in a session."""
        form = ["-m"] if self._has_modules() else []
        self.start(*self._of_shell("gjs", *form, "/usr/share/gnome-shell/org.gnome.Shell.Notifications"))
        wait_until("notifications are shown", lambda: self.has_name("org.freedesktop.Notifications"))
        # What the Shell itself says at its start, which the person takes away.
        self.evaluate("Main.messageTray.getSources().forEach(source => source.destroy())")
        wait_until("no notification is shown", lambda: not self.evaluate("!!Main.messageTray._banner"))

    def kill_shell(self):
        """Ends it at once, as a crash would."""
        self.shell.kill()
        self.shell.wait()
        for socket in pathlib.Path(self.env["XDG_RUNTIME_DIR"]).glob("wayland-*"):
            socket.unlink()

    def _is_ready(self):
        if self.shell.poll() is not None:
            raise AssertionError(f"the Shell ended at once, see {self.shell_log}")
        try:
            return self.evaluate("Main.layoutManager._startingUp") is False
        except GLib.Error:
            return False

    def start_window_manager(self):
        pass

    def has_window_manager(self):
        return True

    # The Shell, asked for more than it lets programs know

    def evaluate(self, script):
        """The value of a script in the Shell."""
        reply = self.bus.call_sync(
            "org.gnome.Shell", "/org/gnome/Shell", "org.gnome.Shell", "Eval",
            GLib.Variant("(s)", (script,)), None, Gio.DBusCallFlags.NO_AUTO_START, 20000, None)
        succeeded, value = reply.unpack()
        if not succeeded:
            raise AssertionError(f"the Shell fails to run {script!r}: {value}")
        return json.loads(value) if value else None

    def hide_overview(self):
        self.evaluate("Main.overview.hide()")
        wait_until("the overview is closed",
                   lambda: self.evaluate("Main.overview.visible") is False)

    def is_overview_open(self):
        return self.evaluate("Main.overview.visible")

    def settle_search(self):
        """Some seconds after a change in the person's configuration, as the Shell's own start makes, it reads
        anew who answers its search, and drops what it shows. Makes such a change and waits for that."""
        self.evaluate(f"{_SEARCHED}.forEach(provider => {{ provider.isOld = true; }})")
        (pathlib.Path(self.env["XDG_CONFIG_HOME"]) / "mimeapps.list").touch()
        wait_until("the Shell has read anew who answers its search",
                   lambda: self.evaluate(f"{_SEARCHED}.some(provider => !provider.isOld)"))

    def searched_text(self):
        """What stands in the overview's field."""
        return self.evaluate("Main.overview.searchEntry.get_text()")

    def search_results(self):
        """Title and description of each of Kelpa's results that the overview shows."""
        return self.evaluate(_RESULTS)

    def set_extension(self, is_enabled):
        """Switches the extension on or off, as the person's settings do."""
        method = "EnableExtension" if is_enabled else "DisableExtension"
        self.bus.call_sync(
            "org.gnome.Shell", "/org/gnome/Shell", "org.gnome.Shell.Extensions",
            method, GLib.Variant("(s)", (UUID,)), None, Gio.DBusCallFlags.NONE, 20000, None)
        wait_until(f"the extension is {'on' if is_enabled else 'off'}",
                   lambda: self.has_name("org.kelpa.Windows") is is_enabled)

    def set_lock(self, is_locked):
        """Lets the extensions rest and go on, as the locked screen does."""
        self.evaluate(f"Main.sessionMode.{'push' if is_locked else 'pop'}Mode('unlock-dialog')")
        wait_until("the extension follows the lock",
                   lambda: self.has_name("org.kelpa.Windows") is not is_locked)

    def own_connection(self):
        """Another connection of this process to the session bus."""
        return Gio.DBusConnection.new_for_address_sync(
            self.env["DBUS_SESSION_BUS_ADDRESS"],
            Gio.DBusConnectionFlags.AUTHENTICATION_CLIENT | Gio.DBusConnectionFlags.MESSAGE_BUS_CONNECTION,
            None, None)

    def has_name(self, name):
        return self.bus.call_sync(
            "org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus", "NameHasOwner",
            GLib.Variant("(s)", (name,)), None, Gio.DBusCallFlags.NONE, 20000, None).unpack()[0]

    def check_shell(self):
        """No error of the extension's in the Shell's log, and no use of what is no more there. The Shell's
        own errors are about services that this session lacks."""
        lines = self.shell_log.read_text(encoding="utf-8", errors="replace").splitlines()
        found = [line for line, following in zip(lines, [*lines[1:], ""])
                 if any(complaint in line for complaint in _COMPLAINTS)
                 and not (self._is_hurried and self._is_of_a_script(line, following))]
        if found:
            raise AssertionError("the Shell complained:\n" + "\n".join(found[:20]))

    @staticmethod
    def _is_of_a_script(line, following):
        """Whether a script used what is gone: its calls follow, and each of the extension's is a complaint itself."""
        return "disposed" in line and UUID not in line and following.startswith("== Stack trace")

    # Windows

    def _rows(self):
        return self.evaluate(_LIST)

    def windows(self):
        return [Window(number, title, pid) for number, title, pid, _ in self._rows()]

    def active_window(self):
        return next((number for number, _, _, is_focused in self._rows() if is_focused), 0)

    def stacking(self):
        """The numbers of the windows from the lowest to the uppermost."""
        return [number for number, *_ in self._rows()]

    def on_window(self, window, script):
        """Runs a statement about the window in the Shell, which calls it `window`."""
        self.evaluate(f"(window => {{ {script}; }})(global.get_window_actors().map(actor => actor.meta_window)"
                      f".find(window => window.get_id() === {window.number}))")

    def activate(self, window):
        self.on_window(window, "Main.activateWindow(window)")

    def close(self, window):
        self.on_window(window, "window.delete(global.get_current_time())")

    def start_foot(self, title, *command):
        """A terminal with a fixed title; without a command it waits for input for ever."""
        terminal = self.start("foot", "--config=/dev/null", "--title", title, *(command or ("cat",)))
        self.wait_for_window(title)
        return terminal

    def start_typed(self, title, path):
        """A terminal that writes every line that is typed into it to the file."""
        return self.start_foot(title, "sh", "-c", f"cat > {path}")

    def wait_for_active(self, window):
        wait_until(f"{window} is active", lambda: self.active_window() == window.number)

    # Input

    @property
    def keyboard(self):
        return self._keyboard

    def type(self, text):
        self._keyboard.type(text)

    def key(self, *names):
        self._keyboard.key(*names)

    def screenshot(self, path):
        self.bus.call_sync(
            "org.gnome.Shell.Screenshot", "/org/gnome/Shell/Screenshot", "org.gnome.Shell.Screenshot",
            "Screenshot", GLib.Variant("(bbs)", (False, False, str(path))), None,
            Gio.DBusCallFlags.NONE, 20000, None)
        return path
