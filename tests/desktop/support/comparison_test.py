"""comparison_test.py THEME: what the comparison of pictures finds and what it forgives, in the
colours that the file THEME gives the views."""

import pathlib
import re
import subprocess
import sys
import tempfile
import unittest

import comparison

_THEME = pathlib.Path(sys.argv.pop())


def _colors(is_dark):
    found = re.findall(r'(?:property color |")(\w+)"?: (?:isDark \?|root\.shade\() ?"(#\w+)"(?:,| :) "(#\w+)"',
                       _THEME.read_text(encoding="utf-8"))
    return {name: dark if is_dark else light for name, dark, light in found}


class Comparison(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self._folder = pathlib.Path(folder.name)

    def _board(self, name, color, *, without=None, symbol_at=463, has_specks=False, size="900x640"):
        """A board as it is drawn: the ground of a column, the rail beside it, a todo's row with its
        hairline, the frame of an empty place, a symbol of 14 points, and a text."""
        shapes = {
            "column": ["-fill", color["column"], "-draw", "roundrectangle 168,132 513,477 18,18"],
            "rail": ["(", "-size", "116x652", f"gradient:{color['railTop']}-{color['railBottom']}",
                     ")", "-geometry", "+32+132", "-composite"],
            "frame": ["-fill", "none", "-stroke", _opaque(color["outline"]), "-draw",
                      "roundrectangle 547,536 868,627 10,10", "-stroke", "none"],
            "symbol": ["-fill", "none", "-stroke", color["secondaryText"], "-strokewidth", "1.2",
                       "-draw", f"line {symbol_at + 2},259 {symbol_at + 12},259 "
                                f"line {symbol_at + 8},255 {symbol_at + 12},259 "
                                f"line {symbol_at + 8},263 {symbol_at + 12},259",
                       "-stroke", "none"],
            "badge": ["-fill", _opaque(color["hover"]), "-draw", "roundrectangle 602,150 634,170 10,10"],
            "text": ["-fill", color["text"], "-pointsize", "13", "-draw", "text 207,250 'Build it'"],
        }
        if has_specks:
            shapes["specks"] = ["-fill", color["secondaryText"], "-draw",
                                "point 300,240 point 420,300 point 500,400"]
        path = self._folder / f"{name}.png"
        subprocess.run(["convert", "-size", size, f"xc:{color['window']}",
                        *(word for shape, words in shapes.items() if shape != without for word in words),
                        f"png24:{path}"], check=True, timeout=60)
        return path

    def _difference(self, color, **changes):
        return comparison.compare(self._board("shown", color, **changes), self._board("reference", color))

    def test_the_same_picture_is_the_same(self):
        for is_dark in (False, True):
            self.assertTrue(self._difference(_colors(is_dark)).is_none())

    def test_single_pixels_may_differ(self):
        for is_dark in (False, True):
            difference = self._difference(_colors(is_dark), has_specks=True)
            self.assertEqual(difference.close, 3)
            self.assertTrue(difference.is_none(), difference)

    def test_whatever_is_lost_is_found(self):
        for is_dark in (False, True):
            for part in ("column", "rail", "frame", "symbol", "badge", "text"):
                with self.subTest(part=part, is_dark=is_dark):
                    difference = self._difference(_colors(is_dark), without=part)
                    self.assertFalse(difference.is_none(), difference)

    def test_a_symbol_that_moved_by_two_points_is_found(self):
        for is_dark in (False, True):
            difference = self._difference(_colors(is_dark), symbol_at=465)
            self.assertFalse(difference.is_none(), difference)

    def test_another_size_is_another_picture(self):
        color = _colors(is_dark=False)
        self.assertFalse(self._difference(color, size="900x639").is_none())

    def test_a_picture_that_is_not_there_is_like_none(self):
        shown = self._board("shown", _colors(is_dark=False))
        self.assertFalse(comparison.compare(shown, self._folder / "absent.png").is_none())


def _opaque(color):
    """#AARRGGBB as it is written for the program that draws."""
    return f"#{color[3:]}{color[1:3]}" if len(color) == 9 else color


if __name__ == "__main__":
    unittest.main()
