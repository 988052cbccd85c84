"""A goal that is pinned to a workspace: its windows are sent there, and so is who works on it."""

import contextlib

import board as boards
import settings
from command_line import CommandLine
from kelpa import Kelpa
from processes import wait_until

_TITLES = ("Form", "Receipts", "Mail")
_NAMES = ["Writing", "Reading", "Sorting"]
# Four workspaces, also where they are empty.
_FIX_THEIR_NUMBER = """(() => {
    const {Gio} = imports.gi;
    new Gio.Settings({schema_id: 'org.gnome.mutter'}).set_boolean('dynamic-workspaces', false);
    new Gio.Settings({schema_id: 'org.gnome.desktop.wm.preferences'}).set_int('num-workspaces', 4);
    return true;
})()"""
# Between the first window that is sent anywhere and the next one.
_REMOVE_THE_SECOND_MEANWHILE = """(() => {
    const {Window} = imports.gi.Meta;
    const change = Window.prototype.change_workspace;
    Window.prototype.change_workspace = function (workspace) {
        change.call(this, workspace);
        Window.prototype.change_workspace = change;
        const manager = global.workspace_manager;
        manager.remove_workspace(manager.get_workspace_by_index(1), global.get_current_time());
    };
    return true;
})()"""


class _Workspaces:
    """Where the windows of the three terminals are, numbers counted from 1. The Shell adds and removes
    workspaces by itself: behind those that have windows there is one without."""

    def __init__(self, desktop):
        self._desktop = desktop
        desktop.evaluate("new imports.gi.Gio.Settings({schema_id: 'org.gnome.desktop.wm.preferences'})"
                         f".set_strv('workspace-names', {_NAMES})")
        for title in _TITLES:
            desktop.start_foot(title)
        self.windows = {title: desktop.wait_for_window(title) for title in _TITLES}

    def places(self):
        return dict(self._desktop.evaluate(
            "global.get_window_actors().map(actor => actor.meta_window)"
            f".filter(window => {list(_TITLES)}.includes(window.get_title()))"
            ".map(window => [window.get_title(), window.get_workspace().index() + 1])"))

    def wait_for(self, what, **places):
        wait_until(what, lambda: self.places() == places)

    def move(self, title, number):
        """As the person does."""
        self._desktop.on_window(self.windows[title], f"window.change_workspace_by_index({number - 1}, true)")
        wait_until(f"{title!r} is moved", lambda: self.places()[title] == number)

    def present(self):
        return self._desktop.evaluate("global.workspace_manager.get_active_workspace_index()") + 1

    def count(self):
        return self._desktop.evaluate("global.workspace_manager.get_n_workspaces()")

    def is_minimized(self, title):
        return self._desktop.evaluate(
            "global.get_window_actors().map(actor => actor.meta_window)"
            f".find(window => window.get_id() === {self.windows[title].number}).minimized")


class _Board:
    """A board with a goal and with the windows of the three terminals in no goal."""

    def __init__(self, desktop, binary):
        path = desktop.directory / "board.sqlite"
        settings.write(path, goals=[("Taxes", [])])
        self.workspaces = _Workspaces(desktop)
        self.command = CommandLine(desktop, binary, path)
        self._start = lambda: Kelpa(desktop, binary, path)

    @contextlib.contextmanager
    def opened(self):
        with self._start() as kelpa:
            for title in _TITLES:
                kelpa.wait_for_card(boards.UNSORTED, title)
            yield kelpa

    def opened_again(self):
        return self._start()

    def pin_to_the_third(self, kelpa):
        """With one window there, another on the second and the third one on the first."""
        workspaces = self.workspaces
        workspaces.move("Mail", 2)
        wait_until("there is a third one", lambda: workspaces.count() == 3)
        wait_until("the board knows", lambda: "Reading" in kelpa.board.card(
            boards.UNSORTED, "Mail").node.description)
        self.command.assign("Form", "Taxes")
        self.command("pin", "Taxes", "Sorting")
        workspaces.wait_for("its window is sent there", Form=3, Receipts=1, Mail=2)
        # Whoever leaves before the board has seen the arrival is sent there again.
        kelpa.wait_for_card("Taxes", "Form")
        wait_until("the board knows", lambda: "Sorting" in kelpa.board.card("Taxes", "Form").node.description)


def a_pinned_goal_has_its_windows_on_its_desktop_and_is_worked_on_there(desktop, binary):
    board = _Board(desktop, binary)
    workspaces, command = board.workspaces, board.command
    with board.opened() as kelpa:
        command.assign("Form", "Taxes")
        kelpa.wait_for_card("Taxes", "Form")
        assert workspaces.places() == {"Form": 1, "Receipts": 1, "Mail": 1}
        command("pin", "Taxes", "Reading")
        workspaces.wait_for("its window is sent there", Form=2, Receipts=1, Mail=1)
        wait_until("the header says so", lambda: kelpa.board.has_text("Pinned to: Reading"))
        assert workspaces.present() == 1, "nobody has gone there"

        command.assign("Receipts", "Taxes")
        workspaces.wait_for("what joins the goal follows", Form=2, Receipts=2, Mail=1)
        workspaces.move("Form", 1)
        wait_until("the board knows", lambda: "Reading" not in kelpa.board.card(
            "Taxes", "Form").node.description)

        # Another window is in the way there.
        workspaces.move("Mail", 2)
        wait_until("the board knows", lambda: "Reading" in kelpa.board.card(
            boards.UNSORTED, "Mail").node.description)
        assert workspaces.places() == {"Form": 1, "Receipts": 2, "Mail": 2}, "what was moved stays"
        command("work", "Taxes")
        wait_until("Kelpa goes to the workspace", lambda: workspaces.present() == 2)
        desktop.wait_for_active(workspaces.windows["Receipts"])
        wait_until("the other is minimised", lambda: workspaces.is_minimized("Mail"))
        assert workspaces.places() == {"Form": 1, "Receipts": 2, "Mail": 2}

        command("pin", "Taxes", "1")
        wait_until("the header names the other one", lambda: kelpa.board.has_text("Pinned to: Writing"))
        workspaces.wait_for("all of them go there", Form=1, Receipts=1, Mail=2)
        command("pin", "Taxes", "none")
        wait_until("it is pinned no more", lambda: not kelpa.board.has_text("Pinned to: Writing"))
        assert workspaces.places() == {"Form": 1, "Receipts": 1, "Mail": 2}, "its windows stay"


