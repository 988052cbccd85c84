"""What the session starts by itself, as far as each desktop of Wayland is alike: the entry that Kelpa writes
is run in the session's environment."""

import pathlib
import shlex
import time

import settings
from assistant import Assistant
from kelpa import Kelpa
from processes import wait_until

_START = "Start with the session"


def check_session_starts_kelpa(desktop, binary, call):
    """The person chooses it in the board's menu; the next session's Kelpa shows nothing until `call`, which is
    tried until the board shows, and then has the keyboard."""
    entry = pathlib.Path(desktop.env["XDG_CONFIG_HOME"]) / "autostart" / "org.kelpa.Kelpa.desktop"
    path = desktop.directory / "board.sqlite"
    settings.write(path, goals=[("Taxes", [])])
    with Kelpa(desktop, binary, path) as kelpa:
        choose_session_start(desktop, kelpa)
        wait_until("the session is to start it", entry.exists)
        kelpa.quit()
    command, = (line.removeprefix("Exec=") for line in entry.read_text(encoding="utf-8").splitlines()
                if line.startswith("Exec="))
    program, *arguments = shlex.split(command)
    assert arguments == ["--hidden", "--settings", str(path)], arguments
    desktop.start_foot("In front")
    desktop.wait_for_active(desktop.wait_for_window("In front"))
    hidden = Kelpa(desktop, program, path, arguments=["--hidden"])
    hidden.begin()

    def comes():
        hidden.check_alive()
        call()
        return hidden.shown_window()

    hidden.window = wait_until("the board comes when it is called", comes, 60, pause=0.5)
    desktop.wait_for_active(hidden.window)
    hidden.await_board()
    hidden.wait_for_goals("Taxes")
    choose_session_start(desktop, hidden)
    wait_until("the session is not to start it any more", lambda: not entry.exists())
    desktop.key("ctrl+q")
    assert hidden.wait() == 0
    hidden.check_output()


def choose_session_start(desktop, kelpa):
    """Switches it on or off in the board's menu."""
    assistant = Assistant(desktop, kelpa)
    kelpa.focus()

    def is_open():
        return kelpa.board.menu_item(_START) is not None

    def opens():
        # What had the keyboard before may still have it.
        if not is_open():
            desktop.key("Menu")
            time.sleep(0.5)
        return is_open()

    wait_until("the menu is open", opens)
    assistant.choose(_START)
    wait_until("the menu is closed", lambda: not is_open())
