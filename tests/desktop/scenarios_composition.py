"""Writing with the input methods of the desktop: what is composed, and the keys while it is."""

import os
import signal

import board as boards
import settings
from board import TODO
from front import await_monitor
from input_methods import Chewing, Hangul
from kelpa import Kelpa
from processes import wait_until
from selection import Selection
from typists import KeyLog, Typing

# The keys for two syllables each, and the text that they write.
_NI_HAO, _HELLO = "su3cl3", "你好"
_HAN_GEUL, _KOREAN = "gksrmf", "한글"
_GOALS = (("Home", ["One"]), ("Work", []))


def _started(desktop, binary, env, goals=_GOALS):
    path = desktop.directory / "board.sqlite"
    settings.write(path, goals=goals, is_auto_sorting=False)
    kelpa = Kelpa(desktop, binary, path, env=env)
    kelpa.start()
    kelpa.focus()
    return kelpa, path


def _await_field(kelpa, text):
    try:
        wait_until("the text in the field with the keyboard", lambda: kelpa.board.written() == text, 15)
    except AssertionError as error:
        raise AssertionError(f"{error}: {text!r}, but {kelpa.board.written()!r}") from None


def _open_field(kelpa, column):
    kelpa.click(*kelpa.column_button(column, boards.ADD_TODO))
    wait_until("a todo can be typed", kelpa.board.focused_field)


def _open_title(desktop, kelpa, title):
    """Begins to change the title of a todo, at its end."""
    kelpa.click(*kelpa.todo_node("Home", title))
    _await_field(kelpa, title)
    desktop.key("End")
    # A key that the input method does not want comes a little later than what it composes.
    wait_until("nothing is selected", lambda: kelpa.board.focused_field().selections() == 0)


def _frame(kelpa):
    x, y = kelpa.centre(kelpa.board.focused_field, "the field with the keyboard")
    field = kelpa.board.focused_field().frame()
    assert field[0] <= x <= field[0] + field[2] and field[1] <= y <= field[1] + field[3]
    return field


def _ink(desktop, frame):
    """How much is written in a part of the screen: its dark points."""
    from Xlib import X

    x, y, width, height = frame
    # Without the ring around the field that has the keyboard.
    image = desktop.x.screen().root.get_image(x + 4, y + 4, width - 8, height - 8, X.ZPixmap, 0xFFFFFFFF)
    return sum(max(image.data[at:at + 3]) < 0x50 for at in range(0, len(image.data), 4))


def _await_composition(desktop, kelpa, before, is_there=True):
    """Until the field shows more, or no more, than the `before` that was there and a cursor. What is
    composed is not yet told to assistive programs."""
    frame = _frame(kelpa)

    def is_composed():
        # The cursor, which blinks, is less than this, and a syllable more.
        return _ink(desktop, frame) > before + frame[3]

    wait_until("the composition is to be seen" if is_there else "nothing is composed any more",
               lambda: is_composed() == is_there, 15)


def _press_after(desktop, key):
    """As a hand does that has seen the composition end."""
    desktop.run("xdotool", "sleep", "0.1", "key", key)


def _await_candidates_below(kelpa, method):
    x, y, _, height = _frame(kelpa)
    left, top, _, _ = wait_until("what can be chosen is shown", method.candidates)
    assert x <= left <= x + 100, f"{left} is not below the text that begins at {x}"
    assert y + height // 2 <= top <= y + height + 12, f"{top} is not below the field from {y} on"


def _compose_ni_hao(desktop, kelpa, method):
    """Until one of the characters for its second syllable is to be chosen. Returns the ink that the
    field had before."""
    before = _ink(desktop, _frame(kelpa))
    desktop.type(_NI_HAO)
    _await_composition(desktop, kelpa, before)
    desktop.key("Down")
    _await_candidates_below(kelpa, method)
    return before


def return_ends_a_composition_before_it_adds_the_todo(desktop, binary):
    method = Chewing(desktop)
    kelpa, path = _started(desktop, binary, method.env)
    _open_field(kelpa, "Home")
    method.await_field()
    before = _compose_ni_hao(desktop, kelpa, method)
    # The second is another 好, the first the usual one.
    desktop.key("1")
    wait_until("nothing is to be chosen", lambda: method.candidates() is None)
    assert kelpa.board.written() == ""
    desktop.key("Return")
    _await_field(kelpa, _HELLO)
    kelpa.wait_for_todos("Home", [("One", TODO)])
    _press_after(desktop, "Return")
    kelpa.wait_for_todos("Home", [("One", TODO), (_HELLO, TODO)])
    # The next one at once.
    _await_field(kelpa, "")
    desktop.type(_NI_HAO)
    _await_composition(desktop, kelpa, before)
    desktop.key("Return")
    _await_field(kelpa, _HELLO)
    _press_after(desktop, "Return")
    kelpa.wait_for_todos("Home", [("One", TODO), (_HELLO, TODO), (_HELLO, TODO)])
    kelpa.check_stored(path)
    kelpa.quit()


