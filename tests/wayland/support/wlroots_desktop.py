"""The start of a private compositor without a screen that is built on wlroots."""

import os
import pathlib

import other_root
from harness import Desktop
from processes import wait_until
from virtual_keyboard import VirtualKeyboard


class WlrootsDesktop(Desktop):
    """The same as a desktop on X11, as far as a scenario needs it. The compositor is that of `root`, a
    folder with another system, or this system's own."""

    # Of the session, as its login manager would call it.
    name = ""

    def __init__(self, directory, root=None):
        super().__init__(directory)
        self._root = root
        self._keyboard = None

    @property
    def has_own_root(self):
        return self._root is not None

    def _start_x_server(self):
        """Instead of it, once the environment stands and before there are buses."""
        for name in ("GDK_BACKEND", "QT_QPA_PLATFORM"):
            del self.env[name]
        self.env |= {
            "XDG_SESSION_TYPE": "wayland",
            "XDG_CURRENT_DESKTOP": self.name,
            # That of the user may let nobody in.
            "SHELL": "/bin/sh",
            "WLR_BACKENDS": "headless",
            "WLR_RENDERER": "pixman",
            "WLR_LIBINPUT_NO_DEVICES": "1",
        }
        # What this process was started with belongs to another desktop.
        for name in ("DISPLAY", "WAYLAND_DISPLAY", "SWAYSOCK", "QT_QPA_PLATFORM"):
            os.environ.pop(name, None)
        self._start_compositor()

    def _start_compositor(self):
        raise NotImplementedError

    def _launch(self, *command):
        """Starts the compositor and returns its process, once it has a display."""
        self.env.pop("WAYLAND_DISPLAY", None)
        if self._root:
            command = other_root.command(self._root, self._private, self.directory, *command)
        compositor = self.start(*command)
        runtime = pathlib.Path(self.env["XDG_RUNTIME_DIR"])
        self.env["WAYLAND_DISPLAY"] = wait_until(f"{self.name} has a display", lambda: next(
            (path.name for path in runtime.glob("wayland-*") if path.suffix != ".lock"), None))
        return compositor

    def _attach(self):
        """Makes this process a client of it, once its environment is complete."""
        os.environ.update(self.env)
        self._keyboard = VirtualKeyboard()

    def _connect(self):
        pass

    def start_window_manager(self):
        pass

    def has_window_manager(self):
        return True

    def screenshot(self, path):
        self.run("grim", path)
        return path
