"""drawing.py: a window that draws itself anew and has another title a hundred times a second, until it is
ended."""

import pathlib
import sys
import time

_HERE = pathlib.Path(__file__).resolve().parent
sys.path[:0] = [str(_HERE.parents[1] / "wayland" / "support")]

from plain_windows import PlainWindows  # noqa: E402


def main():
    plain = PlainWindows()
    window = plain.open(b"Drawing")
    colour = 0
    while True:
        colour = (colour + 0x010203) & 0xFFFFFF
        plain.paint(window, colour)
        plain.rename(window, b"Drawing %d" % colour)
        plain.settle()
        time.sleep(0.01)


main()
