"""New windows that a goal opens, and all windows of a goal brought forward."""

import pathlib
import shutil

import board as boards
import settings
from kelpa import Kelpa
from processes import wait_until

_GOAL, _OTHER_GOAL = "Only goal", "Other goal"
# Counts its windows, so that each can be told by its title; prints the number of this one.
_COUNTED = """at=1
until mkdir "$HOME/{name} $at" 2>/dev/null; do at=$((at + 1)); done
"""
# A program that writes the title itself would change it.
_XTERM = "xterm -T \"{name} $at\" -xrm '*allowTitleOps: false' -geometry 60x15 {more} -e cat"


class Machine:
    """What is installed, as far as Kelpa is told: a browser, and the person's terminal."""

    def __init__(self, desktop, terminal="exec {xterm}"):
        self._folder = pathlib.Path(desktop.env["HOME"]) / "machine"
        self._programs = self._folder / "bin"
        self._programs.mkdir(parents=True)
        for name in ("cat", "mkdir", "setsid", "xterm"):
            (self._programs / name).symlink_to(shutil.which(name))
        xterm = _XTERM.format(name="Terminal", more="")
        self._write_program("own-terminal",
                            _COUNTED.format(name="Terminal") + terminal.format(xterm=xterm))
        # Only asked for a new window does it open one.
        self._write_program("chromium", "[ \"$*\" = --new-window ] || exit 1\n" + _COUNTED.format(
            name="Browser") + "exec " + _XTERM.format(name="Browser", more="-class Chromium"))
        self.write_entry("chromium", f"Exec={self._programs / 'chromium'} %U", "StartupWMClass=Chromium")
        self.env = {
            "PATH": str(self._programs),
            "TERMINAL": "own-terminal",
            "XDG_DATA_HOME": str(self._folder),
            "XDG_DATA_DIRS": str(self._folder),
        }

    def _write_program(self, name, lines):
        path = self._programs / name
        path.write_text(f"#!/bin/sh\n{lines}\n", encoding="utf-8")
        path.chmod(0o755)

    def write_entry(self, entry, *lines):
        path = self._folder / "applications" / f"{entry}.desktop"
        path.parent.mkdir(exist_ok=True)
        path.write_text("\n".join(("[Desktop Entry]", "Type=Application", f"Name={entry}", *lines, "")),
                        encoding="utf-8")


def a_goal_opens_a_terminal_and_a_browser_and_brings_all_its_windows_forward(desktop, binary):
    path = desktop.directory / "board.sqlite"
    settings.write(path, goals=[(_GOAL, [])])
    machine = Machine(desktop)
    machine.write_entry("own-xterm", "Exec=xterm", "StartupWMClass=XTerm")
    # Of the same application, so that being of that alone brings no window into a goal.
    desktop.start_xterm("Elsewhere")
    elsewhere = desktop.wait_for_window("Elsewhere").number
    with Kelpa(desktop, binary, path, env=machine.env) as kelpa:
        kelpa.wait_for_card(boards.UNSORTED, "Elsewhere")
        expected = {"Elsewhere": boards.UNSORTED}
        for entry, title in ((boards.OPEN_TERMINAL, "Terminal 1"), (boards.OPEN_CHROME, "Browser 1"),
                             (boards.OPEN_TERMINAL, "Terminal 2")):
            kelpa.open_goal_menu(_GOAL, entry)()
            expected[title] = _GOAL
            wait_until(f"{title!r} and no other has come into the goal",
                       lambda: kelpa.board.cards() == expected)
            wait_until("the goal is the chosen one", lambda: kelpa.board.selected_column() == _GOAL)

        # The goal's windows behind another one, and not in the order in which they were opened.
        windows = {title: desktop.wait_for_window(title).number for title in expected}
        order = ("Terminal 2", "Terminal 1", "Browser 1", "Elsewhere")
        for title in order:
            desktop.run("wmctrl", "-i", "-a", hex(windows[title]))
            wait_until(f"{title!r} is on top", lambda: desktop.stacking()[-1] == windows[title])
        kelpa.focus()
        kelpa.wait_for_previews(_GOAL)
        wait_until("the board knows the order", lambda: kelpa.board.cards_by_place(_GOAL) == [
            "Browser 1", "Terminal 1", "Terminal 2"])
        kelpa.open_goal_menu(_GOAL, boards.SHOW_ALL_WINDOWS)()
        # From the uppermost on, each in front of the one before it.
        raised = [windows[title] for title in ("Browser 1", "Terminal 1", "Terminal 2")]
        wait_until("all are in front, in order", lambda: desktop.stacking() == [
            elsewhere, kelpa.window.number, *raised])
        wait_until("the last one is active", lambda: desktop.active_window() == raised[-1])


def a_terminal_of_which_nothing_is_known_but_who_started_it_lands_in_its_goal(desktop, binary):
    path = desktop.directory / "board.sqlite"
    settings.write(path, goals=[(_GOAL, []), (_OTHER_GOAL, [])])
    # No entry is its application's, and what started it has ended before its window comes.
    machine = Machine(desktop, terminal="setsid {xterm} &")
    with Kelpa(desktop, binary, path, env=machine.env) as kelpa:
        expected = {}
        for goal, title in ((_OTHER_GOAL, "Terminal 1"), (_GOAL, "Terminal 2")):
            kelpa.open_goal_menu(goal, boards.OPEN_TERMINAL)()
            desktop.start_xterm(f"Beside {title}")
            expected |= {title: goal, f"Beside {title}": boards.UNSORTED}
            wait_until(f"{title!r} and no other has come into {goal!r}",
                       lambda: kelpa.board.cards() == expected)
