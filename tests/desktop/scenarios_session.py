"""Kelpa and the session around it: where there is none, and when it ends."""

import os
import pathlib
import re
import signal
import subprocess

import board as boards
import processes
import settings
from front import await_front, await_monitor, start_kelpa
from kelpa import Kelpa
from processes import thread_names, wait_until
from typists import Typing


def _answer(binary, env, *arguments):
    return subprocess.run([str(binary), *map(str, arguments)], env=env, stdin=subprocess.DEVNULL,
                          capture_output=True, text=True, timeout=30, check=False)


def without_a_display_it_says_so_and_ends(desktop, binary):
    path = desktop.directory / "board.sqlite"
    without = {name: value for name, value in desktop.env.items() if name != "DISPLAY"}
    nowhere = {**without, "DISPLAY": ":32000"}
    unset = "kelpa: there is no X11 display: DISPLAY is not set\n"
    unreachable = "kelpa: there is no connection to the X11 display :32000\n"
    for env, arguments, expected in ((without, (), unset), (without, ("--bogus",), unset),
                                     (nowhere, (), unreachable),
                                     (without, ("-display", ":32000"), unreachable)):
        answer = _answer(binary, env, "--settings", path, *arguments)
        if (answer.returncode, answer.stderr) != (1, expected):
            raise AssertionError(f"{arguments}: {answer}")
    if path.exists():
        raise AssertionError("it has made a board")


def the_display_of_the_command_line_is_the_one_whose_windows_are_shown(desktop, binary):
    desktop.start_xterm("There")
    there = desktop.wait_for_window("There")
    path = desktop.directory / "board.sqlite"
    settings.write(path)
    nowhere = {"DISPLAY": ":32000"}
    with Kelpa(desktop, binary, path, ("-display", desktop.env["DISPLAY"]), env=nowhere) as kelpa:
        kelpa.wait_for_card(boards.UNSORTED, "There")
        kelpa.focus()
        kelpa.click_card(boards.UNSORTED, "There")
        wait_until("its window is in front", lambda: desktop.active_window() == there.number)


def in_a_session_that_prefers_wayland_it_is_an_x11_program(desktop, binary):
    path = desktop.directory / "board.sqlite"
    settings.write(path)
    desktop.env["XDG_SESSION_TYPE"] = "wayland"
    desktop.env["WAYLAND_DISPLAY"] = "wayland-0"
    for platform in (None, "wayland"):
        desktop.env.pop("QT_QPA_PLATFORM")
        if platform:
            desktop.env["QT_QPA_PLATFORM"] = platform
        kelpa = Kelpa(desktop, binary, path)
        kelpa.start()
        await_front(desktop, kelpa)
        kelpa.quit()
        # It would be tried, and be lacking here.
        if "wayland" in kelpa.output():
            raise AssertionError(kelpa.output())
        desktop.env["QT_QPA_PLATFORM"] = "xcb"


def under_wayland_no_double_tap_is_offered(desktop, binary):
    """There an X11 program does not hear what is typed into the others."""
    log = desktop.directory / "weston.log"
    desktop.start("weston", "--backend=headless-backend.so", "--xwayland", "--no-config",
                  "--socket=kelpa-test", f"--log={log}")

    def display():
        words = log.read_text(errors="replace") if log.exists() else ""
        found = re.search(r"xserver listening on display (:[0-9]+)$", words, re.MULTILINE)
        return found and found[1]

    number = wait_until("the Wayland session has its X server", display)
    path = desktop.directory / "beside.sqlite"
    settings.write(path)
    beside = processes.start([str(binary), "--settings", str(path)],
                             desktop.env | {"DISPLAY": number, "WAYLAND_DISPLAY": "kelpa-test"},
                             desktop.directory / "beside.log")
    board = boards.Board(beside.pid)
    wait_until("the board is shown", lambda: board.has_text(boards.KEYS_HINT), 60)
    # Another instance, started only now but on a desktop that reports every key, offers it.
    kelpa, _ = start_kelpa(desktop, binary)
    wait_until("the double tap is offered", lambda: kelpa.board.has_text(boards.TAP_HINT))
    kelpa.quit()
    if board.has_text(boards.TAP_HINT) or not board.has_text(boards.KEYS_HINT):
        raise AssertionError(board.outline())
    # What is missing is said where it is missed, with the command that a key of the desktop can run.
    wait_until("the board tells of a key of the desktop", lambda: board.has_text(boards.KEY_HINT))
    wait_until("the board tells which windows it has",
               lambda: board.has_text(boards.ONLY_X11_WINDOWS))
    beside.terminate()
    if beside.wait(timeout=30) != 0:
        raise AssertionError(f"ended with {beside.returncode}")


