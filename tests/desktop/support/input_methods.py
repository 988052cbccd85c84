"""Input methods of the desktop, as they are installed there: what is typed goes to them first."""

import pathlib

from processes import wait_until

_FCITX_PROFILE = """[Groups/0]
Name=Default
Default Layout=us
DefaultIM=chewing

[Groups/0/Items/0]
Name=keyboard-us
Layout=

[Groups/0/Items/1]
Name=chewing
Layout=

[GroupOrder]
0=Default
"""
_FCITX_CONFIG = """[Behavior]
ActiveByDefault=True
ShareInputState=All
"""
# The keyboard stays as it is, or a key that is pressed meanwhile is another.
_FCITX_KEYBOARD = "Allow Overriding System XKB Settings=False\n"
# They look for programs that this desktop does not have.
_FCITX_WITHOUT = "wayland,waylandim,kimpanel,notifications,notificationitem,imselector"
_HANGUL_SETTINGS = """[org/freedesktop/ibus/engine/hangul]
initial-input-mode='hangul'
"""


class Chewing:
    """Chinese by the sounds of its syllables, through Fcitx. Programs find it by `env`."""

    env = {"QT_IM_MODULE": "fcitx"}

    def __init__(self, desktop):
        self._desktop = desktop
        folder = pathlib.Path(desktop.env["XDG_CONFIG_HOME"]) / "fcitx5"
        (folder / "conf").mkdir(parents=True)
        (folder / "profile").write_text(_FCITX_PROFILE)
        (folder / "config").write_text(_FCITX_CONFIG)
        (folder / "conf" / "xcb.conf").write_text(_FCITX_KEYBOARD)
        desktop.start("fcitx5", f"--disable={_FCITX_WITHOUT}")
        wait_until("the input method is there", lambda: self._ask().strip().isdigit())

    def _ask(self, *question):
        return self._desktop.run("fcitx5-remote", *question, check=False)

    def await_field(self):
        """Until what is typed into the field with the keyboard goes to it."""
        wait_until("the field is written in Chinese", lambda: self._ask("-n").strip() == "chewing")

    def candidates(self):
        """x, y, width and height of the window that shows what can be chosen; None without one."""
        from Xlib import X, error

        for window in self._desktop.x.screen().root.query_tree().children:
            try:
                owner = window.get_wm_class()
                if owner and owner[0] == "fcitx" and window.get_attributes().map_state == X.IsViewable:
                    place = window.get_geometry()
                    return place.x, place.y, place.width, place.height
            except error.BadWindow:
                continue
        return None


class Hangul:
    """Korean, through IBus. Programs find it by `env`."""

    env = {"QT_IM_MODULE": "ibus"}

    def __init__(self, desktop):
        self._desktop = desktop
        folder = pathlib.Path(desktop.env["XDG_CONFIG_HOME"]) / "glib-2.0" / "settings"
        folder.mkdir(parents=True)
        (folder / "keyfile").write_text(_HANGUL_SETTINGS)
        desktop.start("env", "GSETTINGS_BACKEND=keyfile", "ibus-daemon", "--panel=disable",
                      "--emoji-extension=disable", "--config=/usr/libexec/ibus-memconf")
        wait_until("the input method is there",
                   lambda: "hangul" in desktop.run("ibus", "list-engine", check=False))

    def _engine(self, *wanted):
        return self._desktop.run("ibus", "engine", *wanted, check=False)

    def await_field(self):
        """Until what is typed into the field with the keyboard goes to it."""
        def is_chosen():
            self._engine("hangul")
            return self._engine().strip() == "hangul"

        wait_until("the field is written in Korean", is_chosen)
