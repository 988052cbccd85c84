"""More of what the board does where it knows of no compositor but the protocols: sway, whose IPC is hidden
from Kelpa."""

import away
import board as boards
import settings
import terminals
from assistant import Assistant
from harness import on_desktop
from kelpa import Kelpa

_WITHOUT_IPC = {"SWAYSOCK": ""}


def a_card_brings_its_window_on_another_workspace_forward(desktop, binary):
    path = desktop.directory / "board.sqlite"
    settings.write(path)
    desktop.start_foot("Elsewhere")
    window = desktop.wait_for_window("Elsewhere")
    assert desktop.command("workspace 2")
    with Kelpa(desktop, binary, path, env=_WITHOUT_IPC) as kelpa:
        kelpa.wait_for_card(boards.UNSORTED, "Elsewhere")
        desktop.wait_for_active(kelpa.window)
        assert "desktop" not in away.description_of(kelpa, "Elsewhere")(), "nothing tells where a window is"
        Assistant(desktop, kelpa).press(lambda: kelpa.board.card(boards.UNSORTED, "Elsewhere").node,
                                        "the card is pressed")
        desktop.wait_for_active(window)


def another_run_of_the_compositor_never_mixes_numbers(desktop, binary):
    terminals.check_another_run_mixes_nothing(desktop, binary, _WITHOUT_IPC)


def a_goal_opens_a_terminal_and_has_it_without_knowing_its_process(desktop, binary):
    terminals.check_goal_opens_one(desktop, binary, "foot", _WITHOUT_IPC)


@on_desktop(has_xwayland=True)
def windows_on_x11_are_cards_by_the_protocols_alone(desktop, binary):
    terminals.check_one_on_x11_is_a_card(desktop, binary, _WITHOUT_IPC)


def a_command_for_a_key_of_the_compositor_brings_the_board_forward(desktop, binary):
    path = desktop.directory / "board.sqlite"
    settings.write(path)
    desktop.start_foot("In front")
    terminal = desktop.wait_for_window("In front")
    with Kelpa(desktop, binary, path, env=_WITHOUT_IPC) as kelpa:
        kelpa.wait_for_card(boards.UNSORTED, "In front")
        assert desktop.command(f"bindsym ctrl+k exec {binary} --show --settings {path}")
        for _ in range(2):
            desktop.activate(terminal)
            desktop.wait_for_active(terminal)
            desktop.key("ctrl+k")
            desktop.wait_for_active(kelpa.window)


def without_a_session_bus_a_second_start_says_that_kelpa_runs(desktop, binary):
    path = desktop.directory / "board.sqlite"
    settings.write(path)
    del desktop.env["DBUS_SESSION_BUS_ADDRESS"]
    first = desktop.start("env", "SWAYSOCK=", binary, "--settings", path)
    window = desktop.wait_for_window(boards.WINDOW)
    said = desktop.run("env", "SWAYSOCK=", binary, "--settings", path, check=False)
    assert f"Kelpa already runs with the board in {path}" in said, said
    assert len(desktop.windows()) == 1, desktop.windows()
    desktop.close(window)
    assert first.wait(timeout=30) == 0, first.returncode
