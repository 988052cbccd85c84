"""A keyboard by KWin's protocol for input of tests."""

import time

from key_codes import codes_of, codes_of_letter
from wayland_wire import Client

# As long as a finger holds a key.
_HELD = 0.015


class FakeKeyboard:
    def __init__(self):
        self._client = Client()
        self._input = self._client.bind("org_kde_kwin_fake_input", 4)
        self._client.send(self._input, 0, b"a scenario", b"keys")
        self._client.round_trip()

    def key(self, *names):
        """Presses and releases keys one after the other; those of a name with "+" together."""
        for name in names:
            self._press(codes_of(name))

    def type(self, text):
        for letter in text:
            self._press(codes_of_letter(letter))

    def _press(self, codes):
        for code in codes:
            self._change(code, True)
        for code in reversed(codes):
            self._change(code, False)

    def _change(self, code, is_down):
        self._client.send(self._input, 10, code, int(is_down))
        self._client.round_trip()
        time.sleep(_HELD)
