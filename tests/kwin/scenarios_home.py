"""KWin knows Kelpa as any other program of the session, and Kelpa goes on when KWin reads its settings again."""

import board as boards
import settings
from assistant import Assistant
from kelpa import Kelpa
from processes import wait_until

_APP = "org.kelpa.Kelpa"


def _board(desktop):
    path = desktop.directory / "board.sqlite"
    settings.write(path)
    return path


def the_board_has_the_name_of_kelpa_s_desktop_entry_and_rules_for_it_apply(desktop, binary):
    path = _board(desktop)
    desktop.start_program("Other")
    with Kelpa(desktop, binary, path) as kelpa:
        kelpa.wait_for_card(boards.UNSORTED, "Other")
        other = desktop.wait_for_window("Other")
        # By which the session finds what to start again, and the task bar its icon.
        assert desktop.entry_of(kelpa.window) == _APP
        assert not desktop.is_kept_above(kelpa.window)
        desktop.write_rule(_APP, above="true", aboverule="2")
        wait_until("the rule applies", lambda: desktop.is_kept_above(kelpa.window))
        assert not desktop.is_kept_above(other)
        # Also to the window of the next start.
        kelpa.quit()
        kelpa.start()
        wait_until("the rule applies again", lambda: desktop.is_kept_above(kelpa.window))


def kwin_reads_its_settings_again_and_windows_are_followed_as_before(desktop, binary):
    path = _board(desktop)
    with Kelpa(desktop, binary, path) as kelpa:
        desktop.start_program("Before")
        kelpa.wait_for_card(boards.UNSORTED, "Before")
        desktop.reload_settings()
        # As it does when the person switches scripts on and off.
        desktop.start_scripts()
        desktop.start_program("Afterwards")
        kelpa.wait_for_card(boards.UNSORTED, "Afterwards")
        assert desktop.has_script(path)
        window = desktop.wait_for_window("Before")
        Assistant(desktop, kelpa).press(lambda: kelpa.board.card(boards.UNSORTED, "Before").node,
                                        "the card is pressed")
        desktop.wait_for_active(window)
