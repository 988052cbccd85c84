"""Codes of the kernel's input events for the keys of a keyboard of the United States."""

_ROWS = ((2, "1234567890-="), (16, "qwertyuiop[]"), (30, "asdfghjkl;'`"), (44, "zxcvbnm,./"))
_SHIFTED_ROWS = ((2, "!@#$%^&*()_+"), (16, "QWERTYUIOP{}"), (30, "ASDFGHJKL:\"~"), (44, "ZXCVBNM<>?"))
_NAMED = {"Return": 28, "Escape": 1, "BackSpace": 14, "Tab": 15, "space": 57, "Up": 103, "Down": 108,
          "Left": 105, "Right": 106, "Menu": 127, "shift": 42, "ctrl": 29, "alt": 56, "Super_L": 125,
          "Super_R": 126}
_CODES = {letter: start + at for start, letters in _ROWS for at, letter in enumerate(letters)}
_SHIFTED = {letter: start + at for start, letters in _SHIFTED_ROWS for at, letter in enumerate(letters)}

_NAMED_LETTERS = {" ": _NAMED["space"], "\n": _NAMED["Return"]}
# What each key writes by itself.
LETTERS = {code: letter for letter, code in (_CODES | _NAMED_LETTERS).items()}


def codes_of_letter(letter):
    """The keys that are held together to write it."""
    if letter in _SHIFTED:
        return 42, _SHIFTED[letter]
    return (_NAMED_LETTERS.get(letter) or _CODES[letter],)


def codes_of(name):
    """The keys of a name such as "ctrl+a"."""
    return tuple(_NAMED.get(part) or _CODES[part] for part in name.split("+"))
