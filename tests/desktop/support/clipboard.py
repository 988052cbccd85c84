"""Other programs that have the clipboard."""

import pathlib
import sys

from processes import wait_until


def hold_clipboard(desktop, *text):
    """A program that has the clipboard from now on; `text` is what `clipboard_holder.py` takes."""
    log = desktop.directory / f"clipboard-{'-'.join(text)[:40]}.log"
    program = pathlib.Path(__file__).parent / "clipboard_holder.py"
    holder = desktop.start(sys.executable, "-B", program, *text, log=log)
    wait_until("a program has the clipboard", lambda: "held" in log.read_text())
    return holder
