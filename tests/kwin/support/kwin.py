"""A private KWin without a screen, on which scenarios do what they do on X11."""

import hashlib
import os
import pathlib
import shutil
import sys

import kwin_picture
import other_root
import processes
from activities import Activities
from fake_keyboard import FakeKeyboard
from harness import Desktop
from krunner import KRunner
from kwin_script import KwinScript
from launcher import Launcher
from plasma_settings import PlasmaSettings
from processes import wait_until

PROGRAM = pathlib.Path(__file__).resolve().parent / "plain_program.py"


# Only programs that ask for the service are served.
_ENTRY = """[Desktop Entry]
Type=Application
Name=Under test
Exec={path}
NoDisplay=true
X-KDE-DBUS-Restricted-Interfaces=org.kde.KWin.ScreenShot2
"""

# Without a menu KDE looks for no desktop entries.
_MENU = """<!DOCTYPE Menu>
<Menu><Name>Applications</Name><DefaultAppDirs/><DefaultDirectoryDirs/><Include><All/></Include></Menu>
"""


class Window:
    def __init__(self, row):
        self.number = row["id"]
        self.title = row["title"]
        self.pid = row["pid"]
        self.is_minimized = row["minimized"]

    def __repr__(self):
        return f"Window({self.number}, {self.title!r}, {self.pid})"


