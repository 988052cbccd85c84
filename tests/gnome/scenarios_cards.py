"""What the real program does with the cards of a GNOME session's windows."""

import board as boards
import settings
from assistant import Assistant
from kelpa import Kelpa
from processes import wait_until


def a_card_has_its_picture_brings_its_window_forward_and_closes_its_program(desktop, binary):
    path = desktop.directory / "board.sqlite"
    settings.write(path)
    desktop.start_foot("First terminal")
    other = desktop.start_foot("Second terminal")
    window = desktop.wait_for_window("First terminal")
    with Kelpa(desktop, binary, path) as kelpa:
        assistant = Assistant(desktop, kelpa)
        for title in ("First terminal", "Second terminal"):
            kelpa.wait_for_card(boards.UNSORTED, title)
        desktop.wait_for_active(kelpa.window)
        kelpa.wait_for_previews(boards.UNSORTED)

        # Out of the overview, too.
        desktop.evaluate("Main.overview.show()")
        wait_until("the overview is open", desktop.is_overview_open)
        assistant.press(lambda: kelpa.board.card(boards.UNSORTED, "First terminal").node,
                        "the card is pressed")
        desktop.wait_for_active(window)
        wait_until("the overview is closed", lambda: not desktop.is_overview_open())

        def button():
            found = kelpa.board.card(boards.UNSORTED, "Second terminal")
            return found and found.node.find(boards.BUTTON_ROLES,
                                             lambda name: name == boards.CLOSE_PROCESS)[0]

        assistant.press(button, "the second is closed")
        wait_until("its program has ended", lambda: other.poll() is not None)
        kelpa.focus()
        wait_until("its card is gone",
                   lambda: kelpa.board.card(boards.UNSORTED, "Second terminal") is None)
        assert kelpa.board.card(boards.UNSORTED, "First terminal")


def _open_in_front(desktop, title):
    """A window is listed before it is active: who activates another one at once has it taken again."""
    desktop.start_foot(title)
    desktop.wait_for_active(desktop.wait_for_window(title))


def while_the_extension_is_off_the_board_keeps_its_goals_and_then_goes_on(desktop, binary):
    path = desktop.directory / "board.sqlite"
    settings.write(path, goals=[("Release", [])])
    desktop.start_foot("Assigned")
    with Kelpa(desktop, binary, path) as kelpa:
        assistant = Assistant(desktop, kelpa)
        kelpa.wait_for_card(boards.UNSORTED, "Assigned")
        assistant.press_button(boards.ADD_WINDOWS, "Release")
        assistant.press(lambda: assistant.board.choice("Foot: Assigned"), "it is chosen")
        assistant.press_button("Add 1 windows")
        kelpa.wait_for_card("Release", "Assigned")
        # As a locked screen does.
        desktop.set_extension(False)
        _open_in_front(desktop, "Opened meanwhile")
        desktop.set_extension(True)
        kelpa.focus()
        kelpa.wait_for_card(boards.UNSORTED, "Opened meanwhile")
        kelpa.wait_for_card("Release", "Assigned")
        _open_in_front(desktop, "Opened afterwards")
        kelpa.focus()
        kelpa.wait_for_card(boards.UNSORTED, "Opened afterwards")
        kelpa.quit()
        assert settings.StoredBoard(settings.read(path)).window_counts == {"Release": 1}
