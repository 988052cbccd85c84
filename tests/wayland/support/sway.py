"""A private sway without a screen, on which scenarios do what they do on X11."""

import json
import os
import pathlib
import signal

from harness import Window
from processes import wait_until
from wlroots_desktop import WlrootsDesktop

_CONFIG = """output HEADLESS-1 resolution 1600x1000
default_border none
workspace_layout tabbed
"""


class SwayDesktop(WlrootsDesktop):
    """A window's number is that of its container. The person has a binding for the key `binding`, which
    makes the file `marker`. There is an X server for programs on X11 where that is asked for."""

    name = "sway"

    def __init__(self, directory, root=None, binding=None, has_xwayland=False):
        super().__init__(directory, root)
        # Newer ones refuse to show titles that are no text.
        self.is_newer = False
        self._binding = binding
        self._xwayland = "enable" if has_xwayland else "disable"
        self.marker = self.directory / "marker"
        self._sway = None

    def _start_compositor(self):
        self._config = self._private / "sway.conf"
        included = self._private / "included.conf"
        self._config.write_text(f"{_CONFIG}xwayland {self._xwayland}\ninclude {included}\n", encoding="utf-8")
        included.write_text(
            f"bindsym {self._binding} exec touch {self.marker}\n" if self._binding else "", encoding="utf-8")
        self.start_sway()

    def start_sway(self):
        self.env.pop("SWAYSOCK", None)
        self._sway = self._launch("sway", "-c", self._config)
        runtime = pathlib.Path(self.env["XDG_RUNTIME_DIR"])
        self.env["SWAYSOCK"] = str(
            wait_until("sway is there", lambda: next(runtime.glob("sway-ipc.*.sock"), None)))
        version = wait_until("sway replies", lambda: self.message("--type", "get_version"))
        self.is_newer = (version["major"], version["minor"]) >= (1, 10)
        self._attach()

    def bind(self, keys):
        """Gives the keys a binding of the person's, in the configuration itself."""
        with self._config.open("a", encoding="utf-8") as config:
            config.write(f"bindsym {keys} exec touch {self.marker}\n")
        self.command("reload")

    def kill_sway(self):
        """Ends sway at once, as a crash would."""
        os.kill(self.sway_process(), signal.SIGKILL)
        self._sway.wait()
        for pattern in ("wayland-*", "sway-ipc.*"):
            for socket in pathlib.Path(self.env["XDG_RUNTIME_DIR"]).glob(pattern):
                socket.unlink()

    def sway_process(self):
        # Of another root, it is a child of what has entered that. Its socket is named after it.
        return int(self.env["SWAYSOCK"].split(".")[-2])

    def x_display(self):
        """The name of its X server, which sway alone knows."""
        name = self.directory / "display"
        self.command(f"exec printenv DISPLAY > {name}")
        return wait_until("its name is known",
                          lambda: name.exists() and name.read_text(encoding="utf-8").strip())

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

    def stacking(self):
        """The numbers of the windows that show, from the lowest to the uppermost: floating windows are above
        the others, of which a stack of tabs shows one."""
        return [node["id"] for node in self._nodes() if node["visible"]]

    def rectangle_of(self, number):
        """x, y, width and height of that window on the screen, without decorations; None when it is
        gone."""
        for node in self._nodes():
            if node["id"] == number:
                outside, inside = node["rect"], node["window_rect"]
                return {"x": outside["x"] + inside["x"], "y": outside["y"] + inside["y"],
                        "width": inside["width"], "height": inside["height"]}
        return None

    def activate(self, window):
        self.command(f"[con_id={window.number}] focus")

    def close(self, window):
        self.command(f"[con_id={window.number}] kill")

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

    def type(self, text):
        self._keyboard.type(text)

    def key(self, *names):
        self._keyboard.key(*names)
