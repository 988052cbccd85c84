"""What the extension tells and does, called as Kelpa calls it."""

import os
import pathlib
import threading
import time

import gi

gi.require_version("GdkPixbuf", "2.0")
from gi.repository import GdkPixbuf

import other_root
from caller import Caller, Refused
from harness import on_desktop
from plain_windows import PlainWindows
from processes import wait_until

_RED, _BLUE = 0xCC3322, 0x2244DD


def _refusal(call, *arguments):
    """Why it is refused, nothing when it is not."""
    try:
        call(*arguments)
    except Refused as refused:
        return refused.reason
    return None


def _await_focus(desktop, title):
    """Until a new window has the focus that the Shell gives it, which on X11 may be after it is shown."""
    number = desktop.wait_for_window(title).number
    wait_until(f"{title} has the focus", lambda: desktop.active_window() == number)


@on_desktop(has_xwayland=True)
def windows_are_told_with_what_the_shell_knows_of_them(desktop, _program):
    caller = Caller(desktop.bus)
    assert caller.version() == 4
    foot = desktop.start_foot("On Wayland")
    desktop.start("xterm", "-T", "On X11", "-e", "cat")
    _await_focus(desktop, "On X11")
    plain = PlainWindows()
    title = "Täglich \u202e\U0001f600 <b>&amp;"
    plain.open(title.encode(), b"no.such.entry")
    _await_focus(desktop, "Täglich")
    desktop.activate(desktop.wait_for_window("On Wayland"))
    row = caller.row("On Wayland")
    wait_until("the terminal has the focus",
               lambda: [each["title"] for each in caller.list()] == ["On Wayland", title, "On X11"])
    for name, value in {"pid": foot.pid, "app": "foot.desktop", "wmClass": "foot", "workspace": 0,
                        "onScreen": True, "minimized": False, "kind": "normal", "skipTaskbar": False,
                        "xwayland": False, "role": "", "transientFor": 0, "attention": False}.items():
        assert row[name] == value, (name, row)
    assert row["width"] > 100 and row["height"] > 100, row
    plain_row = caller.row(title)
    assert (plain_row["width"], plain_row["height"]) == (200, 150), plain_row
    assert plain_row["app"] == "", plain_row
    on_x11 = caller.row("On X11")
    assert on_x11["xwayland"] and on_x11["pid"] > 0 and on_x11["wmClass"] == "XTerm", on_x11
    shown = {window.number for window in desktop.windows()}
    assert {each["id"] for each in caller.list()} == shown, shown


def a_window_is_activated_minimised_restored_and_closed(desktop, _program):
    caller = Caller(desktop.bus)
    desktop.start_foot("One")
    other = desktop.start_foot("Other")
    number = caller.row("One")["id"]
    caller.call("Minimize", "(t)", number)
    row = wait_until("it is minimised", lambda: next(
        row for row in caller.list() if row["id"] == number and row["minimized"]))
    assert not row["onScreen"], row
    caller.call("Restore", "(t)", number)
    wait_until("it is restored", lambda: caller.row("One")["onScreen"])
    caller.call("Minimize", "(t)", number)
    caller.call("Activate", "(tu)", number, 0)
    wait_until("it is restored and has the focus", lambda: desktop.active_window() == number)
    assert caller.list()[0]["id"] == number

    # To another workspace, out of the overview.
    desktop.evaluate(f"global.get_window_actors().map(actor => actor.meta_window)"
                     f".find(window => window.get_id() === {number}).change_workspace_by_index(1, true)")
    row = wait_until("it is on the second workspace", lambda: next(
        (row for row in caller.list() if row["id"] == number and row["workspace"] == 1), None))
    assert not row["onScreen"], row
    desktop.evaluate("Main.overview.show()")
    wait_until("the overview is open", desktop.is_overview_open)
    caller.call("Activate", "(tu)", number, 0)
    wait_until("it has the focus", lambda: desktop.active_window() == number)
    wait_until("the overview is closed", lambda: not desktop.is_overview_open())
    assert caller.row("One")["onScreen"] and not caller.row("Other")["onScreen"]

    gone = caller.row("Other")["id"]
    caller.call("Close", "(t)", gone)
    wait_until("its program has ended", lambda: other.poll() is not None)
    wait_until("it is not listed", lambda: len(caller.list()) == 1)
    for method, types, rest in (("Activate", "(tu)", [0]), ("Close", "(t)", []), ("Minimize", "(t)", []),
                                ("Restore", "(t)", []), ("Picture", "(tuut)", [10, 10, 0])):
        assert _refusal(caller.call, method, types, gone, *rest) == "NoSuchWindow", method

    # The caller's own window.
    assert _refusal(caller.call, "BringForward") == "NoSuchWindow"
    plain = PlainWindows()
    plain.open(b"Own")
    own = caller.row("Own")["id"]
    wait_until("it has the focus", lambda: desktop.active_window() == own)
    caller.call("Activate", "(tu)", number, 0)
    wait_until("the terminal has the focus", lambda: desktop.active_window() == number)
    caller.call("BringForward")
    wait_until("the caller's own window has the focus", lambda: desktop.active_window() == own)


