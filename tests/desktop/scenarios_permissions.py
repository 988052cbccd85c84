"""Desktops that lack what Kelpa needs."""

import board as boards
import settings
from harness import on_desktop
from kelpa import Kelpa
from processes import wait_until


@on_desktop(has_window_manager=False)
def the_banner_goes_when_a_window_manager_comes(desktop, binary):
    path = desktop.directory / "board.sqlite"
    settings.write(path, goals=[("Only goal", ["Only todo"])])
    desktop.start_xterm("Terminal")
    with Kelpa(desktop, binary, path) as kelpa:
        wait_until("the banner tells of the previews",
                   lambda: kelpa.board.has_text(boards.NEEDS_SCREEN_CAPTURE))
        wait_until("the banner tells of windows to be opened",
                   lambda: kelpa.board.has_text(boards.NEEDS_ACCESSIBILITY))
        assert kelpa.board.cards() == {}
        # No desktop of Linux has settings for it.
        assert not kelpa.board.has_text("Open System Settings")
        # Goals and todos need no permission.
        kelpa.click(*kelpa.todo_button("Only goal", "Only todo"))
        kelpa.wait_for_todos("Only goal", [("Only todo", boards.IN_PROGRESS)])
        desktop.start_window_manager()
        wait_until("the banner is gone", lambda: not _has_banner(kelpa))
        kelpa.wait_for_card(boards.UNSORTED, "Terminal")
        kelpa.wait_for_previews(boards.UNSORTED)
        number = desktop.wait_for_window("Terminal").number
        kelpa.click_card(boards.UNSORTED, "Terminal")
        wait_until("the window is active", lambda: desktop.active_window() == number)


@on_desktop(missing_extension="Composite")
def without_composite_the_banner_tells_of_the_previews_alone(desktop, binary):
    path = desktop.directory / "board.sqlite"
    settings.write(path, goals=[("Only goal", [])])
    desktop.open_xterms("Terminal")
    with Kelpa(desktop, binary, path) as kelpa:
        wait_until("the banner tells of the previews",
                   lambda: kelpa.board.has_text(boards.NEEDS_SCREEN_CAPTURE))
        wait_until("the banner tells of nothing else",
                   lambda: not kelpa.board.has_text(boards.NEEDS_ACCESSIBILITY))
        assert kelpa.board.cards() == {}
        kelpa.create_goal("Another goal")


def _has_banner(kelpa):
    return (kelpa.board.has_text(boards.NEEDS_SCREEN_CAPTURE)
            or kelpa.board.has_text(boards.NEEDS_ACCESSIBILITY))
