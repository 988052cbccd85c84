"""Where windows are, and what becomes of the board when the places themselves change: workspaces, outputs,
their scale, and the configuration of sway."""

import away
import board as boards
import settings
from assistant import Assistant
from harness import on_desktop
from kelpa import Kelpa
from nested_sway import OUTPUTS, NestedSwayDesktop
from processes import wait_until

_OUTPUT = "HEADLESS-1"


def _is_away(description, workspace):
    return lambda: f"On desktop “{workspace}”" in description()


def _is_here(description):
    return lambda: description() and "desktop" not in description()


def _press(desktop, kelpa, title):
    Assistant(desktop, kelpa).press(lambda: kelpa.board.card(boards.UNSORTED, title).node,
                                    f"the card {title!r} is pressed")


def _focused_workspace(desktop):
    return next(each["name"] for each in desktop.message("--type", "get_workspaces") if each["focused"])


def _outputs(desktop):
    """The scale of each output that shows something, by its name."""
    return {each["name"]: each["scale"] for each in desktop.message("--type", "get_outputs") if each["active"]}


def a_card_says_on_which_workspace_its_window_is(desktop, binary):
    path = desktop.directory / "board.sqlite"
    settings.write(path)
    for title in ("Letter", "Mail"):
        desktop.start_foot(title)
    window = desktop.wait_for_window("Mail")
    with Kelpa(desktop, binary, path) as kelpa:
        mail, letter = away.description_of(kelpa, "Mail"), away.description_of(kelpa, "Letter")
        wait_until("no card says where its window is",
                   lambda: _is_here(mail)() and _is_here(letter)())
        assert desktop.command(f"[con_id={window.number}] move container to workspace 2")
        wait_until("the card says where its window went", _is_away(mail, "2"))
        assert _is_here(letter)()
        assert desktop.command("rename workspace 2 to Reading")
        wait_until("the workspace has another name", _is_away(mail, "Reading"))
        _press(desktop, kelpa, "Mail")
        desktop.wait_for_active(window)
        assert _focused_workspace(desktop) == "Reading"
        # Back on its own workspace, the board is drawn again.
        kelpa.focus()
        wait_until("the window is elsewhere again", _is_away(mail, "Reading"))


@on_desktop(kind=NestedSwayDesktop)
def unplugged_outputs_leave_their_windows_to_the_others(desktop, binary):
    path = desktop.directory / "board.sqlite"
    settings.write(path)
    for title in ("Letter", "Mail"):
        desktop.start_foot(title)
    window = desktop.wait_for_window("Mail")
    with Kelpa(desktop, binary, path) as kelpa:
        mail = away.description_of(kelpa, "Mail")
        wait_until("nothing is elsewhere", _is_here(mail))
        own, other = sorted(OUTPUTS, key=lambda output: output != _output_of_workspace(desktop))
        assert desktop.command(f"[con_id={window.number}] move container to output {other}")
        name = wait_until("the window is on the other output",
                          lambda: _workspace_of(desktop, other))
        wait_until("what another output shows is not elsewhere", _is_here(mail))
        desktop.unplug(other)
        kelpa.focus()
        wait_until("its workspace is behind that of the board", _is_away(mail, name))
        _press(desktop, kelpa, "Mail")
        desktop.wait_for_active(window)
        kelpa.focus()
        # Another one comes, and that of the board goes.
        assert desktop.command("create_output")
        wait_until("there is another output", lambda: len(desktop.outputs()) == 2)
        desktop.unplug(own)
        desktop.start_foot("Opened afterwards")
        kelpa.focus()
        for title in ("Letter", "Mail", "Opened afterwards"):
            kelpa.wait_for_card(boards.UNSORTED, title)
        _press(desktop, kelpa, "Mail")
        desktop.wait_for_active(window)


def _output_of_workspace(desktop):
    return next(each["output"] for each in desktop.message("--type", "get_workspaces") if each["focused"])


def _workspace_of(desktop, output):
    """The name of the workspace that the output shows, when it has a window."""
    return next((each["name"] for each in desktop.message("--type", "get_workspaces")
                 if each["output"] == output and each["visible"] and each["representation"]), None)


def the_board_follows_the_scale_of_its_output(desktop, binary):
    path = desktop.directory / "board.sqlite"
    settings.write(path)
    desktop.start_foot("Letter")
    window = desktop.wait_for_window("Letter")
    with Kelpa(desktop, binary, path) as kelpa:
        kelpa.wait_for_card(boards.UNSORTED, "Letter")

        def lower_edge():
            board = kelpa.board.group("Board").frame()
            return board[1] + board[3]

        before = lower_edge()

        def scale_to(scale):
            assert desktop.command(f"output {_OUTPUT} scale {scale}")
            wait_until(f"the output has the scale {scale}", lambda: _outputs(desktop)[_OUTPUT] == scale)

        def await_board(scale):
            wait_until("the board has as many points as there are",
                       lambda: abs(lower_edge() - before / scale) < 20)

        for scale in (2, 1, 1.5, 2, 1.25, 1):
            scale_to(scale)
            await_board(scale)
            _press(desktop, kelpa, "Letter")
            desktop.wait_for_active(window)
            kelpa.focus()
        # Its new size and that of the screen arrive in either order while the board is busy with the last ones.
        for scale in (1.25, 2) * 10:
            scale_to(scale)
            await_board(scale)


def after_a_reload_windows_are_followed_as_before(desktop, binary):
    path = desktop.directory / "board.sqlite"
    settings.write(path, goals=[("Release", [])])
    desktop.start_foot("Letter")
    window = desktop.wait_for_window("Letter")
    with Kelpa(desktop, binary, path) as kelpa:
        kelpa.wait_for_card(boards.UNSORTED, "Letter")
        Assistant(desktop, kelpa).assign("Release", "Foot: Letter")
        kelpa.wait_for_card("Release", "Letter")
        for title in ("First", "Second"):
            assert desktop.command("reload")
            desktop.start_foot(title)
            kelpa.focus()
            kelpa.wait_for_card(boards.UNSORTED, title)
            kelpa.wait_for_card("Release", "Letter")
        desktop.close(window)
        wait_until("its card is gone", lambda: kelpa.board.card("Release", "Letter") is None)


def a_second_seat_takes_nothing_from_the_first(desktop, binary):
    _check_second_seat(desktop, binary, {})


def a_second_seat_takes_nothing_from_the_first_by_the_protocols_alone(desktop, binary):
    _check_second_seat(desktop, binary, {"SWAYSOCK": ""})


def _check_second_seat(desktop, binary, env):
    path = desktop.directory / "board.sqlite"
    settings.write(path)
    for title in ("Letter", "Mail"):
        desktop.start_foot(title)
    window = desktop.wait_for_window("Letter")
    with Kelpa(desktop, binary, path, env=env) as kelpa:
        kelpa.wait_for_card(boards.UNSORTED, "Letter")
        # Naming it makes it.
        assert desktop.command("seat second hide_cursor 0")
        wait_until("there are two seats", lambda: len(desktop.message("--type", "get_seats")) == 2)
        for title in ("Letter", "Mail"):
            kelpa.wait_for_card(boards.UNSORTED, title)
        _press(desktop, kelpa, "Letter")
        wait_until("the person's own seat has the window", lambda: _focus_of(desktop, "seat0") == window.number)
        kelpa.focus()
        desktop.start_foot("Opened afterwards")
        kelpa.focus()
        kelpa.wait_for_card(boards.UNSORTED, "Opened afterwards")


def _focus_of(desktop, seat):
    return next(each["focus"] for each in desktop.message("--type", "get_seats") if each["name"] == seat)