def changes_are_told_together_and_only_to_who_listens(desktop, _program):
    caller, other = Caller(desktop.bus), Caller(desktop.own_connection(), is_kelpa=False)
    caller.detach()
    plain = PlainWindows()
    window = plain.open(b"Before")
    desktop.wait_for_window("Before")
    assert caller.names() == [], "a change is told to who does not listen"
    caller.attach()
    began = time.monotonic()
    for number in range(200):
        plain.rename(window, f"Title {number}".encode())
        plain.settle()
    names = caller.names()
    # The first ones sooner.
    assert len(names) <= (time.monotonic() - began) / 0.25 + 4, names
    assert set(names) == {"Changed"}, names
    caller.row("Title 199")

    for what, change in (
            ("a window opens", lambda: plain.open(b"Another")),
            ("a window is minimised", lambda: caller.call("Minimize", "(t)", caller.row("Another")["id"])),
            ("a window is activated",
             lambda: caller.call("Activate", "(tu)", caller.row("Another")["id"], 0)),
            ("a window is closed", lambda: plain.close(window))):
        caller.names()
        change()
        wait_until(f"{what} and it is told", lambda: "Changed" in caller.names())
    assert other.names() == [], "a change is told to somebody else"

    # Two of Kelpa's connections may listen, and one of them leave.
    other.attach()
    for listeners in ([caller, other], [other], []):
        for each in (caller, other):
            each.names()
        title = f"{len(listeners)} listen"
        plain.open(title.encode())
        desktop.wait_for_window(title)
        for each in listeners:
            wait_until("a change is told", lambda each=each: "Changed" in each.names())
        for each in {caller, other} - set(listeners):
            assert each.names() == [], "a change is told to who has detached"
        if listeners:
            listeners[0].detach()


def _pixel(png, x, y):
    loader = GdkPixbuf.PixbufLoader.new_with_type("png")
    loader.write(png)
    loader.close()
    pixels = loader.get_pixbuf()
    start = y * pixels.get_rowstride() + x * pixels.get_n_channels()
    red, green, blue = pixels.get_pixels()[start:start + 3]
    return (pixels.get_width(), pixels.get_height()), red << 16 | green << 8 | blue


def _picture(caller, *arguments):
    """A picture when the Shell has time for one."""
    def take():
        try:
            return caller.picture(*arguments)
        except Refused as refused:
            if refused.reason not in ("Busy", "NoPicture"):
                raise
            return None

    return wait_until("the Shell has time for a picture", take)


def _file_of_picture(caller, number, known):
    def take():
        try:
            return caller.call("Picture", "(tuut)", number, 128, 72, known)[1]
        except Refused as refused:
            assert refused.reason == "Busy", refused
            return None

    descriptor, = wait_until("the Shell has time for a picture", take)
    try:
        # The Shell of another root has made it there.
        return os.readlink(f"/proc/self/fd/{descriptor}").removeprefix(other_root.VIEW)
    finally:
        os.close(descriptor)


def _revision_at_rest(caller, number):
    """That of the window's picture once nothing of it changes any more: one drawing may reach the Shell in
    several pieces."""
    def find():
        revision = _picture(caller, number, 128, 72, 0)[1]
        return _picture(caller, number, 128, 72, revision)[0] and revision

    return wait_until("the picture rests", find)


def a_picture_is_drawn_when_the_window_has_changed_and_seldom(desktop, _program):
    caller = Caller(desktop.bus)
    plain = PlainWindows()
    window = plain.open(b"A window")
    number = caller.row("A window")["id"]
    plain.paint(window, _RED)

    def is_red():
        unchanged, _, width, height, png = _picture(caller, number, 128, 72, 0)
        return not unchanged and (width, height) == (96, 72) and _pixel(png, 48, 36) == ((96, 72), _RED)

    wait_until("the picture is red", is_red)
    revision = _revision_at_rest(caller, number)
    assert _picture(caller, number, 128, 72, revision) == (True, revision, 0, 0, b"")

    # In memory alone, and without a name; there is no file where there is no picture.
    assert _file_of_picture(caller, number, 0).startswith(f"{desktop.env['XDG_RUNTIME_DIR']}/")
    revision = _picture(caller, number, 128, 72, 0)[1]
    assert _file_of_picture(caller, number, revision) == "/dev/null"
    assert not list(pathlib.Path(desktop.env["XDG_RUNTIME_DIR"]).glob("kelpa-*"))

    plain.paint(window, _BLUE)
    wait_until("the window has changed", lambda: not _picture(caller, number, 128, 72, revision)[0])
    unchanged, later, _, _, png = _picture(caller, number, 128, 72, revision)
    assert not unchanged and later > revision, (later, revision)
    assert _pixel(png, 0, 0)[1] == _BLUE and _pixel(png, 95, 71)[1] == _BLUE, _pixel(png, 0, 0)
    assert _revision_at_rest(caller, number) >= later

    # Never larger than the window, nor without a pixel.
    assert _picture(caller, number, 2 ** 32 - 1, 2 ** 32 - 1, 0)[2:4] == (200, 150)
    assert _picture(caller, number, 0, 0, 0)[2:4] == (1, 1)

    # What is not to be seen has its picture too.
    desktop.start_foot("In front of it")
    assert _pixel(_picture(caller, number, 128, 72, 0)[4], 48, 36)[1] == _BLUE
    caller.call("Minimize", "(t)", number)
    wait_until("it is minimised", lambda: caller.row("A window")["minimized"])
    assert _pixel(_picture(caller, number, 128, 72, 0)[4], 48, 36)[1] == _BLUE

    # Many at once have their share of the time, and no more.
    reasons = []

    def ask():
        reasons.append(_refusal(caller.picture, number, 128, 72, 0))

    threads = [threading.Thread(target=ask) for _ in range(40)]
    for thread in threads:
        thread.start()
    for thread in threads:
        thread.join()
    # The picture before may have taken so long that its pause outlasts all of them.
    assert {"Busy"} <= set(reasons) <= {None, "Busy"}, reasons
    assert _picture(caller, number, 128, 72, 0)[0] is False


