"""Plasma's own search: what is typed into KRunner finds what is on the board, and opens it."""

import pathlib
import re

import board as boards
import settings
from activation import Activation, await_end
from desktop_search import is_revealed
from kelpa import Kelpa
from processes import wait_until


def _begin_hidden(desktop, binary, *goals):
    # Where a person has it: the bus knows only that one by the name that KRunner asks for.
    path = pathlib.Path(desktop.env["XDG_DATA_HOME"]) / "kelpa" / "kelpa.sqlite"
    path.parent.mkdir()
    settings.write(path, goals=goals, is_auto_sorting=False)
    kelpa = Kelpa(desktop, binary, None, arguments=["--hidden"])
    kelpa.begin()
    wait_until("Kelpa listens", lambda: desktop.has_name("org.kelpa.Kelpa"))
    return kelpa


def _search(krunner, text, *expected):
    """Types the text and waits until these are the results, best first, each with what is said about it."""
    krunner.search(text)
    try:
        wait_until(f"{text!r} is found", lambda: krunner.results() == list(expected))
    except AssertionError as error:
        raise AssertionError(f"{error}: {krunner.results()}") from None


def what_is_typed_into_krunner_finds_goals_todos_and_windows_and_opens_them(desktop, binary):
    many = [(f"Goal {number}", [f"Step {number}.{step}" for step in range(8)]) for number in range(20)]
    kelpa = _begin_hidden(desktop, binary, *many, ("Quarterly taxes", ["Find receipts"]))
    krunner = desktop.add_krunner()

    # Before the board has ever been shown.
    _search(krunner, "step 17.6", ["Step 17.6", "Goal 17, in category Kelpa"])
    krunner.choose_first()
    kelpa.window = wait_until("Kelpa's window is shown", kelpa.shown_window)
    kelpa.await_board()
    desktop.wait_for_active(kelpa.window)
    wait_until("its goal is selected", lambda: kelpa.board.selected_column() == "Goal 17")
    wait_until("the todo is in view", lambda: is_revealed(kelpa, "Goal 17", "Step 17.6"))

    desktop.start_program("Letter to the bank")
    letter = desktop.wait_for_window("Letter to the bank")
    desktop.activate(letter)
    desktop.wait_for_active(letter)
    _search(krunner, "quarterly", ["Quarterly taxes", "1 unfinished todo, in category Kelpa"])
    krunner.choose_first()
    desktop.wait_for_active(kelpa.window)
    wait_until("the goal is selected", lambda: kelpa.board.selected_column() == "Quarterly taxes")

    # KWin itself finds windows by what stands in their titles as it is typed.
    _search(krunner, "bank letter", ["Letter to the bank", f"{boards.UNSORTED}, in category Kelpa"])
    # KRunner's own window is none of the person's.
    assert len(desktop.run(binary, "windows").splitlines()) == 1
    krunner.choose_first()
    desktop.wait_for_active(letter)
    kelpa.quit()


def krunner_does_not_ask_where_kelpa_is_switched_off_in_plasma_s_settings(desktop, binary):
    kelpa = _begin_hidden(desktop, binary, ("Taxes", ["Find receipts"]))
    log = desktop.directory / "calls.log"
    desktop.start("dbus-monitor", "--session", "path=/org/kelpa/Runner,member=Match", log=log)

    def asked():
        """What Kelpa has been asked for."""
        return re.findall(r'member=Match\n +string "(.*)"', log.read_text(encoding="utf-8"))

    def is_heard(text):
        desktop.run("dbus-send", "--session", "--print-reply", "--dest=org.kelpa.Kelpa", "/org/kelpa/Runner",
                    "org.kde.krunner1.Match", f"string:{text}")
        return text in asked()

    wait_until("a call is heard", lambda: is_heard("before"))
    krunner = desktop.add_krunner(is_kelpa_off=True)
    # KRunner asks everybody at once, for each letter; its own calculator has replied to the last.
    _search(krunner, "17+25", ["42", "in category Calculator"])
    wait_until("a call is heard", lambda: is_heard("after"))
    assert set(asked()) == {"before", "after"}, asked()
    kelpa.terminate()
    kelpa.wait()


def krunner_s_first_search_starts_the_kelpa_that_does_not_run_once(desktop, binary):
    path = pathlib.Path(desktop.env["XDG_DATA_HOME"]) / "kelpa" / "kelpa.sqlite"
    path.parent.mkdir()
    settings.write(path, goals=(("Quarterly taxes", ["Find receipts"]),), is_auto_sorting=False)
    activation = Activation(desktop, binary)
    krunner = desktop.add_krunner()
    assert not desktop.has_name("org.kelpa.Kelpa")
    # A call for each letter, of which the first starts it.
    _search(krunner, "quarterly", ["Quarterly taxes", "1 unfinished todo, in category Kelpa"])
    assert not [window for window in desktop.windows() if window.title == boards.WINDOW]
    krunner.choose_first()
    shown = desktop.wait_for_window(boards.WINDOW)
    desktop.wait_for_active(shown)
    assert activation.starts() == 1
    await_end(desktop, shown.pid)
