"""Desktops that lack what Kelpa needs."""

import pathlib

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
        wait_until("the banner tells of the window manager",
                   lambda: kelpa.board.has_text(boards.NEEDS_WINDOW_MANAGER))
        _check_is_all_that_is_missing(kelpa, boards.NEEDS_WINDOW_MANAGER)
        assert kelpa.board.cards() == {}
        assert not kelpa.board.has_text(boards.OPEN_SETTINGS)
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
def without_composite_the_banner_tells_of_that_alone(desktop, binary):
    path = desktop.directory / "board.sqlite"
    settings.write(path, goals=[("Only goal", [])])
    desktop.open_xterms("Terminal")
    with Kelpa(desktop, binary, path) as kelpa:
        wait_until("the banner tells of the extension",
                   lambda: kelpa.board.has_text(boards.NEEDS_COMPOSITE))
        _check_is_all_that_is_missing(kelpa, boards.NEEDS_COMPOSITE)
        assert kelpa.board.cards() == {}
        kelpa.create_goal("Another goal")


@on_desktop(has_window_manager=False)
def the_banner_opens_settings_where_a_program_has_them(desktop, binary):
    opened = desktop.directory / "opened"
    applications = pathlib.Path(desktop.env["XDG_DATA_HOME"]) / "applications"
    applications.mkdir()
    (applications / "settings.desktop").write_text(
        "[Desktop Entry]\nType=Application\nName=Settings\n"
        f"MimeType=x-scheme-handler/x-apple.systempreferences;\nExec=touch {opened} %u\n",
        encoding="utf-8")
    (applications / "mimeinfo.cache").write_text(
        "[MIME Cache]\nx-scheme-handler/x-apple.systempreferences=settings.desktop;\n",
        encoding="utf-8")
    path = desktop.directory / "board.sqlite"
    settings.write(path)
    with Kelpa(desktop, binary, path) as kelpa:
        wait_until("settings are offered", lambda: kelpa.board.button(boards.OPEN_SETTINGS)).press()
        wait_until("they are opened", opened.exists)
        # Somebody has to close its window.
        desktop.start_window_manager()
        wait_until("the banner is gone", lambda: not _has_banner(kelpa))


_ALL = (boards.NEEDS_SCREEN_CAPTURE, boards.NEEDS_ACCESSIBILITY, boards.NEEDS_WINDOW_MANAGER,
        boards.NEEDS_COMPOSITE)


def _has_banner(kelpa):
    return any(kelpa.board.has_text(text) for text in _ALL)


def _check_is_all_that_is_missing(kelpa, expected):
    others = [text for text in _ALL if text != expected and kelpa.board.has_text(text)]
    assert others == [], others
