"""Windows that a person does not see: on another virtual desktop, or behind a dialog that waits."""

import board as boards
import settings
from kelpa import Kelpa
from processes import wait_until

_WAITS = "A dialog waits for an answer"


def a_card_says_on_which_virtual_desktop_its_window_is(desktop, binary):
    path = desktop.directory / "board.sqlite"
    settings.write(path)
    desktop.open_xterms("Letter", "Mail")
    names = desktop.run("xprop", "-root", "-notype", "_NET_DESKTOP_NAMES").split('"')[1::2]
    with Kelpa(desktop, binary, path) as kelpa:
        mail, letter = _card(kelpa, "Mail"), _card(kelpa, "Letter")
        wait_until("no card says where its window is", lambda: "desktop" not in mail() + letter())
        number = desktop.wait_for_window("Mail").number
        desktop.run("wmctrl", "-i", "-r", hex(number), "-t", "1")
        wait_until("the card says where its window went", lambda: f"On desktop “{names[1]}”" in mail())
        assert "desktop" not in letter()
        # The person goes there, and leaves the other window behind.
        desktop.run("wmctrl", "-s", "1")
        wait_until("the card says where its window stayed",
                   lambda: f"On desktop “{names[0]}”" in letter())
        wait_until("the window is here", lambda: "desktop" not in mail())
        # -1 stands for all of them.
        desktop.run("xdotool", "set_desktop_for_window", desktop.wait_for_window("Letter").number, "-1")
        wait_until("the window is everywhere", lambda: "desktop" not in letter())


def a_card_says_that_a_dialog_of_its_window_waits(desktop, binary):
    path = desktop.directory / "board.sqlite"
    settings.write(path)
    desktop.open_xterms("Letter", "Mail")
    with Kelpa(desktop, binary, path) as kelpa:
        mail, letter = _card(kelpa, "Mail"), _card(kelpa, "Letter")
        wait_until("nothing waits", lambda: mail() and letter() and _WAITS not in mail() + letter())
        question = desktop.open_dialog("Save changes?", desktop.wait_for_window("Letter").number)
        wait_until("the card says that a dialog waits", lambda: _WAITS in letter())
        assert _WAITS not in mail()
        question.destroy()
        desktop.x.sync()
        wait_until("nothing waits any more", lambda: _WAITS not in letter())


def _card(kelpa, title):
    """What the card of the window says about it; empty while there is no card."""
    def description():
        card = kelpa.board.card(boards.UNSORTED, title)
        return card.node.description if card else ""

    return description
