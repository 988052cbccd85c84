"""GNOME's own portal starts a sandboxed Kelpa with the session."""

import pathlib
import shlex

import flatpaks
import settings
from gnome_portal import start_portal
from harness import on_desktop
from kelpa import Kelpa
from processes import wait_until
from session_start import choose_session_start


@on_desktop(is_enabled=False)
def in_a_sandbox_gnome_s_portal_starts_kelpa_with_the_session(desktop, binary):
    start_portal(desktop, remembers=True)
    path = desktop.directory / "board.sqlite"
    settings.write(path, goals=[("Taxes", [])])
    entry = pathlib.Path(desktop.env["XDG_CONFIG_HOME"]) / "autostart" / "org.kelpa.Kelpa.desktop"
    with Kelpa(desktop, flatpaks.within(desktop, binary), path) as kelpa:
        choose_session_start(desktop, kelpa)
        wait_until("the session is to start it", entry.exists)
        command, = (shlex.split(line.removeprefix("Exec="))
                    for line in entry.read_text(encoding="utf-8").splitlines() if line.startswith("Exec="))
        # The portal itself adds what starts the sandbox.
        assert pathlib.Path(command[0]).name == "flatpak" and command[1] == "run", command
        assert command[-4:] == ["org.kelpa.Kelpa", "--hidden", "--settings", str(path)], command
        choose_session_start(desktop, kelpa)
        wait_until("the session is not to start it any more", lambda: not entry.exists())
