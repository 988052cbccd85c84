"""Ending the program while the desktop changes under its eyes."""

import random
import threading

from Xlib import X, Xatom, display
from kelpa import Kelpa
from processes import wait_until
import settings

_WINDOWS = 120
_ROUNDS = 20


def _churn(name, stop):
    """Windows that are opened, closed and retitled without a pause, on a connection of its own."""
    connection = display.Display(name)
    root = connection.screen().root
    pick = random.Random(7)

    def opened(number):
        window = root.create_window(pick.randrange(900), pick.randrange(600), 200, 150, 0,
                                    X.CopyFromParent)
        window.set_wm_name(f"churn {number}")
        window.set_wm_class("churn", "Churn")
        window.map()
        return window

    windows = [opened(number) for number in range(_WINDOWS)]
    number = _WINDOWS
    while not stop.wait(0.005):
        index = pick.randrange(len(windows))
        if pick.random() < 0.3:
            windows[index].destroy()
            windows[index] = opened(number)
            number += 1
        else:
            windows[index].change_property(Xatom.WM_NAME, Xatom.STRING, 8,
                                           f"retitled {number}".encode())
        connection.sync()
    connection.close()


def quitting_ends_well_while_windows_come_go_and_change(desktop, binary):
    path = desktop.directory / "board.sqlite"
    settings.write(path)
    stop = threading.Event()
    churn = threading.Thread(target=_churn, args=(desktop.env["DISPLAY"], stop))
    churn.start()
    try:
        for turn in range(_ROUNDS):
            kelpa = Kelpa(desktop, binary, path)
            kelpa.start()
            if turn % 2:
                wait_until("cards are there", lambda: any(
                    column.cards for column in kelpa.board.columns().values()))
            kelpa.quit()
    finally:
        stop.set()
        churn.join()
