"""A goal that is pinned to a workspace: its windows are sent there, and so is who brings them forward."""

import board as boards
import settings
from command_line import CommandLine
from kelpa import Kelpa
from processes import wait_until

_TITLES = ("Form", "Receipts", "Mail")


def _places(desktop):
    """The names of the workspaces on which the windows of the three terminals are."""
    places = {}
    for output in desktop.message("--type", "get_tree")["nodes"]:
        for workspace in output["nodes"]:
            for node in _windows_in(workspace):
                if node["name"] in _TITLES:
                    places[node["name"]] = workspace["name"]
    return places


def _windows_in(node):
    if "shell" in node:
        yield node
    for child in node["nodes"] + node["floating_nodes"]:
        yield from _windows_in(child)


def _workspaces(desktop):
    return {each["name"] for each in desktop.message("--type", "get_workspaces")}


def _present(desktop):
    return next(each["name"] for each in desktop.message("--type", "get_workspaces") if each["focused"])


def a_pinned_goal_has_its_windows_on_its_workspace_and_is_worked_on_there(desktop, binary):
    path = desktop.directory / "board.sqlite"
    settings.write(path, goals=[("Taxes", [])])
    for title in _TITLES:
        desktop.start_foot(title)
    windows = {title: desktop.wait_for_window(title) for title in _TITLES}

    def move(title, workspace):
        desktop.command(f"[con_id={windows[title].number}] move container to workspace {workspace}")

    def wait_for(what, **places):
        wait_until(what, lambda: _places(desktop) == places)

    command = CommandLine(desktop, binary, path)
    with Kelpa(desktop, binary, path) as kelpa:
        for title in _TITLES:
            kelpa.wait_for_card(boards.UNSORTED, title)
        command.assign("Form", "Taxes")
        kelpa.wait_for_card("Taxes", "Form")
        assert _workspaces(desktop) == {"1"}

        # One that is not there is created.
        command("pin", "Taxes", "3")
        wait_for("its window is sent there", Form="3", Receipts="1", Mail="1")
        wait_until("the header says so", lambda: kelpa.board.has_text("Pinned to: Desktop 3"))
        assert _present(desktop) == "1", "nobody has gone there"
        # Its name is whatever the person likes; the number in front of it stays.
        hostile = '3: "]; exit; [title=.*] kill'
        assert desktop.message("rename", "workspace", "3", "to", f"'{hostile}'")[0]["success"]
        wait_until("the header says the new name", lambda: kelpa.board.has_text(f"Pinned to: {hostile}"))
        command.assign("Receipts", "Taxes")
        wait_for("what joins the goal follows", Form=hostile, Receipts=hostile, Mail="1")

        move("Form", "1")
        wait_until("the board knows", lambda: "desktop" not in kelpa.board.card(
            "Taxes", "Form").node.description)
        move("Mail", "web")
        wait_for("what was moved stays", Form="1", Receipts=hostile, Mail="web")
        command("work", "Taxes")
        wait_until("Kelpa goes to the workspace", lambda: _present(desktop) == hostile)
        desktop.wait_for_active(windows["Receipts"])
        assert _places(desktop) == {"Form": "1", "Receipts": hostile, "Mail": "web"}

        # sway removes it when it is empty and does not show; the pin creates it anew.
        desktop.command("workspace 1")
        move("Receipts", "1")
        wait_until("it is gone", lambda: _workspaces(desktop) == {"1", "web"})
        wait_until("it has no name", lambda: kelpa.board.has_text("Pinned to: Desktop 3"))
        command.assign("Mail", "Taxes")
        wait_for("the next one is sent there", Form="1", Receipts="1", Mail="3")

        # Where it shows, nobody is led away from it.
        desktop.command("workspace_auto_back_and_forth yes")
        desktop.command("workspace 3")
        command("work", "Taxes")
        desktop.wait_for_active(windows["Mail"])
        assert _present(desktop) == "3"
        command("pin", "Taxes", "none")
        wait_until("it is pinned no more", lambda: not kelpa.board.has_text("Pinned to: Desktop 3"))
        assert _places(desktop) == {"Form": "1", "Receipts": "1", "Mail": "3"}, "its windows stay"
