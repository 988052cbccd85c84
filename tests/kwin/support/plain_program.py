"""plain_program.py TITLE APPLICATION_ID: a program of one window, which ends when that is closed."""

import os
import pathlib
import sys
import threading

sys.path[:0] = [str(pathlib.Path(__file__).resolve().parents[2] / "wayland" / "support")]

from plain_windows import PlainWindows  # noqa: E402

PlainWindows().open(*(word.encode() for word in sys.argv[1:]), closed=lambda: os._exit(0))
threading.Event().wait()
