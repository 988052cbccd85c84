"""demo.py BINARY DIRECTORY [Kelpa's arguments]: Kelpa on a desktop of its own with real programs. It
waits until the board shows their windows, takes a picture and ends everything it started."""

import pathlib
import shutil
import subprocess
import sys
import time

root = pathlib.Path(__file__).resolve().parent.parent
sys.path.insert(0, str(root / "tests" / "desktop" / "support"))
sys.dont_write_bytecode = True

import processes  # noqa: E402
import settings  # noqa: E402
from harness import Desktop  # noqa: E402
from processes import wait_until  # noqa: E402

_GOALS = (
    ("Ship release 0.1", ["Write the release notes", "Build the package", "Tell the testers"]),
    ("Prepare Friday's proposal", ["Collect the figures", "Draft the summary"]),
    ("Learn the new tracker", ["Read the guide"]),
)
_NOTES = "Release notes\n\n- The board keeps its goals and windows between runs.\n- Six languages.\n"


def _start_programs(desktop):
    """Starts real programs with visible content; returns how many windows they show."""
    home = pathlib.Path(desktop.env["HOME"])
    notes = home / "release-notes.txt"
    notes.write_text(_NOTES, encoding="utf-8")
    picture = home / "sunset.png"
    subprocess.run(["convert", "-size", "640x400", "gradient:#2b5876-#f7b267", picture], check=True)
    work = home / "work"
    for folder in ("reports", "figures", "letters"):
        (work / folder).mkdir(parents=True)
    shutil.copy(notes, work)
    desktop.start_xterm("Build log", "sh", "-c", "ls -l /usr/bin | head -n 60; exec cat")
    desktop.start_xterm("System", "sh", "-c", "uname -a; df -h; free; exec cat")
    desktop.start("mousepad", "--disable-server", notes)
    desktop.start("pcmanfm", "--no-desktop", work)
    desktop.start("gpicview", picture)
    wait_until("five windows are shown", lambda: len(desktop.windows()) >= 5, 60)
    return len(desktop.windows())


def _take_settled_picture(desktop, path):
    """Takes pictures until one stays the same for longer than the time between two previews, which
    arrive one after the other, or until the deadline."""
    deadline = time.monotonic() + 15
    last, since = None, time.monotonic()
    while time.monotonic() < deadline and time.monotonic() - since < 1.5:
        desktop.screenshot(path)
        pixels = subprocess.run(["convert", path, "rgb:-"], check=True, stdout=subprocess.PIPE).stdout
        if pixels != last:
            last, since = pixels, time.monotonic()


def main():
    binary, directory, *arguments = sys.argv[1:]
    directory = pathlib.Path(directory)
    processes.exit_on_signals()
    with Desktop(directory / "desktop") as desktop:
        import board
        from kelpa import Kelpa

        board.connect()
        count = _start_programs(desktop)
        own = not any(word == "--settings" or word.startswith("--settings=") for word in arguments)
        path = directory / "desktop" / "board.sqlite"
        if own:
            settings.write(path, goals=_GOALS)
        with Kelpa(desktop, binary, path if own else None, arguments) as kelpa:
            def cards():
                return sum(len(column.cards) for column in kelpa.board.columns().values())

            wait_until(f"the board shows {count} windows", lambda: cards() >= count, 60)
            # Away from the cards, which would show a tip.
            desktop.hover(0, 0)
            picture = directory / time.strftime("kelpa-%Y%m%d-%H%M%S.png")
            _take_settled_picture(desktop, picture)
            print(f"Kelpa shows {cards()} windows of {count}: {picture}")
    return 0


if __name__ == "__main__":
    try:
        sys.exit(main())
    except AssertionError as error:
        print(f"The demo failed: {error}", file=sys.stderr)
        sys.exit(1)