def escape_ends_a_composition_and_nothing_else(desktop, binary):
    method = Chewing(desktop)
    kelpa, path = _started(desktop, binary, method.env)
    _open_title(desktop, kelpa, "One")
    method.await_field()
    desktop.type(_NI_HAO)
    desktop.key("Return")
    _await_field(kelpa, "One" + _HELLO)
    before = _ink(desktop, _frame(kelpa))
    desktop.type(_NI_HAO)
    _await_composition(desktop, kelpa, before)
    desktop.key("Escape")
    _await_composition(desktop, kelpa, before, is_there=False)
    _await_field(kelpa, "One" + _HELLO)
    # The input method begins anew.
    desktop.type(_NI_HAO)
    _await_composition(desktop, kelpa, before)
    desktop.key("Escape")
    _await_composition(desktop, kelpa, before, is_there=False)
    _press_after(desktop, "Return")
    kelpa.wait_for_todos("Home", [("One" + _HELLO, TODO)])
    _open_field(kelpa, "Home")
    desktop.key("Escape")
    wait_until("the field is closed", lambda: kelpa.board.field(boards.ADD_TODO) is None)
    kelpa.check_stored(path)
    kelpa.quit()


def a_syllable_is_kept_once_wherever_the_keyboard_goes(desktop, binary):
    method = Hangul(desktop)
    terminal = Typing(desktop, "Typist")
    kelpa, path = _started(desktop, binary, method.env)
    _open_field(kelpa, "Home")
    method.await_field()

    def write(before):
        desktop.type(_HAN_GEUL)
        # The second syllable is being composed.
        _await_field(kelpa, before + _KOREAN[0])

    # This input method ends with Return, and passes it on.
    write("")
    desktop.key("Return")
    _await_field(kelpa, _KOREAN)
    _press_after(desktop, "Return")
    kelpa.wait_for_todos("Home", [("One", TODO), (_KOREAN, TODO)])
    # To a place in the same field.
    _await_field(kelpa, "")
    write("")
    x, y = kelpa.centre(kelpa.board.focused_field, "the field")
    desktop.click(x + 60, y)
    _await_field(kelpa, _KOREAN)
    write(_KOREAN)
    # To the field of another goal, where the syllable must not appear.
    _open_field(kelpa, "Work")
    _await_field(kelpa, "")
    write("")
    _open_field(kelpa, "Home")
    _await_field(kelpa, 2 * _KOREAN)
    write(2 * _KOREAN)
    # To another program.
    terminal.focus()
    terminal.type_sentinel("elsewhere")
    kelpa.focus()
    desktop.click(x, y)
    _await_field(kelpa, 3 * _KOREAN)
    _press_after(desktop, "Return")
    kelpa.wait_for_todos("Home", [("One", TODO), (_KOREAN, TODO), (3 * _KOREAN, TODO)])
    _open_field(kelpa, "Work")
    _await_field(kelpa, _KOREAN)
    _press_after(desktop, "Return")
    kelpa.wait_for_todos("Work", [(_KOREAN, TODO)])
    # To the board, from a title that is changed.
    _open_title(desktop, kelpa, "One")
    write("One")
    desktop.click(*kelpa.ground("Home"))
    kelpa.wait_for_todos(
        "Home", [("One" + _KOREAN, TODO), (_KOREAN, TODO), (3 * _KOREAN, TODO)])
    kelpa.check_stored(path)
    kelpa.quit()


def a_syllable_is_kept_when_the_program_ends(desktop, binary):
    method = Hangul(desktop)
    kelpa, path = _started(desktop, binary, method.env)
    # A new todo, and a title that is changed.
    expected = [("One", TODO)]

    def write(before):
        method.await_field()
        desktop.type(_HAN_GEUL)
        _await_field(kelpa, before + _KOREAN[0])

    def is_stored():
        stored = settings.StoredBoard(settings.read(path))
        assert stored.todos("Home") == expected, f"{expected}, but {stored.todos('Home')}"

    _open_field(kelpa, "Home")
    write("")
    os.kill(kelpa.process_id(), signal.SIGTERM)
    assert kelpa.wait() == 0
    expected.append((_KOREAN, TODO))
    is_stored()
    desktop.hover(5, 5)
    kelpa.start()
    kelpa.focus()
    _open_title(desktop, kelpa, "One")
    write("One")
    kelpa.quit()
    expected[0] = ("One" + _KOREAN, TODO)
    is_stored()


