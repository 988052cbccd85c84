"""Whether a picture of the screen is like its reference.

It is looked at twice. Closely, nearly every pixel has to have its colour: few enough may differ that a
symbol of 14 points cannot be among them. And from afar, where a pixel is the mean of a hundred, all of
them have to: a ground of a slightly different colour, or a thin line, is many small differences."""

import re
import subprocess
import tempfile

# A few edges of glyphs and of round corners.
_MOST_DIFFERENT = 12
# Colours that differ by less are taken for the same.
_FUZZ_CLOSE, _FUZZ_AFAR = "2%", "1%"
# Means, not a filter that sharpens: a moved edge is to stay within its pixel.
_FROM_AFAR = ("-scale", "10%")


class Difference:
    """How many pixels differ closely and from afar; infinitely many when the sizes do."""

    def __init__(self, close, afar):
        self.close = close
        self.afar = afar

    def is_none(self):
        return self.close <= _MOST_DIFFERENT and self.afar == 0

    def __repr__(self):
        return f"{self.close:g} pixels closely and {self.afar:g} from afar"


def compare(picture, reference, show=None):
    """`show` is where a picture of the close differences is left."""
    close = _count(picture, reference, _FUZZ_CLOSE, show or "null:")
    if close > _MOST_DIFFERENT:
        # Nothing more is to be learnt from afar.
        return Difference(close, float("nan"))
    with tempfile.TemporaryDirectory() as folder:
        small = [f"{folder}/{name}.png" for name in ("picture", "reference")]
        for path, source in zip(small, (picture, reference)):
            subprocess.run(["convert", source, *_FROM_AFAR, f"png24:{path}"], stdin=subprocess.DEVNULL,
                           stderr=subprocess.PIPE, check=True, timeout=120)
        return Difference(close, _count(*small, _FUZZ_AFAR, "null:"))


def _count(picture, reference, fuzz, show):
    result = subprocess.run(
        ["compare", "-metric", "AE", "-fuzz", fuzz, picture, reference, show],
        stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL, stderr=subprocess.PIPE, check=False,
        timeout=120, text=True)
    count = re.match(r"[\d.e+]+", result.stderr)
    return float(count.group()) if count and result.returncode in (0, 1) else float("inf")
