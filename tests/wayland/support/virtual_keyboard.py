"""A keyboard that is there as long as a scenario, as a person's is: a compositor takes the focus from
the program in front when its last keyboard goes away."""

import os
import time

from wayland_wire import Client

# The layout of the United States, which libxkbcommon puts together at both ends.
_KEYMAP = b"""xkb_keymap {
xkb_keycodes { include "evdev+aliases(qwerty)" };
xkb_types { include "complete" };
xkb_compat { include "complete" };
xkb_symbols { include "pc+us+inet(evdev)" };
};
\0"""

# Codes of the kernel's input events.
_ROWS = ((2, "1234567890-="), (16, "qwertyuiop[]"), (30, "asdfghjkl;'`"), (44, "zxcvbnm,./"))
_SHIFTED_ROWS = ((2, "!@#$%^&*()_+"), (16, "QWERTYUIOP{}"), (30, "ASDFGHJKL:\"~"), (44, "ZXCVBNM<>?"))
_NAMED = {"Return": 28, "Escape": 1, "BackSpace": 14, "Tab": 15, "space": 57, "Up": 103, "Down": 108,
          "Left": 105, "Right": 106, "shift": 42, "ctrl": 29, "alt": 56, "Super_L": 125, "Super_R": 126}
_MASKS = {42: 1, 29: 4, 56: 8, 125: 64, 126: 64}
_CODES = {letter: start + at for start, letters in _ROWS for at, letter in enumerate(letters)}
_SHIFTED = {letter: start + at for start, letters in _SHIFTED_ROWS for at, letter in enumerate(letters)}

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
            if letter in _SHIFTED:
                self._press(42, _SHIFTED[letter])
            else:
                self._press(57 if letter == " " else _CODES[letter])

    def key(self, *names):
        """Presses and releases keys one after the other; those of a name with "+" together."""
        for name in names:
            self._press(*(_NAMED.get(part) or _CODES[part] for part in name.split("+")))

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
