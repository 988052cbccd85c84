"""What the screen shows beside what it is to show. The references lie in pictures/light/ and
pictures/dark/; a run with KELPA_UPDATE_PICTURES in the environment writes them anew instead of
comparing."""

import os
import pathlib

import comparison
from processes import wait_until

_FOLDER = pathlib.Path(__file__).parent.with_name("pictures")


class Pictures:
    """Pictures of the whole screen."""

    def __init__(self, desktop):
        self._desktop = desktop

    def shows(self, name, scheme, size=None):
        """Waits until the screen shows the reference `name` of the colour scheme, "light" or "dark",
        which is kept in another `size` for one that is very large. What was shown instead is left in
        the scenario's folder, and beside it what differs."""
        shown = self._desktop.directory / f"{name}-{scheme}.png"
        reference = _FOLDER / scheme / f"{name}.png"
        if "KELPA_UPDATE_PICTURES" in os.environ:
            wait_until("the screen rests", lambda: self._is_at_rest(shown, size))
            reference.parent.mkdir(parents=True, exist_ok=True)
            self._desktop.run("convert", shown, "-strip", "-quality", "95", f"png24:{reference}")
            return
        different = None

        def looks_right():
            nonlocal different
            self._take(shown, size)
            different = comparison.compare(shown, reference, shown.with_suffix(".difference.png"))
            return different.is_none()

        # A text cursor that blinks is there every other time.
        try:
            wait_until(shown.stem, looks_right, seconds=20, pause=0.1)
        except AssertionError:
            raise AssertionError(f"{shown} differs from its reference in {different}") from None

    def _is_at_rest(self, path, size):
        again = path.with_suffix(".again.png")
        self._take(again, size)
        self._desktop.run("sleep", "1")
        self._take(path, size)
        is_at_rest = comparison.compare(path, again).is_none()
        again.unlink()
        return is_at_rest

    def _take(self, path, size):
        self._desktop.screenshot(path)
        if size is not None:
            self._desktop.run("mogrify", "-scale", size, path)