def without_an_x_display_the_board_is_native_and_says_why_it_has_no_windows(desktop, binary):
    # The shell of its desktop has a keyboard on the screen, which Qt 6.4 crashes on where there is no
    # seat.
    desktop.start("weston", "--backend=headless-backend.so", "--no-config", "--shell=kiosk-shell.so",
                  "--socket=kelpa-test", f"--log={desktop.directory / 'weston.log'}")
    env = {name: value for name, value in desktop.env.items()
           if name not in ("DISPLAY", "QT_QPA_PLATFORM")} | {"WAYLAND_DISPLAY": "kelpa-test"}
    wait_until("the compositor replies", lambda: "desktop none" in " ".join(
        _answer(binary, env, "--about-desktop").stdout.split()))
    path = desktop.directory / "native.sqlite"
    settings.write(path)
    log = desktop.directory / "native.log"
    native = processes.start([str(binary), "--settings", str(path)], env, log)
    board = boards.Board(native.pid)
    wait_until("the board is shown", lambda: board.has_text(boards.KEYS_HINT), 60)
    for text in (boards.NO_WINDOWS_LISTED, boards.NO_WINDOWS_HERE, boards.KEY_HINT):
        wait_until(f"the board says: {text}", lambda text=text: board.has_text(text))
    for offered in (boards.TAP_HINT, boards.ADD_WINDOWS, "Drag windows here"):
        if board.has_text(offered):
            raise AssertionError(f"{offered} is offered: {board.outline()}")
    again = _answer(binary, env, "--settings", path)
    if (again.returncode, again.stderr) != (0, ""):
        raise AssertionError(f"a second start: {again}")
    native.terminate()
    if native.wait(timeout=30) != 0:
        raise AssertionError(f"ended with {native.returncode}: {log.read_text(errors='replace')}")


def without_windows_by_choice_the_board_says_so_and_todos_work(desktop, binary):
    desktop.start_xterm("There")
    desktop.wait_for_window("There")
    path = desktop.directory / "board.sqlite"
    settings.write(path)
    with Kelpa(desktop, binary, path, ("--desktop", "none")) as kelpa:
        wait_until("the board says why it has no windows",
                   lambda: kelpa.board.has_text(boards.NO_WINDOWS_LISTED))
        if kelpa.board.cards():
            raise AssertionError(kelpa.board.outline())
        kelpa.focus()
        kelpa.create_goal("Garden")
        kelpa.wait_for_goals("Garden")


def a_signal_ends_a_start_that_waits_for_a_first_that_hangs(desktop, binary):
    kelpa, path = start_kelpa(desktop, binary)
    os.kill(kelpa.process_id(), signal.SIGSTOP)
    try:
        for number in (signal.SIGINT, signal.SIGTERM):
            again = desktop.start(binary, "--show", "--settings", path)
            wait_until("the second start has asked the first", lambda: "gdbus" in thread_names(again.pid))
            again.send_signal(number)
            # Sooner than it would give up by itself.
            status = again.wait(timeout=3)
            if status != -number:
                raise AssertionError(f"{number.name}: ended with {status}")
    finally:
        os.kill(kelpa.process_id(), signal.SIGCONT)
    kelpa.quit()


class _Session:
    """A session manager, which starts what the session before has left, and ends what runs."""

    def __init__(self, desktop, *arguments):
        pathlib.Path(desktop.env["HOME"], ".xsmstartup").write_text("true\n", encoding="utf-8")
        self._log = desktop.directory / f"session-{len(arguments)}.log"
        # What it says is read while it runs.
        self._manager = desktop.start("stdbuf", "-oL", "xsm", "-verbose", *arguments, log=self._log)
        self.env = {"SESSION_MANAGER": wait_until("the session has its address", self._address)}

    def _words(self):
        return self._log.read_text(errors="replace")

    def _address(self):
        return next((line.removeprefix("setenv SESSION_MANAGER ") for line in self._words().splitlines()
                     if line.startswith("setenv SESSION_MANAGER ")), None)

    def await_saved(self, times):
        """Until its programs have saved what they have, for the session, so often."""
        wait_until(f"the session is saved {times} times",
                   lambda: self._words().count("received SAVE YOURSELF DONE [Success = True]") >= times)

    def save(self):
        self._manager.send_signal(signal.SIGUSR1)

    def end(self):
        self._manager.terminate()
        if self._manager.wait(timeout=30) != 0:
            raise AssertionError(self._words())
        if "sent DIE" not in self._words():
            raise AssertionError("nobody took part in the session")


