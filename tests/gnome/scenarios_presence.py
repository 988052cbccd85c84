"""The board and the field for a todo, called and closed."""

import os
import signal
import time

import presence
from entry import Entry, await_stored, check_todos_are_added_over
from front import start_kelpa
from processes import wait_until
from typists import Typing

# Summary and buttons of the first banner of Kelpa's, and the first of these buttons: since Shell 46 the banner
# is of another kind.
_BANNER = """(() => {
    const banner = Main.messageTray._banner;
    const found = [];
    const collect = actor => {
        if (actor.has_style_class_name?.('notification-button'))
            found.push(actor);
        actor.get_children().forEach(collect);
    };
    if (banner)
        collect(banner);
    return %s;
})()"""
_SHOWN = _BANNER % "[banner?.notification?.title ?? '', found.filter(button => button.mapped).length]"
_CENTRE = _BANNER % """(([x, y], [width, height]) => [x + width / 2, y + height / 2])(
        found[0].get_transformed_position(), found[0].get_transformed_size())"""
_IS_POINTED_AT = _BANNER % "found[0].hover"
# As a menu or a dialog of the Shell's does for a moment.
_TAKE_KEYBOARD = """(() => {
    globalThis.kelpaGrab = Main.pushModal(Main.uiGroup);
    return true;
})()"""
_GIVE_KEYBOARD_BACK = "(() => { Main.popModal(globalThis.kelpaGrab); return true; })()"


def a_todo_is_added_over_another_program_beside_the_board_and_without_it(desktop, binary):
    check_todos_are_added_over(desktop, binary, Typing(desktop, "Typist", desktop.start_typed))


def a_closed_board_comes_back_by_a_double_tap_and_by_another_start(desktop, binary):
    presence.check_board_comes_back(
        desktop, binary, Typing(desktop, "Typist", desktop.start_typed),
        lambda title: desktop.start_foot(title, *presence.CLOCK),
        [("a double tap", lambda: desktop.keyboard.at_once("Super_L", "Super_L"))], may_lose_keys=True)


def a_field_that_loses_the_keyboard_for_a_moment_on_a_busy_machine_keeps_it(desktop, binary):
    terminal = Typing(desktop, "Typist", desktop.start_typed)
    kelpa, path = start_kelpa(desktop, binary, goals=(("Taxes", []),))
    kelpa.wait_for_card("Unsorted", "Typist")
    presence.close(desktop, kelpa)
    terminal.focus()
    entry = Entry(desktop, binary, path, kelpa)
    entry.open()
    for word in ("Find ", "the ", "receipts "):
        desktop.type(word)
        assert desktop.evaluate(_TAKE_KEYBOARD)
        # It knows of the loss, but not before the keyboard is back whether that lasts.
        time.sleep(0.08)
        os.kill(kelpa.process_id(), signal.SIGSTOP)
        time.sleep(0.1)
        assert desktop.evaluate(_GIVE_KEYBOARD_BACK)
        time.sleep(0.2)
        os.kill(kelpa.process_id(), signal.SIGCONT)
    desktop.type("#taxes")
    desktop.key("Return")
    entry.await_closed(terminal)
    await_stored(path, "Taxes", "Find the receipts")
    kelpa.terminate()
    kelpa.wait()


def the_shell_says_that_kelpa_stays_and_its_button_quits(desktop, binary):
    desktop.start_notifications()
    kelpa, _ = start_kelpa(desktop, binary)
    presence.close(desktop, kelpa)
    wait_until("the banner is shown", lambda: desktop.evaluate(_SHOWN)[0] == "Kelpa keeps running")
    # The pointer over it shows its button.
    desktop.keyboard.move_to(800, 40)
    wait_until("its button is shown", lambda: desktop.evaluate(_SHOWN)[1] == 1)

    def is_pointed_at():
        # The banner is still growing, and tells no place before it is drawn.
        centre = desktop.evaluate(_CENTRE)
        if None in centre:
            return False
        desktop.keyboard.move_to(*centre)
        return desktop.evaluate(_IS_POINTED_AT)

    wait_until("the pointer is over its button", is_pointed_at)
    desktop.keyboard.at_once("click")
    assert kelpa.wait() == 0
    kelpa.check_output()
