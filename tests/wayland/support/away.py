"""What is the same on every Wayland desktop of windows that a person does not see."""

import board as boards
import settings
from kelpa import Kelpa
from plain_windows import PlainWindows
from processes import wait_until

_WAITS = "A dialog waits for an answer"


def description_of(kelpa, title):
    """Gives what the card of the window says about it; empty while there is no card."""
    def description():
        card = kelpa.board.card(boards.UNSORTED, title)
        return card.node.description if card else ""

    return description


def a_card_says_that_a_dialog_of_its_window_waits(desktop, binary):
    path = desktop.directory / "board.sqlite"
    settings.write(path)
    plain = PlainWindows()
    owner = plain.open(b"Letter")
    plain.open(b"Mail")
    for title in ("Letter", "Mail"):
        desktop.wait_for_window(title)
    with Kelpa(desktop, binary, path) as kelpa:
        mail, letter = description_of(kelpa, "Mail"), description_of(kelpa, "Letter")
        wait_until("nothing waits", lambda: mail() and letter() and _WAITS not in mail() + letter())
        question = plain.open(b"Save changes?", parent=owner)
        wait_until("the card says that a dialog waits", lambda: _WAITS in letter())
        assert _WAITS not in mail()
        plain.close(question)
        plain.settle()
        wait_until("nothing waits any more", lambda: _WAITS not in letter())
    plain.end()
