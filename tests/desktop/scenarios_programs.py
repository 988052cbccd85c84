"""Programs of everyday use. Large ones, a browser, an office suite and an image editor, have windows that
come late, change their titles, share processes, and ask before they close; a light browser and a
spreadsheet stand beside each other in every run."""

import contextlib
import pathlib
import subprocess
import sys

import board as boards
import settings
from kelpa import Kelpa
from processes import wait_until
from selection import Selection

_GOAL, _OTHER_GOAL = "Only goal", "Other goal"
# They read hundreds of files before they show anything, the first time most of all.
_START_SECONDS = 120.0

_PAGE = "<!DOCTYPE html><meta charset='utf-8'><title>{title}</title><h1>{title}</h1>"
_DOCUMENT = """<?xml version="1.0" encoding="UTF-8"?>
<office:document xmlns:office="urn:oasis:names:tc:opendocument:xmlns:office:1.0"
 xmlns:text="urn:oasis:names:tc:opendocument:xmlns:text:1.0"
 xmlns:draw="urn:oasis:names:tc:opendocument:xmlns:drawing:1.0"
 office:version="1.3" office:mimetype="application/vnd.oasis.opendocument.{kind}">
<office:body><office:{body}>{content}</office:{body}></office:body></office:document>
"""
# What the browser asks and shows on its first day.
_BROWSER_SETTINGS = """
user_pref("browser.aboutwelcome.enabled", false);
user_pref("browser.shell.checkDefaultBrowser", false);
user_pref("browser.startup.homepage_override.mstone", "ignore");
user_pref("browser.tabs.firefox-view", false);
user_pref("datareporting.policy.dataSubmissionEnabled", false);
user_pref("toolkit.telemetry.reportingpolicy.firstRun", false);
"""


class _Programs:
    """Starts the programs, each with a document whose name is in the title of its window."""

    def __init__(self, desktop):
        self._desktop = desktop
        self._folder = pathlib.Path(desktop.env["HOME"]) / "documents"
        self._folder.mkdir()

    def browse(self, *titles):
        """A window of one browser for each title."""
        profile = self._folder / "profile"
        profile.mkdir()
        (profile / "user.js").write_text(_BROWSER_SETTINGS, encoding="utf-8")
        for title in titles:
            page = self._folder / f"{title}.html"
            page.write_text(_PAGE.format(title=title), encoding="utf-8")
            self._desktop.start("firefox-esr", "--profile", profile, "--new-window", page.as_uri())
            self._desktop.wait_for_window(title, _START_SECONDS)

    def browse_lightly(self, *titles):
        """The same with a process for each."""
        for title in titles:
            page = self._folder / f"{title}.html"
            page.write_text(_PAGE.format(title=title), encoding="utf-8")
            self._desktop.start("dillo", page.as_uri())
            self._desktop.wait_for_window(title, _START_SECONDS)

    def calculate(self, title):
        path = self._folder / f"{title}.csv"
        path.write_text("Month,Amount\nMay,120\n", encoding="utf-8")
        self._desktop.start("gnumeric", "--no-splash", path)
        self._desktop.wait_for_window(title, _START_SECONDS)

    def write(self, title):
        self._open_document(title, "fodt", kind="text", body="text", content=f"<text:p>{title}</text:p>")

    def present(self, title):
        self._open_document(title, "fodp", kind="presentation", body="presentation",
                            content='<draw:page draw:name="First"/>')

    def _open_document(self, title, suffix, **parts):
        """In the one process of the suite."""
        path = self._folder / f"{title}.{suffix}"
        path.write_text(_DOCUMENT.format(**parts), encoding="utf-8")
        self._desktop.start("soffice", "--norestore", "--nologo", "--nofirststartwizard", path)
        self._desktop.wait_for_window(title, _START_SECONDS)

    def paint(self, title):
        path = self._folder / f"{title}.png"
        self._desktop.run("convert", "-size", "320x200", "xc:orange", path)
        self._desktop.start("gimp", "--no-splash", "--no-data", "--no-fonts", path)
        self._desktop.wait_for_window(title, _START_SECONDS)


@contextlib.contextmanager
def _busy_machine():
    """Two processes that compute for all they are worth, as a compiler does."""
    workers = [subprocess.Popen([sys.executable, "-c", "while True: pass"]) for _ in range(2)]
    try:
        yield
    finally:
        for worker in workers:
            worker.kill()
            worker.wait()


def _card(kelpa, word):
    """Column, owner and title of the one card whose title contains the word, or None."""
    found = [(column.title, card.owner, card.title) for column in kelpa.board.columns().values()
             for card in column.cards if word in card.title]
    return found[0] if len(found) == 1 else None


