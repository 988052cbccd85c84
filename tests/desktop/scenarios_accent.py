"""The interface has the accent colour of the desktop, while that has one."""

import os
import pathlib
import signal

import settings
from harness import on_desktop
from kelpa import Kelpa
from processes import wait_until

_PORTAL = pathlib.Path(__file__).parent / "support" / "portal.py"
_OWN, _OWN_DARK = "2563eb", "2f6be4"


@on_desktop(size="1280x800x24")
def the_accent_of_the_desktop_is_followed(desktop, binary):
    path = desktop.directory / "board.sqlite"
    settings.write(path, goals=[("Ship release 0.1", ["Write the release notes"])])
    desktop.env["QT_QUICK_BACKEND"] = "software"
    portal = desktop.start("/usr/bin/python3", _PORTAL, "--accents=#ed5b00,#9141ac,#c88800")

    def tell(number):
        os.kill(portal.pid, number)

    with Kelpa(desktop, binary, path) as kelpa:
        kelpa.focus()
        button = wait_until("the board is there", lambda: kelpa.board.button("New goal"))

        def ground():
            """Of the button, beside its text."""
            x, y, _, height = button.frame()
            blue, green, red = desktop.pixel(x + 6, y + height // 2)[:3]
            return f"{red:02x}{green:02x}{blue:02x}"

        def shows(color):
            desktop.hover(1279, 799)
            wait_until(f"the button is {color}", lambda: ground() == color)

        # Orange, which is too light for white text.
        shows("ca4c00")
        # Purple, as it is; in the dark a little lighter, to be seen among dark cards.
        tell(signal.SIGHUP)
        shows("9141ac")
        tell(signal.SIGUSR1)
        shows("9a4ab5")
        tell(signal.SIGHUP)
        shows("9f6b00")
        tell(signal.SIGHUP)
        shows(_OWN_DARK)
        tell(signal.SIGUSR2)
        shows(_OWN)