def what_is_searched_is_what_has_been_composed(desktop, binary):
    method = Chewing(desktop)
    desktop.open_xterms("Greeting", "Other")
    greeting = desktop.wait_for_window("Greeting")
    desktop.run("xprop", "-id", greeting.number, "-f", "_NET_WM_NAME", "8u", "-set", "_NET_WM_NAME", _HELLO)
    kelpa, _ = _started(desktop, binary, method.env)
    kelpa.wait_for_card(boards.UNSORTED, _HELLO)
    kelpa.wait_for_card(boards.UNSORTED, "Other")
    kelpa.click(lambda: kelpa.board.field(boards.SEARCH), "the search field")
    _await_field(kelpa, "")
    method.await_field()
    _compose_ni_hao(desktop, kelpa, method)
    assert kelpa.board.card(boards.UNSORTED, "Other")
    desktop.key("1", "Return")
    _await_field(kelpa, _HELLO)
    wait_until("only what is searched is shown", lambda: not kelpa.board.card(boards.UNSORTED, "Other"))
    assert kelpa.board.card(boards.UNSORTED, _HELLO)
    # It ends what is being composed first.
    before = _ink(desktop, _frame(kelpa))
    desktop.type(_NI_HAO)
    _await_composition(desktop, kelpa, before)
    desktop.key("Escape")
    _await_composition(desktop, kelpa, before, is_there=False)
    _press_after(desktop, "Escape")
    _await_field(kelpa, "")
    kelpa.wait_for_card(boards.UNSORTED, "Other")
    kelpa.quit()


def the_boards_keys_are_its_own_beside_an_input_method(desktop, binary):
    method = Chewing(desktop)
    other = KeyLog(desktop, "Key log")
    kelpa, path = _started(desktop, binary, method.env)
    kelpa.wait_for_card(boards.UNSORTED, "Key log")
    selection = Selection(desktop, kelpa)
    selection.press("Left", "Right", "Right")
    selection.is_column("Home")
    selection.press("Return")
    _await_field(kelpa, "")
    method.await_field()
    before = _ink(desktop, _frame(kelpa))
    desktop.type(_NI_HAO)
    _await_composition(desktop, kelpa, before)
    # These choose what to write, and where in it.
    desktop.key("Left", "Down")
    wait_until("what can be chosen is shown", method.candidates)
    desktop.key("space", "Up")
    wait_until("nothing is to be chosen", lambda: method.candidates() is None)
    desktop.key("Right")
    _await_composition(desktop, kelpa, before)
    selection.is_column("Home")
    desktop.key("Return")
    _await_field(kelpa, _HELLO)
    # And nothing is composed any more.
    selection.press("Left")
    selection.is_column(boards.UNSORTED)
    wait_until("no field is open", lambda: kelpa.board.field(boards.ADD_TODO) is None)
    selection.press("space")
    selection.is_card("Key log")
    selection.press("Escape")
    selection.is_column(boards.UNSORTED)
    # From another program, and back to the keys.
    await_monitor(desktop, kelpa, other)
    selection.press("Right")
    selection.is_column("Home")
    selection.press("Return")
    _await_field(kelpa, _HELLO)
    desktop.key("Return")
    kelpa.wait_for_todos("Home", [("One", TODO), (_HELLO, TODO)])
    kelpa.check_stored(path)
    kelpa.quit()


def accents_are_written_without_an_input_method(desktop, binary):
    desktop.run("setxkbmap", "us", "-variant", "intl", "-option", "compose:menu")
    kelpa, path = _started(desktop, binary, {})
    _open_field(kelpa, "Home")
    # As they are typed: a key for the accent, and one for Compose, each with a letter after it.
    desktop.key("c", "a", "f", "dead_acute", "e", "space", "dead_diaeresis", "u")
    desktop.key("space", "Multi_key", "o", "e")
    _await_field(kelpa, "café ü œ")
    desktop.key("Return")
    kelpa.wait_for_todos("Home", [("One", TODO), ("café ü œ", TODO)])
    # An accent that goes with no letter loses none.
    desktop.key("n", "o", "dead_acute", "t", "e", "Return")
    kelpa.wait_for_todos("Home", [("One", TODO), ("café ü œ", TODO), ("note", TODO)])
    kelpa.check_stored(path)
    kelpa.quit()