def programs_of_everyday_use_are_put_into_goals_on_a_busy_machine(desktop, binary):
    path = desktop.directory / "board.sqlite"
    settings.write(path, goals=[(_GOAL, []), (_OTHER_GOAL, [])])
    programs = _Programs(desktop)
    with Kelpa(desktop, binary, path) as kelpa, _busy_machine():
        # Kelpa is there before them and sees each come, with whatever it shows before its document.
        programs.browse("Weather", "Timetable")
        programs.write("Letter")
        programs.present("Slides")
        programs.paint("Poster")
        owners = {"Weather": "Firefox", "Timetable": "Firefox", "Letter": "LibreOffice Writer",
                  "Slides": "LibreOffice Impress", "Poster": "Image Manipulation"}
        for word, owner in owners.items():
            column, shown, _ = wait_until(f"there is one card of {word!r}", lambda: _card(kelpa, word))
            assert column == boards.UNSORTED, column
            assert owner in shown, f"{word!r} belongs to {shown!r}"
        goals = dict(zip(owners, (_GOAL, _OTHER_GOAL, _GOAL, _OTHER_GOAL, _GOAL)))
        for word, goal in goals.items():
            kelpa.drag_card(_card(kelpa, word)[2], boards.UNSORTED, goal)
            wait_until(f"{word!r} is in {goal!r}", lambda: (_card(kelpa, word) or " ")[0] == goal)
        for word, goal in goals.items():
            kelpa.focus()
            kelpa.click_card(goal, _card(kelpa, word)[2])
            wait_until(f"{word!r} is active", lambda: word in _active_title(desktop))
        kelpa.quit()
        kelpa.start()
        wait_until("every window is in its goal again", lambda: all(
            (_card(kelpa, word) or " ")[0] == goal for word, goal in goals.items()))


def what_a_browser_and_an_office_suite_show_is_found_and_opened(desktop, binary):
    programs = _Programs(desktop)
    programs.browse("Bank account", "Timetable")
    programs.write("Letter")
    _find_and_open(desktop, binary, "Letter")


def what_a_light_browser_and_a_spreadsheet_show_is_found_and_opened(desktop, binary):
    programs = _Programs(desktop)
    programs.browse_lightly("Bank account", "Timetable")
    programs.calculate("Balance")
    _find_and_open(desktop, binary, "Balance")


def _find_and_open(desktop, binary, document):
    """Beside two windows of a browser, one whose title contains `document`."""
    path = desktop.directory / "board.sqlite"
    settings.write(path, goals=[("Done", []), ("Taxes", ["Ask the bank"])], is_auto_sorting=False)
    with Kelpa(desktop, binary, path) as kelpa:
        board, selection = kelpa.board, Selection(desktop, kelpa)

        def shows(*words):
            return len(board.cards()) == len(words) and all(_card(kelpa, word) for word in words)

        def opened(word, *keys):
            selection.press(*keys)
            wait_until(f"{word!r} is active", lambda: word in _active_title(desktop))
            wait_until("the search is over", lambda: shows("Bank", "Timetable", document))
            kelpa.focus()
            assert board.field(boards.SEARCH).text() == ""

        wait_until("there are three cards", lambda: shows("Bank", "Timetable", document))
        kelpa.focus()
        # Nothing has the keyboard: what is typed is searched.
        desktop.type("bank")
        wait_until("the page is found", lambda: shows("Bank"))
        wait_until("what was found is counted",
                   lambda: board.has_text("Found: windows 1, goals 0, todos 1"))
        selection.press("Return")
        selection.is_card(_card(kelpa, "Bank")[2])
        opened("Bank", "Return")
        # In one stroke, to the document of another program.
        selection.press("ctrl+f")
        desktop.type(document.lower())
        wait_until("the document is found", lambda: shows(document))
        opened(document, "ctrl+Return")
        # A window in a goal that is hidden.
        kelpa.open_move_menu(_card(kelpa, "Timetable")[2], boards.UNSORTED, "Done")()
        wait_until("the page is in its goal", lambda: (_card(kelpa, "Timetable") or " ")[0] == "Done")
        kelpa.click(lambda: board.button(boards.HIDE_EMPTY), "the button that hides goals")
        kelpa.wait_for_goals("Taxes")
        desktop.key("Escape")
        desktop.type("timetable")
        kelpa.click(lambda: board.button("1 more in hidden goals"), "the step to what is hidden")
        kelpa.wait_for_goals("Done", "Taxes")
        selection.is_card(_card(kelpa, "Timetable")[2])
        opened("Timetable", "Return")


def a_document_that_is_not_saved_asks_in_front_when_its_card_is_closed(desktop, binary):
    path = desktop.directory / "board.sqlite"
    settings.write(path)
    _Programs(desktop).write("Letter")
    title = desktop.wait_for_window("Letter").title
    with Kelpa(desktop, binary, path) as kelpa:
        kelpa.wait_for_card(boards.UNSORTED, title)
        kelpa.click_card(boards.UNSORTED, title)
        wait_until("the letter is active", lambda: "Letter" in _active_title(desktop))
        letter = desktop.active_window()
        desktop.type("dear")
        kelpa.focus()
        kelpa.close_card(boards.UNSORTED, title)
        wait_until("the question is in front",
                   lambda: desktop.active_window() not in (0, letter, kelpa.window.number))
        kelpa.focus()
        kelpa.wait_for_card(boards.UNSORTED, title)


def _active_title(desktop):
    active = desktop.active_window()
    return next((window.title for window in desktop.windows() if window.number == active), "")
