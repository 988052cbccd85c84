"""A keyboard that is there as long as a scenario, as a person's is: a compositor takes the focus from
the program in front when its last keyboard goes away."""

import os
import time

from key_codes import codes_of, codes_of_letter
from wayland_wire import Client

# The layout of the United States, which libxkbcommon puts together at both ends.
_KEYMAP = b"""xkb_keymap {
xkb_keycodes { include "evdev+aliases(qwerty)" };
xkb_types { include "complete" };
xkb_compat { include "complete" };
xkb_symbols { include "pc+us+inet(evdev)" };
};
\0"""

_MASKS = {42: 1, 29: 4, 56: 8, 125: 64, 126: 64}

# As long as a finger holds a key.
_HELD = 0.015


class VirtualKeyboard:
    def __init__(self):
        self._client = Client()
        seat = self._client.bind("wl_seat", 1)
        manager = self._client.bind("zwp_virtual_keyboard_manager_v1", 1)
        self._keyboard = self._client.new()
        self._client.send(manager, 0, seat, self._keyboard)
        keymap = os.memfd_create("keymap")
        os.write(keymap, _KEYMAP)
        self._client.send(self._keyboard, 0, 1, len(_KEYMAP), descriptor=keymap)
        os.close(keymap)
        self._client.round_trip()
        self._modifiers = 0

    def close(self):
        self._client.close()

    def type(self, text):
        for letter in text:
            self._press(*codes_of_letter(letter))

    def key(self, *names):
        """Presses and releases keys one after the other; those of a name with "+" together."""
        for name in names:
            self._press(*codes_of(name))

    def _press(self, *codes):
        for code in codes:
            self._change(code, True)
        for code in reversed(codes):
            self._change(code, False)

    def _change(self, code, is_down):
        now = int(time.monotonic() * 1000) & 0xFFFFFFFF
        self._client.send(self._keyboard, 1, now, code, int(is_down))
        if code in _MASKS:
            self._modifiers ^= _MASKS[code]
            self._client.send(self._keyboard, 2, self._modifiers, 0, 0, 0)
        self._client.round_trip()
        time.sleep(_HELD)