class KwinDesktop(Desktop):
    """The same as a desktop on X11, as far as a scenario needs it. A window's number is its UUID.
    KWin is that of `root`, a folder with another system, which sees those `folders` of this one, or this
    system's own. With `has_opengl` it draws as on a screen, by the processor, and so has pictures of windows
    for the programs that are `named`; with `has_xwayland` there is an X server for programs on X11, and with
    `has_activities` the service of KDE's activities."""

    def __init__(self, directory, root=None, folders=(), *, has_opengl=False, has_xwayland=False,
                 has_activities=False):
        super().__init__(directory)
        self._root = root
        self._folders = folders
        self._compositing = "O2" if has_opengl else "Q"
        self._xwayland = ["--xwayland"] if has_xwayland else []
        self._has_activities = has_activities
        self.activities = None
        self._kwin = None
        self._script = None
        self._keyboard = None

    def _start_x_server(self):
        """KWin needs the session bus, which comes after this."""
        for name in ("GDK_BACKEND", "QT_QPA_PLATFORM"):
            del self.env[name]
        self.env |= {"XDG_SESSION_TYPE": "wayland", "XDG_CURRENT_DESKTOP": "KDE"}
        # What this process was started with belongs to another desktop.
        for name in ("DISPLAY", "WAYLAND_DISPLAY", "SWAYSOCK", "QT_QPA_PLATFORM"):
            os.environ.pop(name, None)

    def _connect(self):
        pass

    def start_window_manager(self):
        # The installed file has a capability, without which a container refuses to start it.
        program = self._private / "kwin_wayland"
        if not program.exists():
            installed = self._root / "usr/bin/kwin_wayland" if self._root else shutil.which("kwin_wayland")
            shutil.copy(installed, program)
        self._script = KwinScript(self._private)
        if self._has_activities:
            self.activities = Activities(self, self._script)
        self.start_kwin()

    def start_kwin(self):
        runtime = pathlib.Path(self.env["XDG_RUNTIME_DIR"])
        environment = {"KWIN_COMPOSE": self._compositing, "KWIN_WAYLAND_NO_PERMISSION_CHECKS": "1",
                       "LIBGL_ALWAYS_SOFTWARE": "1"}
        menus = pathlib.Path(self.env["XDG_CONFIG_HOME"]) / "menus"
        menus.mkdir(exist_ok=True)
        (menus / "applications.menu").write_text(_MENU, encoding="utf-8")
        # KDE sees what comes into a folder, but no folder that comes.
        self._entries().mkdir(exist_ok=True)
        command = ["env", *(f"{name}={value}" for name, value in environment.items()),
                   self._private / "kwin_wayland", "--virtual", "--width", "1600", "--height", "1000",
                   "--socket", "wayland-kelpa", "--no-lockscreen", *self._xwayland]
        if self._root:
            command = other_root.command(self._root, self._private, self.directory, *self._folders, *command)
        self._kwin = self.start(*command)
        wait_until("KWin is there", lambda: (runtime / "wayland-kelpa").exists() and self._script.is_there())
        self.env["WAYLAND_DISPLAY"] = "wayland-kelpa"
        os.environ.update(self.env)

    def kill_kwin(self):
        """Ends KWin at once, as a crash would."""
        self._kwin.kill()
        self._kwin.wait()
        for path in pathlib.Path(self.env["XDG_RUNTIME_DIR"]).glob("wayland-*"):
            path.unlink()
        wait_until("its name is gone", lambda: not self._script.is_there())

    def has_window_manager(self):
        return True

    # Kelpa's script

    @staticmethod
    def script_of(path):
        """The name under which a Kelpa with that board has its script in KWin."""
        return "org.kelpa.Kelpa-" + hashlib.sha256(str(path).encode()).hexdigest()[:16]

    def has_script(self, path):
        return self._script.is_loaded(self.script_of(path))

    def unload_script(self, path):
        return self._script.unload(self.script_of(path))

    def start_scripts(self):
        self._script.scripting("start", None)

    # Its settings

    def reload_settings(self):
        self._script.call("/KWin", "org.kde.KWin", "reconfigure")

    def write_rule(self, app_id, **values):
        """One for windows of that program, as the system settings write it."""
        lines = {"Description": "Rule", "wmclass": app_id, "wmclasscomplete": "false", "wmclassmatch": "1", **values}
        path = pathlib.Path(self.env["XDG_CONFIG_HOME"]) / "kwinrulesrc"
        path.write_text("[General]\ncount=1\nrules=1\n\n[1]\n"
                        + "".join(f"{key}={value}\n" for key, value in lines.items()), encoding="utf-8")
        self.reload_settings()

    # Windows

    def _rows(self):
        return self._script.run(
            "report(all().map(each => ({id: String(each.internalId), title: each.caption, pid: each.pid,"
            " minimized: each.minimized, active: each.active})));")

    def windows(self):
        return [Window(row) for row in self._rows()]

    def window(self, number):
        return next((window for window in self.windows() if window.number == number), None)

    def active_window(self):
        return next((row["id"] for row in self._rows() if row["active"]), "")

    def change(self, window, statement):
        """Runs a statement about the window, which it calls `window`."""
        self._script.run(f'const window = find("{window.number}"); {statement}; report(true);')

    def entry_of(self, window):
        """The name of the desktop entry that KWin takes for its program's."""
        return self._script.run(f'report(String(find("{window.number}").desktopFileName));')

    def is_kept_above(self, window):
        return self._script.run(f'report(find("{window.number}").keepAbove);')

    def stacking(self):
        """The numbers of the windows from the lowest to the uppermost."""
        orders = dict(self._script.run("report(all().map(each => [String(each.internalId), each.stackingOrder]));"))
        return sorted(orders, key=orders.get)

    def activate(self, window):
        self.change(window, "if ('activeWindow' in workspace) workspace.activeWindow = window;"
                            " else workspace.activeClient = window")

    def close(self, window):
        self.change(window, "window.closeWindow()")

    def wait_for_window(self, title):
        return wait_until(f"the window {title!r} is there", lambda: next(
            (window for window in self.windows() if window.title == title), None))

    def wait_for_active(self, window):
        wait_until(f"{window} is active", lambda: self.active_window() == window.number)

    def start_program(self, title, app_id="plain"):
        """A program of one window, which ends when that is closed."""
        program = self.start(sys.executable, "-B", PROGRAM, title, app_id)
        self.wait_for_window(title)
        return program

    def start_typed(self, title, path):
        """A program that writes every line that is typed into it to the file."""
        self._keys()
        program = self.start(sys.executable, "-B", PROGRAM.with_name("typed_program.py"), title, path)
        self.wait_for_window(title)
        return program

    def x_display(self):
        """What programs need to be told for windows on KWin's X server."""
        server = wait_until("the X server is there", lambda: processes.find("Xwayland", "-rootless"))
        words = pathlib.Path(f"/proc/{server}/cmdline").read_text(encoding="utf-8").split("\0")
        told = {"DISPLAY": next(word for word in words if word.startswith(":"))}
        if "-auth" in words:
            told["XAUTHORITY"] = words[words.index("-auth") + 1]
        return told

    # Input

    def _keys(self):
        if self._keyboard is None:
            self._keyboard = FakeKeyboard()
        return self._keyboard

    def type(self, text):
        self._keys().type(text)

    def key(self, *names):
        self._keys().key(*names)

    # Pictures

    def _entries(self):
        return pathlib.Path(self.env["XDG_DATA_HOME"]) / "applications"

    def name_in_entry(self, program):
        """Writes a desktop entry by which KWin gives the program, which it sees, pictures of windows."""
        path = pathlib.Path(program).resolve()
        (self._entries() / f"{path.name}.desktop").write_text(_ENTRY.format(path=path), encoding="utf-8")

    def picture(self, window):
        """What the window shows, as KWin takes it for the process of the scenario."""
        return kwin_picture.take(self._script.bus, window.number)

    # Shortcuts

    def _of_shortcuts(self, method, arguments=None):
        return self._script.call("/component/kwin", "org.kde.kglobalaccel.Component", method, arguments,
                                 name="org.kde.kglobalaccel")

    def shortcuts(self):
        """The names of those that the system settings show for KWin."""
        return self._of_shortcuts("shortcutNames")[0]

    def give_key(self, name, key):
        """Gives it a key, which Qt numbers so, as the system settings do."""
        keys = self._script_arguments("(asa(ai))", (["kwin", name, "KWin", name], [([key, 0, 0, 0],)]))
        self._script.call("/kglobalaccel", "org.kde.KGlobalAccel", "setForeignShortcutKeys", keys,
                          name="org.kde.kglobalaccel")

    def use_shortcut(self, name):
        self._of_shortcuts("invokeShortcut", self._script_arguments("(s)", (name,)))

    def add_launcher(self, *keys):
        return Launcher(self._script, *keys)

    # Plasma's settings

    def add_settings(self, has_schemes=False):
        return PlasmaSettings(self, self._script.bus, has_schemes)

    # Plasma's search

    def has_name(self, name):
        """Whether somebody on the bus has that name."""
        return self._script.call("/", "org.freedesktop.DBus", "NameHasOwner", self._script_arguments("(s)", (name,)),
                                 name="org.freedesktop.DBus")[0]

    def add_krunner(self, is_kelpa_off=False):
        return KRunner(self, self._root, self._private, is_kelpa_off)

    # Desktops

    def add_desktop(self):
        self._script.call("/VirtualDesktopManager", "org.kde.KWin.VirtualDesktopManager", "createDesktop",
                          self._script_arguments("(us)", (1, "Second")))

    def remove_desktop(self):
        """The second one."""
        self._script.run(
            "if (typeof workspace.desktops === 'number') workspace.desktops = 1;"
            " else workspace.removeDesktop(workspace.desktops[1]); report(true);")

    def desktop_of(self, window):
        """The number of its desktop, from 1."""
        return self._script.run(
            f'const window = find("{window.number}"); report(window.desktops'
            " ? Array.from(workspace.desktops).findIndex(each => each.id === window.desktops[0].id) + 1"
            " : window.desktop);")

    def move(self, window, number):
        """Since Plasma 6 a window has a list of desktops."""
        self.change(window, f"if (typeof window.desktop === 'number') window.desktop = {number};"
                            f" else window.desktops = [workspace.desktops[{number - 1}]]")

    def current_desktop(self):
        return self._script.call("/KWin", "org.kde.KWin", "currentDesktop")[0]

    def show_desktop(self, number):
        self._script.call("/KWin", "org.kde.KWin", "setCurrentDesktop",
                          self._script_arguments("(i)", (number,)))
        wait_until("the desktop is shown", lambda: self.current_desktop() == number)

    @staticmethod
    def _script_arguments(signature, values):
        from gi.repository import GLib

        return GLib.Variant(signature, values)
