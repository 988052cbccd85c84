"""What is there after the extension has been switched off, and after a day's coming and going of windows."""

import time

import holdings
from caller import Caller, Refused
from plain_windows import PlainWindows
from processes import wait_until


def switched_off_it_leaves_nothing_behind(desktop, _program):
    desktop.set_extension(False)
    holdings.record(desktop)
    plain = PlainWindows()
    windows = [plain.open(f"Window {number}".encode()) for number in range(5)]
    caller = Caller(desktop.bus, is_kelpa=False)
    caller.take_name()
    for is_busy in (False, True, True):
        desktop.set_extension(True)
        if is_busy:
            caller.attach()
            for row in caller.list():
                try:
                    caller.picture(row["id"], 20, 20, 0)
                except Refused as refused:
                    assert refused.reason == "Busy", refused
            # A first tap, and a change that waits to be told.
            desktop.keyboard.at_once("Super_L")
            for number in range(20):
                plain.rename(windows[0], f"Title {number}".encode())
            plain.settle()
            held = holdings.held(desktop)
            assert len(held) > 5 * 14, held
        assert holdings.held(desktop)
        desktop.set_extension(False)
        assert holdings.held(desktop) == [], holdings.held(desktop)
        desktop.hide_overview()
    desktop.set_extension(True)
    caller.attach()
    assert len(caller.list()) == 5


def windows_come_and_go_without_an_error(desktop, _program):
    caller = Caller(desktop.bus)
    plain = PlainWindows()
    opened, reasons = [], set()
    for number in range(120):
        opened.append(plain.open(f"Window {number}".encode()))
        end = time.monotonic() + 0.06
        while time.monotonic() < end:
            for row in caller.list()[:3]:
                try:
                    caller.picture(row["id"], 128, 72, 0)
                    reasons.add(None)
                except Refused as refused:
                    reasons.add(refused.reason)
        if len(opened) > 12:
            plain.rename(opened[3], b"Renamed")
            plain.close(opened.pop(number % 12))
        if number == 60:
            desktop.set_extension(False)
            desktop.set_extension(True)
            caller.attach()
    assert reasons <= {None, "Busy", "NoSuchWindow", "NoPicture"} and None in reasons, reasons
    for window in opened:
        plain.close(window)
    wait_until("no window is listed", lambda: caller.list() == [])
    assert desktop.windows() == []
