"""Windows that Kelpa knows again in the same run of a compositor, by the identifiers that it announces: another
title says that neither that nor anything else of theirs was remembered."""

import board as boards
import settings
from command_line import CommandLine
from harness import on_desktop
from kelpa import Kelpa
from labwc import LabwcDesktop
from plain_windows import PlainWindows

_WITHOUT_IPC = {"SWAYSOCK": ""}


def _check_known_again(desktop, binary):
    path = desktop.directory / "board.sqlite"
    settings.write(path, goals=[("Release", [])])
    windows = PlainWindows()
    # One that is assigned, one that is not, and one that takes the first one's title.
    opened = {title: windows.open(title) for title in (b"First", b"Second", b"Third")}
    with Kelpa(desktop, binary, path, env=_WITHOUT_IPC) as kelpa:
        for title in ("First", "Second", "Third"):
            kelpa.wait_for_card(boards.UNSORTED, title)
        CommandLine(desktop, binary, path).assign("First", "Release")
        kelpa.wait_for_card("Release", "First")
        kelpa.quit()
        windows.rename(opened[b"First"], b"Of another title")
        windows.rename(opened[b"Third"], b"First")
        windows.settle()
        kelpa.start()
        kelpa.wait_for_card("Release", "Of another title")
        for title in ("First", "Second"):
            kelpa.wait_for_card(boards.UNSORTED, title)


def a_window_of_the_same_run_is_known_again_by_its_identifier(desktop, binary):
    _check_known_again(desktop, binary)


@on_desktop(kind=LabwcDesktop)
def on_labwc_a_window_of_the_same_run_is_known_again_by_its_identifier(desktop, binary):
    _check_known_again(desktop, binary)

