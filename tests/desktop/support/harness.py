"""A private desktop: an X server, a session bus, the accessibility bus, a window manager and real
programs. One for each process, since the accessibility library looks for its bus only once."""

import os
import pathlib
import shutil
import subprocess
import tempfile
import time

import processes
from processes import wait_until

# No service directories: a toolkit that looks for a portal learns at once that there is none, and
# does not wait for one to start.
_BUS_CONFIG = """<!DOCTYPE busconfig PUBLIC "-//freedesktop//DTD D-Bus Bus Configuration 1.0//EN"
 "http://www.freedesktop.org/standards/dbus/1.0/busconfig.dtd">
<busconfig>
  <type>session</type>
  <keep_umask/>
  <listen>unix:dir={directory}</listen>
  <auth>EXTERNAL</auth>
  <policy context="default">
    <allow send_destination="*" eavesdrop="true"/>
    <allow eavesdrop="true"/>
    <allow own="*"/>
  </policy>
</busconfig>
"""

# Numbers of displays that belong to one scenario each, by its process; others are found from 0 on.
_FIRST_DISPLAY = 1000
_DISPLAYS = 50000

_ACCESSIBILITY_LAUNCHERS = (
    "/usr/libexec/at-spi-bus-launcher",
    "/usr/lib/at-spi2-core/at-spi-bus-launcher",
)


class Window:
    """A client window as the window manager lists it."""

    def __init__(self, number, title, pid):
        self.number = number
        self.title = title
        self.pid = pid

    def __repr__(self):
        return f"Window(0x{self.number:x}, {self.title!r}, {self.pid})"


def on_desktop(**wanted):
    """Marks a scenario that needs another desktop than the usual one; see Desktop."""

    def mark(scenario):
        scenario.desktop = wanted
        return scenario

    return mark


