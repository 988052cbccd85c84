"""The session starts Kelpa where it runs in a sandbox."""

import pathlib

import flatpaks
import settings
from kelpa import Kelpa
from portals import SessionPortal
from processes import wait_until


def _choose(desktop, kelpa, entry):
    kelpa.focus()
    desktop.key("Menu")
    kelpa.click(lambda: kelpa.board.menu_item(entry), f"the entry {entry!r}")
    wait_until("the menu is closed", lambda: kelpa.board.menu_item(entry) is None)


def in_a_sandbox_the_portal_starts_kelpa_with_the_session(desktop, binary):
    portal = SessionPortal(desktop, agrees=False)
    path = desktop.directory / "board.sqlite"
    settings.write(path, goals=(("Taxes", []),), is_auto_sorting=False)
    sandboxed = flatpaks.within(desktop, binary)
    with Kelpa(desktop, sandboxed, path) as kelpa:
        _choose(desktop, kelpa, "Start with the session")
        wait_until("the refusal is told", lambda: kelpa.board.has_text(
            "The desktop does not let Kelpa start with the session"))
        portal.agree(True)
        _choose(desktop, kelpa, "Start with the session")
        asked, command = portal.await_call("RequestBackground", 2)
        assert asked and command[1:] == ["--hidden", "--settings", str(path)], command
        assert pathlib.Path(command[0]).name == pathlib.Path(binary).name, command
    autostart = pathlib.Path(desktop.env["XDG_CONFIG_HOME"]) / "autostart"
    assert not autostart.exists(), "and by it alone"
    with Kelpa(desktop, sandboxed, path) as kelpa:
        _choose(desktop, kelpa, "Start with the session")
        asked, _ = portal.await_call("RequestBackground", 3)
        assert not asked, "the next start knows that it was on"


def in_a_snap_the_entry_starts_kelpa_and_no_portal_is_asked(desktop, binary):
    portal = SessionPortal(desktop)
    path = desktop.directory / "board.sqlite"
    settings.write(path, goals=(("Taxes", []),), is_auto_sorting=False)
    # The folder of a snap is that of its program.
    with Kelpa(desktop, binary, path, env={"SNAP": str(pathlib.Path(binary).parent)}) as kelpa:
        _choose(desktop, kelpa, "Start with the session")
        entry = pathlib.Path(desktop.env["XDG_CONFIG_HOME"]) / "autostart/org.kelpa.Kelpa.desktop"
        wait_until("the entry is there", entry.exists)
        _choose(desktop, kelpa, "Start with the session")
        wait_until("the entry is gone", lambda: not entry.exists())
    assert not portal.calls("RequestBackground")
