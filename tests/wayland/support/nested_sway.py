"""A private sway whose outputs are windows of another one, so that they can be unplugged: a compositor
without a screen does not let go of its outputs in older versions."""

import pathlib

import other_root
from processes import wait_until
from sway import SwayDesktop

# The outputs that it begins with.
OUTPUTS = ("WL-1", "WL-2")


class NestedSwayDesktop(SwayDesktop):
    def start_sway(self):
        super().start_sway()
        self._outer = {name: self.env[name] for name in ("WAYLAND_DISPLAY", "SWAYSOCK")}
        runtime = pathlib.Path(self.env["XDG_RUNTIME_DIR"])
        before = set(runtime.iterdir())
        config = self._private / "inner.conf"
        config.write_text("default_border none\nworkspace_layout tabbed\nxwayland disable\n", encoding="utf-8")
        command = ["env", "-u", "SWAYSOCK", "WLR_BACKENDS=wayland", f"WLR_WL_OUTPUTS={len(OUTPUTS)}", "sway",
                   "-c", config]
        if self._root:
            command = other_root.command(self._root, self._private, self.directory, *command)
        self.start(*command)

        def new(pattern):
            return next((path for path in runtime.glob(pattern)
                         if path not in before and path.suffix != ".lock"), None)

        self.env["WAYLAND_DISPLAY"] = wait_until("the inner sway has a display", lambda: new("wayland-*")).name
        self.env["SWAYSOCK"] = str(wait_until("the inner sway is there", lambda: new("sway-ipc.*.sock")))
        wait_until("it has its outputs", lambda: set(self.outputs()) == set(OUTPUTS))
        self._attach()

    def outputs(self):
        """The names of those that show something."""
        return [each["name"] for each in self.message("--type", "get_outputs") or () if each["active"]]

    def unplug(self, output):
        self.run("env", *(f"{name}={value}" for name, value in self._outer.items()),
                 "swaymsg", f'[title="^wlroots - {output}$"] kill')
        wait_until(f"{output} is gone", lambda: output not in self.outputs())