def two_taps_of_super_are_told_and_the_overview_closes(desktop, _program):
    caller = Caller(desktop.bus)
    desktop.start_foot("A terminal")
    terminal = desktop.wait_for_window("A terminal")
    assert caller.attach()[1] == {"doubleTap": True}

    def count():
        return caller.names().count("DoubleTap")

    def settle():
        wait_until("the overview is still", lambda: desktop.evaluate(
            "Main.overview.animationInProgress") is False)
        caller.spin(0.6)

    def tapped_twice():
        """A machine that draws the overview for long hears the second tap late."""
        for _ in range(10):
            desktop.keyboard.at_once("Super_L", "Super_L")
            settle()
            told = count()
            if told:
                wait_until("the overview is closed", lambda: not desktop.is_overview_open())
                return told
            desktop.hide_overview()
        return 0

    # One tap is the overview's.
    for is_open in (True, False):
        desktop.key("Super_L")
        wait_until("the overview has changed", lambda is_open=is_open: desktop.is_overview_open() is is_open)
        settle()
        assert count() == 0, "two slow taps are told"

    assert tapped_twice() == 1
    assert desktop.active_window() == terminal.number
    for keys in (["Super_L", "a", "Super_L"], ["Super_L", "Super_L+a"], ["Super_L+a", "Super_L"],
                 ["Super_L", "shift", "Super_L"], ["Super_L", "click", "Super_L"]):
        if "click" in keys:
            # A click may overtake a key.
            desktop.keyboard.key(keys.pop(0))
            wait_until("the first tap is told", desktop.is_overview_open)
        desktop.keyboard.at_once(*keys)
        caller.spin(0.6)
        assert count() == 0, f"{keys} are told as two taps"
        desktop.hide_overview()
    # While nobody listens the second tap is the Shell's.
    caller.detach()
    desktop.keyboard.at_once("Super_L", "Super_L")
    caller.spin(0.6)
    assert count() == 0
    desktop.hide_overview()


def a_program_that_is_started_with_a_token_has_the_focus(desktop, _program):
    caller = Caller(desktop.bus)
    plain = PlainWindows()
    own = plain.open(b"Own")
    number = caller.row("Own")["id"]
    for entry in ("foot.desktop", "no.such.desktop", ""):
        desktop.start_foot(f"Before {entry}")
        terminal = caller.row(f"Before {entry}")["id"]
        wait_until("the terminal has the focus", lambda terminal=terminal: desktop.active_window() == terminal)
        plain.activate(own, b"not a token")
        plain.settle()
        assert desktop.active_window() == terminal, "the focus is anybody's"
        token, = caller.call("Token", "(s)", entry)[0]
        assert token
        plain.activate(own, token.encode())
        wait_until(f"the token for {entry!r} brings it forward", lambda: desktop.active_window() == number)


def a_run_keeps_its_number_and_only_that_run(desktop, _program):
    caller = Caller(desktop.bus)
    run = caller.attach()[0]
    assert run > 0
    desktop.start_foot("A terminal")
    number = caller.row("A terminal")["id"]
    revision = _picture(caller, number, 128, 72, 0)[1]
    desktop.set_extension(False)
    desktop.set_extension(True)
    assert caller.attach()[0] == run
    assert caller.row("A terminal")["id"] == number
    unchanged, later, *_ = _picture(caller, number, 128, 72, revision)
    assert not unchanged and later > revision, "a revision of before is known"
    desktop.kill_shell()
    desktop.start_shell()
    wait_until("the extension is there", lambda: desktop.has_name("org.kelpa.Windows"))
    assert caller.attach()[0] != run


def a_window_that_opens_has_no_picture_yet_and_then_one(desktop, _program):
    caller = Caller(desktop.bus)
    for index in range(6):
        title = f"Terminal {index}"
        terminal = desktop.start_foot(title)
        number = caller.row(title)["id"]
        assert _picture(caller, number, 128, 72, 0)[4]
        terminal.terminate()