def a_pin_to_a_workspace_that_the_shell_has_removed_waits_for_it(desktop, binary):
    board = _Board(desktop, binary)
    workspaces, command = board.workspaces, board.command
    with board.opened() as kelpa:
        board.pin_to_the_third(kelpa)
        wait_until("a fourth one is behind it", lambda: workspaces.count() == 4)

        # The Shell keeps one empty workspace, the first behind those that have windows.
        workspaces.move("Form", 1)
        wait_until("the goal's is the empty one", lambda: workspaces.count() == 3)
        wait_until("it is there", lambda: kelpa.board.has_text("Pinned to: Sorting"))
        workspaces.move("Mail", 1)
        workspaces.wait_for("the second one is empty, too", Form=1, Receipts=1, Mail=1)
        wait_until("two are left", lambda: workspaces.count() == 2)
        wait_until("the board says that it is gone",
                   lambda: kelpa.board.has_text("Pinned to: Desktop 3 (not there now)"))
        command.assign("Receipts", "Taxes")
        kelpa.wait_for_card("Taxes", "Receipts")
        assert workspaces.places() == {"Form": 1, "Receipts": 1, "Mail": 1}

        workspaces.move("Mail", 2)
        workspaces.wait_for("who waited is sent when it is back", Form=1, Receipts=3, Mail=2)
        wait_until("the board names it again", lambda: kelpa.board.has_text("Pinned to: Sorting"))


def a_pin_follows_its_workspace_when_an_empty_one_before_it_goes(desktop, binary):
    board = _Board(desktop, binary)
    workspaces, command = board.workspaces, board.command
    with board.opened() as kelpa:
        board.pin_to_the_third(kelpa)
        wait_until("the header says so", lambda: kelpa.board.has_text("Pinned to: Sorting"))

        # The second one is empty: the Shell removes it, and the third becomes the second.
        workspaces.move("Mail", 1)
        workspaces.wait_for("the workspace of the goal's window has another number", Form=2, Receipts=1, Mail=1)
        wait_until("the header says so, too", lambda: kelpa.board.has_text("Pinned to: Reading"))
        wait_until("there is an empty one behind it", lambda: workspaces.count() == 3)
        command.assign("Receipts", "Taxes")
        workspaces.wait_for("what joins the goal goes to the same one", Form=2, Receipts=2, Mail=1)
        assert workspaces.present() == 1
        command("work", "Taxes")
        wait_until("so does Kelpa", lambda: workspaces.present() == 2)
        wait_until("and raises a window of the goal",
                   lambda: desktop.evaluate("global.display.focus_window.get_title()") in ("Form", "Receipts"))
        assert workspaces.places() == {"Form": 2, "Receipts": 2, "Mail": 1}
        assert not workspaces.is_minimized("Mail"), "nothing is in the way"
    with board.opened_again() as kelpa:
        wait_until("it is the same one after a restart", lambda: kelpa.board.has_text("Pinned to: Reading"))
        command.assign("Mail", "Taxes")
        # It was alone on the first one, which is empty then and goes.
        workspaces.wait_for("what joins goes there, which becomes the first", Form=1, Receipts=1, Mail=1)
        wait_until("the header follows", lambda: kelpa.board.has_text("Pinned to: Writing"))


def windows_that_are_sent_together_stay_together_when_an_empty_workspace_goes_meanwhile(desktop, binary):
    board = _Board(desktop, binary)
    workspaces, command = board.workspaces, board.command
    desktop.evaluate(_FIX_THEIR_NUMBER)
    wait_until("there are four workspaces", lambda: workspaces.count() == 4)
    with board.opened() as kelpa:
        for title in _TITLES:
            command.assign(title, "Taxes")
            kelpa.wait_for_card("Taxes", title)
        assert workspaces.places() == {"Form": 1, "Receipts": 1, "Mail": 1}
        desktop.evaluate(_REMOVE_THE_SECOND_MEANWHILE)
        command("pin", "Taxes", "Sorting")
        wait_until("the second one goes", lambda: workspaces.count() == 3)
        workspaces.wait_for("all of them are on the third, which is the second now", Form=2, Receipts=2, Mail=2)
        wait_until("the header follows", lambda: kelpa.board.has_text("Pinned to: Reading"))
        assert workspaces.places() == {"Form": 2, "Receipts": 2, "Mail": 2}
