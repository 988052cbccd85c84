"""Windows that a person does not see: on another virtual desktop, or behind a dialog that waits."""

import away
import board as boards
import settings
from assistant import Assistant
from kelpa import Kelpa
from processes import wait_until

a_card_says_that_a_dialog_of_its_window_waits = away.a_card_says_that_a_dialog_of_its_window_waits


def a_card_says_on_which_virtual_desktop_its_window_is(desktop, binary):
    path = desktop.directory / "board.sqlite"
    settings.write(path)
    desktop.add_desktop()
    for title in ("Letter", "Mail"):
        desktop.start_program(title)
    window = desktop.wait_for_window("Mail")
    with Kelpa(desktop, binary, path) as kelpa:
        mail, letter = away.description_of(kelpa, "Mail"), away.description_of(kelpa, "Letter")
        wait_until("no card says where its window is",
                   lambda: mail() and letter() and "desktop" not in mail() + letter())
        desktop.move(window, 2)
        wait_until("the card says where its window went", lambda: "On desktop “Second”" in mail())
        assert "desktop" not in letter()
        Assistant(desktop, kelpa).press(lambda: kelpa.board.card(boards.UNSORTED, "Mail").node,
                                        "the card is pressed")
        desktop.wait_for_active(window)
        assert desktop.current_desktop() == 2
        wait_until("the window is here", lambda: "desktop" not in mail())
        wait_until("the other one has stayed behind", lambda: "On desktop" in letter())