def the_end_of_a_session_ends_it_and_the_next_session_has_it_again(desktop, binary):
    # The session manager has room for a short command only, so the board is not below the build
    # directory.
    path = pathlib.Path(desktop.env["HOME"], "some board.sqlite")
    settings.write(path)
    session = _Session(desktop)
    kelpa = Kelpa(desktop, binary, path, env=session.env)
    kelpa.start()
    session.await_saved(1)
    kelpa.create_goal("Before it was saved")
    session.save()
    session.await_saved(2)
    # It has only been asked to save.
    kelpa.create_goal("Before its end")
    session.end()
    status = kelpa.wait()
    if status != 0:
        raise AssertionError(f"ended with {status}\n{kelpa.output()}")
    kelpa.check_output()
    _check_goals(path, ["Before it was saved", "Before its end"])

    session = _Session(desktop, "-session", "Default")
    again = desktop.wait_for_window(boards.WINDOW)
    board = boards.Board(again.pid)
    wait_until("the same board is there", lambda: board.goal_titles() == [
        "Before it was saved", "Before its end"])
    session.end()
    wait_until("its window is gone", lambda: all(
        window.title != boards.WINDOW for window in desktop.windows()))
    _check_goals(path, ["Before it was saved", "Before its end"])


def a_display_that_goes_away_ends_it_and_the_board_is_whole(desktop, binary):
    kelpa, path = start_kelpa(desktop, binary)
    kelpa.create_goal("Before the display went")

    def has_ended():
        status = kelpa.wait()
        if status != 1:
            raise AssertionError(f"ended with {status}\n{kelpa.output()}")
        kelpa.check_output()
        _check_goals(path, ["Before the display went"])

    desktop.replace_x_server(has_ended)
    _start_again(desktop, binary, path)
    _check_goals(path, ["Before the display went"])


def a_session_bus_that_goes_away_leaves_it_running(desktop, binary):
    kelpa, path = start_kelpa(desktop, binary)
    kelpa.create_goal("Before the bus went")
    terminal = Typing(desktop, "Typist")
    desktop.session_bus.kill()
    desktop.session_bus.wait()
    await_monitor(desktop, kelpa, terminal)
    kelpa.quit()
    _check_goals(path, ["Before the bus went"])

    _start_again(desktop, binary, path)
    _check_goals(path, ["Before the bus went"])


def _start_again(desktop, binary, path):
    """The next start is as good as any. The accessibility bus went with the rest, so that the board
    cannot be read."""
    again = desktop.start(binary, "--settings", path)
    desktop.activate(desktop.wait_for_window(boards.WINDOW))
    desktop.key("ctrl+q")
    if again.wait(timeout=30) != 0:
        raise AssertionError(f"ended with {again.returncode}")


def _check_goals(path, expected):
    stored = settings.StoredBoard(settings.read(path)).goal_titles
    if stored != expected:
        raise AssertionError(f"stored: {stored}")


def another_program_with_its_bus_name_does_not_keep_the_board_closed(desktop, binary):
    holder = pathlib.Path(__file__).parent / "support" / "name_holder.py"
    # Of the board at the default path.
    name = "org.kelpa.Kelpa"
    settings.write(pathlib.Path(desktop.env["XDG_DATA_HOME"]) / "kelpa" / "kelpa.sqlite")
    for manner in ("answers", "silent", "refuses"):
        other = desktop.start("/usr/bin/python3", "-B", holder, name, manner)
        wait_until(f"a program that {manner} owns the name",
                   lambda: f'"{name}"' in desktop.run("dbus-send", "--session", "--print-reply",
                                                      "--dest=org.freedesktop.DBus", "/",
                                                      "org.freedesktop.DBus.ListNames"))
        with Kelpa(desktop, binary, None) as kelpa:
            kelpa.create_goal(f"Beside a program that {manner}")
            expected = (f"kelpa: another program has the name {name} on the session bus: what is "
                        "sent to that name does not reach this board\n")
            if expected not in kelpa.output():
                raise AssertionError(f"{manner}: {kelpa.output()}")
            # A second start finds the window without the bus.
            status = desktop.start(binary).wait(timeout=30)
            if status != 0:
                raise AssertionError(f"{manner}: a second start ended with {status}")
            # Then the name is Kelpa's, and a second start is what it always is.
            other.kill()
            other.wait()
            status = desktop.start(binary).wait(timeout=30)
            if status != 0:
                raise AssertionError(f"{manner}: a second start ended with {status}")
    with Kelpa(desktop, binary, None) as kelpa:
        assert len(kelpa.board.goal_titles()) == 3
