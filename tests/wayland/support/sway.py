"""A private sway without a screen, on which scenarios do what they do on X11."""

import json
import os
import pathlib

from harness import Desktop, Window
from processes import wait_until
from virtual_keyboard import VirtualKeyboard

_CONFIG = """output HEADLESS-1 resolution 1600x1000
default_border none
workspace_layout tabbed
"""


class SwayDesktop(Desktop):
    """The same as a desktop on X11, as far as a scenario needs it. A window's number is that of its
    container. The person has a binding for the key `binding`, which makes the file `marker`. There
    is an X server for programs on X11 where that is asked for."""

    def __init__(self, directory, binding=None, has_xwayland=False):
        super().__init__(directory)
        self._binding = binding
        self._xwayland = "enable" if has_xwayland else "disable"
        self.marker = self.directory / "marker"
        self._sway = None
        self._keyboard = None

    def _start_x_server(self):
        """Instead of it, once the environment stands and before there are buses."""
        for name in ("GDK_BACKEND", "QT_QPA_PLATFORM"):
            del self.env[name]
        self.env |= {
            "XDG_SESSION_TYPE": "wayland",
            "XDG_CURRENT_DESKTOP": "sway",
            # That of the user may let nobody in.
            "SHELL": "/bin/sh",
            "WLR_BACKENDS": "headless",
            "WLR_RENDERER": "pixman",
            "WLR_LIBINPUT_NO_DEVICES": "1",
        }
        # What this process was started with belongs to another desktop.
        for name in ("DISPLAY", "WAYLAND_DISPLAY", "SWAYSOCK", "QT_QPA_PLATFORM"):
            os.environ.pop(name, None)
        self._config = self._private / "sway.conf"
        included = self._private / "included.conf"
        self._config.write_text(f"{_CONFIG}xwayland {self._xwayland}\ninclude {included}\n", encoding="utf-8")
        included.write_text(
            f"bindsym {self._binding} exec touch {self.marker}\n" if self._binding else "", encoding="utf-8")
        self.start_sway()

    def start_sway(self):
        runtime = pathlib.Path(self.env["XDG_RUNTIME_DIR"])
        for name in ("WAYLAND_DISPLAY", "SWAYSOCK"):
            self.env.pop(name, None)
        self._sway = self.start("sway", "-c", self._config)
        socket = runtime / f"sway-ipc.{os.getuid()}.{self._sway.pid}.sock"
        wait_until("sway is there", socket.exists)
        display = wait_until("sway has a display", lambda: next(
            (path.name for path in runtime.glob("wayland-*") if path.suffix != ".lock"), None))
        self.env |= {"SWAYSOCK": str(socket), "WAYLAND_DISPLAY": display}
        wait_until("sway replies", lambda: self._tree() is not None)
        os.environ.update(self.env)
        self._keyboard = VirtualKeyboard()

    def bind(self, keys):
        """Gives the keys a binding of the person's, in the configuration itself."""
        with self._config.open("a", encoding="utf-8") as config:
            config.write(f"bindsym {keys} exec touch {self.marker}\n")
        self.command("reload")

    def kill_sway(self):
        """Ends sway at once, as a crash would."""
        self._sway.kill()
        self._sway.wait()
        for socket in pathlib.Path(self.env["XDG_RUNTIME_DIR"]).glob("wayland-*"):
            socket.unlink()

    def sway_process(self):
        return self._sway.pid

    def _connect(self):
        pass

    def start_window_manager(self):
        pass

    def has_window_manager(self):
        return True

    def message(self, *words):
        """What sway replies to swaymsg's arguments, from JSON; None where there is no reply."""
        try:
            return json.loads(self.run("swaymsg", "--raw", *words, check=False))
        except ValueError:
            return None

    def command(self, text):
        """Whether sway has carried out the command."""
        return all(result["success"] for result in self.message(text))

    def _tree(self):
        return self.message("--type", "get_tree")

    def _nodes(self):
        """The containers that are windows."""
        def walk(node):
            if "shell" in node:
                yield node
            for child in node["nodes"] + node["floating_nodes"]:
                yield from walk(child)

        return list(walk(self._tree()))

    def windows(self):
        return [Window(node["id"], node["name"] or "", node["pid"]) for node in self._nodes()]

    def active_window(self):
        return next((node["id"] for node in self._nodes() if node["focused"]), 0)

    def activate(self, window):
        self.command(f"[con_id={window.number}] focus")

    def close(self, window):
        self.command(f"[con_id={window.number}] kill")

    def start_foot(self, title, *command):
        """A terminal with a fixed title; without a command it waits for input for ever."""
        terminal = self.start("foot", "--config=/dev/null", "--title", title, *(command or ("cat",)))
        self.wait_for_window(title)
        return terminal

    def wait_for_active(self, window):
        wait_until(f"{window} is active", lambda: self.active_window() == window.number)

    def type(self, text):
        self._keyboard.type(text)

    def key(self, *names):
        self._keyboard.key(*names)

    def screenshot(self, path):
        self.run("grim", path)
        return path
