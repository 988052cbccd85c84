"""typed_program.py TITLE FILE: a program of one window, which writes every line that is typed into it to the
file."""

import pathlib
import struct
import sys
import threading

sys.path[:0] = [str(pathlib.Path(__file__).resolve().parents[2] / "wayland" / "support")]

from key_codes import LETTERS  # noqa: E402
from plain_windows import PlainWindows  # noqa: E402


def main():
    title, path = sys.argv[1:]
    line = []

    def hear(arguments):
        _, _, code, is_down = struct.unpack("=IIII", arguments)
        letter = LETTERS.get(code, "") if is_down else ""
        line.append(letter)
        if letter == "\n":
            with open(path, "a", encoding="utf-8") as file:
                file.write("".join(line))
            line.clear()

    windows = PlainWindows()
    windows.open(title.encode(), b"typed")
    windows.hear_keys(hear)
    threading.Event().wait()


main()
