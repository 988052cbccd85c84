import QtQuick
import QtTest
import Kelpa.Board
import "../cases"

Item {
    id: root

    width: 1100
    height: 700

    GoalBoard {
        id: board

        anchors.fill: parent
        board: world.board
    }

    WindowCase {
        name: "WindowCardButtons"
        goalBoard: board

        function test_what_the_desktop_cannot_do_is_not_offered() {
            tryVerify(() => card("Letter") !== null);
            world.lack("quitting");
            compare(cardButton("Letter", "x").Accessible.name, "Close this window");
            world.lack("actions");
            verify(!cardButton("Letter", "x").visible);
            compare(card("Letter").Accessible.description, "Drag to another goal");
            world.lackNothing();
            verify(cardButton("Letter", "x").visible);
        }
        function test_the_buttons_of_a_card_are_reached_by_keyboard() {
            tryVerify(() => card("Letter") !== null);
            card("Letter").forceActiveFocus();
            const menu = cardButton("Letter", "ellipsis");
            const close = cardButton("Letter", "x");
            compare(close.Accessible.name, "Close this app process");
            keyClick(Qt.Key_Tab);
            verify(menu.activeFocus);
            keyClick(Qt.Key_Tab);
            verify(close.activeFocus);
            const before = world.calls().length;
            keyClick(Qt.Key_Return);
            world.runPending();
            verify(world.calls().slice(before).includes("quit 1000"));
        }
        function test_a_finger_reaches_the_close_button_of_a_card_at_rest() {
            mouseMove(root, 1090, 690);
            tryVerify(() => card("Report") !== null);
            const button = cardButton("Report", "x");
            verify(button.visible);
            const before = world.calls().length;
            const tap = () => {
                touchEvent(button).press(0, button, 11, 11).commit();
                touchEvent(button).release(0, button, 11, 11).commit();
                world.runPending();
            };
            // A person who did not see it meant something else.
            verify(!button.isShown);
            tap();
            verify(button.isShown);
            verify(!world.calls().slice(before).includes("quit 1000"));
            tap();
            verify(world.calls().slice(before).includes("quit 1000"));
        }
        function test_the_buttons_of_a_card_show_with_the_pointer_the_keyboard_and_the_selection() {
            mouseMove(root, 1090, 690);
            world.clearSelection();
            tryVerify(() => card("Report") !== null);
            const shown = () => card("Report") === null ? [] : ["ellipsis", "x"].map(symbol => {
                const button = cardButton("Report", symbol);
                compare(button.contentItem.visible, button.isShown);
                compare(button.background.visible, button.isShown);
                // Assistive programs find it all the same.
                verify(button.visible);
                return button.isShown;
            });
            tryVerify(() => shown().length === 2 && !shown().some(each => each));
            mouseMove(card("Report"), 60, 110);
            tryVerify(() => shown().length === 2 && shown().every(each => each));
            mouseMove(root, 1090, 690);
            tryVerify(() => shown().length === 2 && !shown().some(each => each));
            world.board.windows.selectWindow(card("Report").windowID);
            tryVerify(() => shown().length === 2 && shown().every(each => each));
            world.clearSelection();
            tryVerify(() => shown().length === 2 && !shown().some(each => each));
            const close = cardButton("Report", "x");
            close.forceActiveFocus(Qt.TabFocusReason);
            verify(close.isShown);
            close.focus = false;
            // An assistive program presses what does not show.
            world.clearSelection();
            tryVerify(() => shown().length === 2);
            const before = world.calls().length;
            cardButton("Report", "x").Accessible.pressAction();
            world.runPending();
            verify(world.calls().slice(before).includes("quit 1000"));
        }
    }
}
