"""What the screen shows beside what it is to show. The references lie in pictures/; a run with
KELPA_UPDATE_PICTURES in the environment writes them anew instead of comparing."""

import os
import pathlib
import re
import subprocess

from processes import wait_until

_FOLDER = pathlib.Path(__file__).with_name("pictures")
# A blinking text cursor and single edges of glyphs may differ; a moved line of text may not.
_MOST_DIFFERENT = 150
# Colours that differ by less are taken for the same.
_FUZZ = "6%"


class Pictures:
    """Pictures of the whole screen."""

    def __init__(self, desktop):
        self._desktop = desktop

    def shows(self, name):
        """Waits until the screen shows the reference `name`. What was shown instead is left in the
        scenario's folder, and beside it what differs."""
        shown = self._desktop.directory / f"{name}.png"
        if "KELPA_UPDATE_PICTURES" in os.environ:
            wait_until("the screen rests", lambda: self._is_at_rest(shown))
            _FOLDER.mkdir(exist_ok=True)
            self._desktop.run("convert", shown, "-strip", "-quality", "95", f"png24:{_FOLDER / name}.png")
            return
        different = None

        def looks_right():
            nonlocal different
            self._desktop.screenshot(shown)
            different = self._difference(shown, _FOLDER / f"{name}.png")
            return different <= _MOST_DIFFERENT

        try:
            wait_until(name, looks_right, seconds=10, pause=0.3)
        except AssertionError:
            raise AssertionError(f"{shown} differs from its reference in {different} pixels") from None

    def _is_at_rest(self, path):
        again = path.with_suffix(".again.png")
        self._desktop.screenshot(again)
        self._desktop.run("sleep", "1")
        self._desktop.screenshot(path)
        is_at_rest = self._difference(path, again) <= _MOST_DIFFERENT
        again.unlink()
        return is_at_rest

    def _difference(self, picture, reference):
        """The number of pixels that differ; all of them when the sizes do."""
        result = subprocess.run(
            ["compare", "-metric", "AE", "-fuzz", _FUZZ, picture, reference,
             picture.with_suffix(".difference.png")],
            env=self._desktop.env, stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL,
            stderr=subprocess.PIPE, check=False, timeout=60, text=True)
        count = re.match(r"[\d.e+]+", result.stderr)
        return float(count.group()) if count and result.returncode in (0, 1) else float("inf")
