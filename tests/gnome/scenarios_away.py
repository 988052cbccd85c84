"""Windows that a person does not see: on another workspace, or behind a dialog that waits."""

import away
import board as boards
import settings
from assistant import Assistant
from kelpa import Kelpa
from processes import wait_until

a_card_says_that_a_dialog_of_its_window_waits = away.a_card_says_that_a_dialog_of_its_window_waits

_NAME_WORKSPACES = """new imports.gi.Gio.Settings({schema_id: 'org.gnome.desktop.wm.preferences'})
    .set_strv('workspace-names', ['Writing', 'Reading'])"""


def a_card_says_on_which_workspace_its_window_is(desktop, binary):
    path = desktop.directory / "board.sqlite"
    settings.write(path)
    for title in ("Letter", "Mail"):
        desktop.start_foot(title)
    window = desktop.wait_for_window("Mail")
    with Kelpa(desktop, binary, path) as kelpa:
        mail, letter = away.description_of(kelpa, "Mail"), away.description_of(kelpa, "Letter")
        wait_until("no card says where its window is",
                   lambda: mail() and letter() and "desktop" not in mail() + letter())
        desktop.on_window(window, "window.change_workspace_by_index(1, true)")
        wait_until("the card says where its window went", lambda: "On desktop “2”" in mail())
        assert "desktop" not in letter()
        desktop.evaluate(_NAME_WORKSPACES)
        wait_until("the workspaces have names", lambda: "On desktop “Reading”" in mail())
        Assistant(desktop, kelpa).press(lambda: kelpa.board.card(boards.UNSORTED, "Mail").node,
                                        "the card is pressed")
        desktop.wait_for_active(window)
        assert desktop.evaluate("global.workspace_manager.get_active_workspace_index()") == 1
        wait_until("the window is here", lambda: "desktop" not in mail())
        wait_until("the other one has stayed behind", lambda: "On desktop “Writing”" in letter())