class Desktop:
    """`with Desktop(directory) as desktop:` — logs and pictures go to `directory`. It can be one
    whose window manager is not there yet, or whose X server lacks an extension."""

    def __init__(self, directory, size="1600x1000x24", has_window_manager=True, missing_extension=None):
        self.directory = pathlib.Path(directory)
        self._size = size
        self._has_window_manager = has_window_manager
        self._x_arguments = ["-extension", missing_extension] if missing_extension else []
        self._private = None
        self._x = None
        self.x_server = None
        self.session_bus = None
        self._logs = 0
        self.env = {}

    def __enter__(self):
        processes.adopt_orphans()
        shutil.rmtree(self.directory, ignore_errors=True)
        self.directory.mkdir(parents=True)
        # Socket paths are short of room, so this is not below the build directory.
        self._private = pathlib.Path(tempfile.mkdtemp(prefix="kelpa-desktop-"))
        try:
            self._start()
        except BaseException:
            self.__exit__(None, None, None)
            raise
        return self

    def __exit__(self, *_exception):
        if self._x is not None:
            self._x.close()
            self._x = None
        processes.end_all()
        shutil.rmtree(self._private, ignore_errors=True)

    def _start(self):
        home = self._private / "home"
        for folder in (home, home / "config", home / "data", home / "cache", home / "run"):
            folder.mkdir(mode=0o700)
        self.env = {
            "PATH": os.environ.get("PATH", "/usr/bin:/bin"),
            "LANG": "C.UTF-8",
            "HOME": str(home),
            "XDG_CONFIG_HOME": str(home / "config"),
            "XDG_DATA_HOME": str(home / "data"),
            "XDG_CACHE_HOME": str(home / "cache"),
            "XDG_RUNTIME_DIR": str(home / "run"),
            "XDG_SESSION_TYPE": "x11",
            "GSETTINGS_BACKEND": "memory",
            "GTK_MODULES": "gail:atk-bridge",
            "GTK_THEME": "Adwaita",
            "GDK_BACKEND": "x11",
            "QT_QPA_PLATFORM": "xcb",
            "QT_ACCESSIBILITY": "1",
            "QT_LINUX_ACCESSIBILITY_ALWAYS_ON": "1",
            "NO_AT_BRIDGE": "0",
        }
        for name, value in os.environ.items():
            if name.startswith(("ASAN_", "UBSAN_", "TSAN_", "LSAN_", "QT_QUICK_", "LIBGL_")):
                self.env[name] = value
        self._start_x_server()
        config = self._private / "bus.conf"
        config.write_text(_BUS_CONFIG.format(directory=self._private), encoding="utf-8")
        self.session_bus, self.env["DBUS_SESSION_BUS_ADDRESS"] = self._start_reporting(
            ["dbus-daemon", f"--config-file={config}", "--nofork", "--nopidfile", "--print-address={fd}"],
            "the session bus's address",
        )
        # Kept for the libraries that this process itself uses.
        os.environ.update(self.env)
        launcher = next(path for path in _ACCESSIBILITY_LAUNCHERS if os.path.exists(path))
        self.start(launcher, "--launch-immediately")
        wait_until("the accessibility bus is there", self._has_accessibility_bus)
        self._connect()
        if self._has_window_manager:
            self.start_window_manager()

    def _start_x_server(self):
        # The next server has the same number: programs that outlive one, or are started again by a bus, would
        # otherwise come to a display of another scenario, which takes the lowest that is free.
        display = f":{_FIRST_DISPLAY + os.getpid() % _DISPLAYS}"
        self.x_server, number = self._start_reporting(
            ["Xvfb", display, "-displayfd", "{fd}", "-screen", "0", self._size, "-nolisten", "tcp", "-noreset",
             *self._x_arguments],
            "the X server's display number",
        )
        self.env["DISPLAY"] = f":{number}"

    def _connect(self):
        import Xlib.display

        self._x = Xlib.display.Display(self.env["DISPLAY"])

    def replace_x_server(self, while_there_is_none):
        """Ends the X server at once, as a crash would, and with it every program's connection; calls
        the function; starts another one with a window manager."""
        self._x.close()
        self._x = None
        self.x_server.kill()
        self.x_server.wait()
        while_there_is_none()
        self._start_x_server()
        os.environ["DISPLAY"] = self.env["DISPLAY"]
        self._connect()
        self.start_window_manager()

    def start_window_manager(self):
        self.start("openbox", "--sm-disable")
        wait_until("the window manager is there", self.has_window_manager)
        wait_until("the window manager manages windows", self._manages_windows)

    def _manages_windows(self):
        """It announces itself before it manages windows; one that comes in between may stay unlisted."""
        from Xlib import X

        probe = self._x.screen().root.create_window(0, 0, 10, 10, 0, X.CopyFromParent)
        probe.map()
        self._x.sync()
        deadline = time.monotonic() + 0.5
        while time.monotonic() < deadline and probe.id not in self._listed():
            time.sleep(0.02)
        is_listed = probe.id in self._listed()
        probe.destroy()
        self._x.sync()
        return is_listed and wait_until("the probe is gone", lambda: probe.id not in self._listed())

    def _listed(self):
        return self.property(self._x.screen().root, "_NET_CLIENT_LIST") or ()

    def _start_reporting(self, argv, what):
        """The program, and the line that it writes to the file descriptor {fd}."""
        reading, writing = os.pipe()
        try:
            argv = [word.replace("{fd}", str(writing)) for word in argv]
            program = processes.start(argv, self.env, self._log(argv[0]), pass_fds=(writing,))
        finally:
            os.close(writing)
        os.set_blocking(reading, False)
        text = b""

        def whole_line():
            nonlocal text
            try:
                text += os.read(reading, 4096)
            except BlockingIOError:
                pass
            if program.poll() is not None:
                raise AssertionError(f"{argv[0]} ended at once, see {self.directory}")
            return b"\n" in text

        try:
            wait_until(what, whole_line)
        finally:
            os.close(reading)
        return program, text.decode().splitlines()[0]

    def _has_accessibility_bus(self):
        return (
            subprocess.run(
                ["dbus-send", "--session", "--print-reply", "--dest=org.a11y.Bus", "/org/a11y/bus",
                 "org.a11y.Bus.GetAddress"],
                env=self.env, stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL,
                stderr=subprocess.DEVNULL, check=False, timeout=30,
            ).returncode
            == 0
        )

    def _log(self, program):
        self._logs += 1
        return self.directory / f"{self._logs:02}-{pathlib.Path(program).name}.log"

    # Programs

    def start(self, *argv, cwd=None, log=None):
        """Starts a program of the desktop and returns it as a Popen."""
        return processes.start(
            list(map(str, argv)), self.env, log or self._log(argv[0]), cwd=cwd or self.env["HOME"]
        )

    def start_xterm(self, title, *command, color="white"):
        """An xterm with a fixed title, when its command runs; without a command it waits for input
        for ever."""
        # A program that writes the title itself would change it.
        resources = ("-xrm", "*allowTitleOps: false", "-geometry", "60x15", "-bg", color)
        terminal = self.start("xterm", "-T", title, *resources, "-e", *(command or ("cat",)))
        # Asked to close before that, it misses it: until then it ignores a hang-up.
        wait_until(f"something runs in the terminal {title!r}",
                   lambda: processes.has_other_child(terminal.pid, "xterm"))
        return terminal

    def open_xterms(self, *titles):
        """Starts an xterm for each title, each once the window of the one before is listed, so that
        the last is on top. Their processes by title."""
        terminals = {}
        for title in titles:
            terminals[title] = self.start_xterm(title)
            self.wait_for_window(title)
        return terminals

    def open_window(self, title, width, height, window_class="window"):
        """A window of this process, of so many pixels; returns its X id when it is listed."""
        from Xlib import X

        window = self._x.screen().root.create_window(0, 0, width, height, 0, X.CopyFromParent)
        window.set_wm_name(title)
        window.set_wm_class(window_class, window_class)
        window.map()
        self._x.sync()
        return self.wait_for_window(title).number

    def open_dialog(self, title, owner):
        """A modal dialog of this process that belongs to the window `owner`; its window, when it is listed."""
        from Xlib import X, Xatom

        dialog = self._x.screen().root.create_window(0, 0, 200, 100, 0, X.CopyFromParent)
        dialog.set_wm_name(title)
        dialog.change_property(Xatom.WM_TRANSIENT_FOR, Xatom.WINDOW, 32, [owner])
        dialog.change_property(self._x.intern_atom("_NET_WM_STATE"), Xatom.ATOM, 32,
                               [self._x.intern_atom("_NET_WM_STATE_MODAL")])
        dialog.map()
        self._x.sync()
        self.wait_for_window(title)
        return dialog

    def run(self, *argv, check=True):
        """Runs a short command on the desktop and returns what it printed."""
        return subprocess.run(
            list(map(str, argv)), env=self.env, stdin=subprocess.DEVNULL, stdout=subprocess.PIPE,
            stderr=subprocess.STDOUT, check=check, timeout=120, text=True, errors="replace",
        ).stdout

    # The X server's view

    @property
    def x(self):
        """The connection of this process to the X server."""
        return self._x

    def property(self, window, name):
        """Value of a window's property; None when there is none or no such window."""
        from Xlib import X, error

        try:
            found = window.get_full_property(self._x.intern_atom(name), X.AnyPropertyType)
        except (error.BadWindow, error.BadAtom):
            return None
        return None if found is None else found.value

    def has_window_manager(self):
        return self.property(self._x.screen().root, "_NET_SUPPORTING_WM_CHECK") is not None

    def has_settings_manager(self):
        return self._x.get_selection_owner(self._x.intern_atom("_XSETTINGS_S0")) != 0

    def windows(self):
        """Every window that the window manager lists, oldest first."""
        numbers = self.property(self._x.screen().root, "_NET_CLIENT_LIST")
        return self._described([] if numbers is None else numbers)

    def windows_without_manager(self):
        """Every window that shows at the top, where no window manager lists or frames them. A program also
        has some there that it never shows."""
        return self._described(window.id for window in self._x.screen().root.query_tree().children
                               if self._is_viewable(window))

    @staticmethod
    def _is_viewable(window):
        from Xlib import X, error

        try:
            return window.get_attributes().map_state == X.IsViewable
        except (error.BadWindow, error.BadDrawable):
            return False

    def _described(self, numbers):
        found = []
        for number in numbers:
            window = self._x.create_resource_object("window", number)
            title = self.property(window, "_NET_WM_NAME") or self.property(window, "WM_NAME") or b""
            pid = self.property(window, "_NET_WM_PID")
            if isinstance(title, bytes):
                title = title.decode("utf-8", "replace")
            found.append(Window(number, title, int(pid[0]) if pid else 0))
        return found

    def wait_for_window(self, title, seconds=30.0):
        """The listed window whose title contains `title`."""

        def look():
            return next((window for window in self.windows() if title in window.title), None)

        return wait_until(f"a window titled {title!r} is shown", look, seconds)

    def active_window(self):
        """X id of the active window, 0 for none."""
        value = self.property(self._x.screen().root, "_NET_ACTIVE_WINDOW")
        return int(value[0]) if value else 0

    def stacking(self):
        """X ids of the listed windows from the lowest to the uppermost."""
        numbers = self.property(self._x.screen().root, "_NET_CLIENT_LIST_STACKING")
        return [] if numbers is None else list(numbers)

    def activate(self, window):
        """Brings the window forward, as a click in a task list does."""
        self.run("wmctrl", "-i", "-a", hex(window.number))

    def close(self, window):
        """Asks the window to close, as a click on its close button does."""
        self.run("wmctrl", "-i", "-c", hex(window.number))

    # Input

    def hover(self, x, y):
        self.run("xdotool", "mousemove", x, y)

    def click(self, x, y, button=1):
        self.run("xdotool", "mousemove", x, y, "click", button)

    def drag(self, start, end):
        """Drags what is at `start` to `end` and lets it go there."""
        self.drag_over(start, end)
        wait_until("a drag has begun", self.is_dragging, seconds=10)
        self.let_go()
        wait_until("the drag has ended", lambda: not self.is_dragging())

    def pull(self, start, end):
        """The same with what cannot be dragged."""
        self.drag_over(start, end)
        if self.is_dragging():
            raise AssertionError(f"what is at {start} can be dragged")
        self.let_go()

    def is_dragging(self):
        """Whether the picture of what is dragged floats at the pointer, which may hold it by its edge
        or have it hanging a little below, beside it."""
        from Xlib import X, error

        root = self._x.screen().root
        pointer = root.query_pointer()
        for window in root.query_tree().children:
            try:
                attributes, place = window.get_attributes(), window.get_geometry()
            except (error.BadWindow, error.BadDrawable):
                continue
            if (attributes.override_redirect and attributes.map_state == X.IsViewable
                    and -20 <= pointer.root_x - place.x <= place.width + 1
                    and -20 <= pointer.root_y - place.y <= place.height + 1):
                return True
        return False

    def drag_over(self, start, end):
        """Presses at `start` and moves in small steps to `end`, without releasing. The pauses are
        what a hand takes; without them a toolkit sees one jump and starts no drag."""
        (x0, y0), (x1, y1) = start, end
        steps = ["mousemove", x0, y0, "sleep", "0.2", "mousedown", "1", "sleep", "0.2"]
        for distance in (4, 8, 14, 22):
            steps += ["mousemove", x0 + distance, y0 + distance // 2, "sleep", "0.05"]
        for part in range(1, 11):
            steps += ["mousemove", x0 + (x1 - x0) * part // 10, y0 + (y1 - y0) * part // 10,
                      "sleep", "0.05"]
        steps += ["mousemove", x1 + 1, y1 + 1, "sleep", "0.2", "mousemove", x1, y1, "sleep", "0.2"]
        self.run("xdotool", *steps)

    def move_through(self, *places):
        """Moves what is being dragged from one place to the next."""
        for x, y in places:
            self.run("xdotool", "mousemove", x - 3, y - 3, "sleep", "0.1", "mousemove", x, y,
                     "sleep", "0.1")

    def let_go(self):
        self.run("xdotool", "mouseup", "1")

    def pixel(self, x, y):
        """What is drawn at a point of the screen, as bytes."""
        from Xlib import X

        return self._x.screen().root.get_image(x, y, 1, 1, X.ZPixmap, 0xFFFFFFFF).data

    def pointer(self):
        """What the pointer looks like: its size and its pixels."""
        from Xlib.ext import xfixes

        self._x.xfixes_query_version()
        image = xfixes.get_cursor_image(self._x.screen().root, None)
        return image.width, image.height, tuple(image.cursor_image)

    def type(self, text):
        self.run("xdotool", "type", "--delay", "15", "--", text)

    def key(self, *names):
        self.run("xdotool", "key", "--delay", "15", *names)

    def clipboard(self):
        """The text that a program would paste."""
        return self.run("/usr/bin/python3", pathlib.Path(__file__).with_name("clipboard_text.py"))

    def screenshot(self, path):
        """Writes a picture of the whole screen."""
        self.run("import", "-window", "root", path)
        return path
