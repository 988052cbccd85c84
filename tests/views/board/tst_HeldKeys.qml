import QtQuick
import QtTest
import Kelpa.Scene
import Kelpa.Controls
import Kelpa.Goals
import Kelpa.Windows
import Kelpa.Board

Item {
    id: root

    width: 600
    height: 400

    Column {
        id: place

        AppButton {
            text: "A button with a text"
        }
        IconButton {
            symbol: "plus"
            text: "A button with a symbol"
        }
        PriorityButton {
            symbol: "equal"
            color: "blue"
            text: "A priority"
        }
        CountButton {
            count: 3
            symbol: "app-window-plus"
            label: "Three windows"
            text: "A button with a count"
        }
        CardButton {
            isWanted: true
            symbol: "x"
            text: "A button of a card"
        }
        AddGoalCard {
            width: 320
            goals: world.board.goals
            drops: world.board.drops
            dragSource: BoardDragSource {}
        }
    }
    Toast {
        id: toast

        anchors.bottom: parent.bottom
        message: "Goal deleted"
        actionText: "Undo"
    }
    TextInputField {
        id: field

        anchors.right: parent.right
        label: "Title"
    }
    SignalSpy {
        id: presses
    }
    SignalSpy {
        id: undone

        target: toast
        signalName: "actionRequested"
    }
    SignalSpy {
        id: committed

        target: field
        signalName: "committed"
    }

    TestCase {
        name: "HeldKeys"
        when: windowShown

        readonly property var keys: [Qt.Key_Return, Qt.Key_Enter, Qt.Key_Space]

        function hold(key) {
            keyPress(key);
            for (let i = 0; i < 5; ++i)
                world.repeatKey(root, key);
            keyRelease(key);
        }
        function buttons() {
            return Array.from(place.children).filter(each => each instanceof PressButton);
        }

        function test_a_key_that_is_held_presses_any_button_once() {
            compare(buttons().length, 6);
            for (const button of buttons()) {
                presses.target = button;
                presses.signalName = "clicked";
                for (const key of keys) {
                    presses.clear();
                    button.forceActiveFocus(Qt.TabFocusReason);
                    hold(key);
                    compare([button.text, key, presses.count], [button.text, key, 1]);
                }
            }
        }
        function test_a_key_that_is_held_takes_a_deletion_back_once() {
            const button = Array.from(toast.children).find(each => each.text === "Undo");
            for (const key of keys) {
                undone.clear();
                button.forceActiveFocus(Qt.TabFocusReason);
                hold(key);
                compare([key, undone.count], [key, 1]);
            }
        }
        function test_return_that_is_held_commits_a_field_once() {
            field.forceActiveFocus();
            committed.clear();
            hold(Qt.Key_Return);
            compare(committed.count, 1);
        }
        function test_return_that_was_pressed_elsewhere_and_is_held_commits_no_field() {
            field.forceActiveFocus();
            committed.clear();
            world.repeatKey(root, Qt.Key_Return);
            compare(committed.count, 0);
        }
    }
}
