import QtQuick
import QtTest
import Kelpa.Appearance
import Kelpa.Board

Item {
    id: root

    width: 600
    height: 100

    MouseArea {
        id: below

        property int clicks: 0

        anchors.fill: parent
        acceptedButtons: Qt.AllButtons
        onClicked: ++below.clicks
    }
    Toast {
        id: toast

        anchors.centerIn: parent
        message: world.board.toastMessage
        actionText: world.board.toastOffersUndo ? ViewSettings.copy.text(CopyKey.Undo) : ""
        onActionRequested: world.board.undo()
        onIsHeldChanged: world.board.setToastHeld(toast.isHeld)
    }

    TestCase {
        name: "Toast"
        when: windowShown

        function button(): Item {
            return Array.from(toast.children).find(each => each.text
                                                   === ViewSettings.copy.text(CopyKey.Undo)
                                                   && each.visible);
        }
        function deleteGoal(): void {
            world.board.goals.deleteGoal(world.columnOfGoal("Taxes"));
            tryVerify(() => button() !== undefined);
        }
        function init() {
            // A deletion takes the place of whatever was told, and the next change ends its offer.
            world.board.goals.createGoal("Any");
            while (world.goalTitles().length > 0)
                world.board.goals.deleteGoal(world.columnOfGoal(world.goalTitles()[0]));
            world.board.goals.createGoal("Taxes");
            world.addTodo("Read", "Taxes");
            tryVerify(() => !toast.visible);
        }

        function test_a_deletion_is_told_with_a_button_that_takes_it_back() {
            const column = world.columnOfGoal("Taxes");
            deleteGoal();
            compare(toast.Accessible.name, "Goal deleted");
            mouseClick(button());
            compare(world.columnOfGoal("Taxes"), column);
            compare(world.todos("Taxes"), ["Read (todo)"]);
            tryVerify(() => !toast.visible);
        }
        function test_the_button_is_pressed_by_the_keyboard_too() {
            deleteGoal();
            button().forceActiveFocus(Qt.TabFocusReason);
            keyClick(Qt.Key_Return);
            compare(world.goalTitles(), ["Taxes"]);
        }
        function test_the_button_does_nothing_once_the_offer_is_over() {
            deleteGoal();
            const fading = button();
            verify(fading.enabled);
            world.board.goals.createGoal("Garden");
            compare(world.goalTitles(), ["Garden"]);
            verify(!fading.enabled);
        }
        function test_a_click_beside_its_button_does_not_reach_what_lies_below() {
            deleteGoal();
            for (const mouseButton of [Qt.LeftButton, Qt.RightButton])
                mouseClick(toast, 12, 18, mouseButton);
            // Also on the button that fades away.
            world.board.goals.createGoal("Garden");
            mouseClick(button() ?? toast);
            compare(below.clicks, 0);
            mouseClick(root, 2, 2);
            compare(below.clicks, 1);
        }
        function test_another_message_has_no_button() {
            world.addTodo("Sign", "");
            deleteGoal();
            world.board.todos.copyTodo(world.todoID("Sign", ""), "kelpa-unassigned");
            compare(toast.Accessible.name, "Todo copied to clipboard");
            compare(button(), undefined);
        }
        function test_it_stays_while_the_pointer_is_on_it() {
            deleteGoal();
            mouseMove(toast, 20, 18);
            tryVerify(() => toast.isHeld);
            world.pass(60000);
            verify(button() !== undefined);
            compare(world.board.toastMessage, "Goal deleted");
            mouseMove(root, 1, 1);
            tryVerify(() => !toast.isHeld);
            world.pass(5999);
            compare(world.board.toastMessage, "Goal deleted");
            world.pass(1);
            compare(world.board.toastMessage, "");
            tryVerify(() => !toast.visible);
        }
        function test_it_stays_while_its_button_has_the_keyboard() {
            deleteGoal();
            button().forceActiveFocus(Qt.TabFocusReason);
            world.pass(60000);
            compare(world.board.toastMessage, "Goal deleted");
            keyClick(Qt.Key_Return);
            compare(world.goalTitles(), ["Taxes"]);
            compare(world.board.toastMessage, "");
            verify(!toast.isHeld);
        }
        function test_one_that_goes_under_the_pointer_holds_no_later_one() {
            deleteGoal();
            mouseMove(toast, 20, 18);
            tryVerify(() => toast.isHeld);
            world.board.undo();
            verify(!toast.isHeld);
            tryVerify(() => !toast.visible);
            mouseMove(root, 1, 1);
            deleteGoal();
            world.pass(6000);
            compare(world.board.toastMessage, "");
        }
        function test_message_and_button_stand_side_by_side_whole() {
            for (const language of world.board.languageNames) {
                world.board.setLanguageIndex(world.board.languageNames.indexOf(language));
                deleteGoal();
                const texts = Array.from(toast.children).filter(each => each.text !== undefined
                                                                     && each.width > 0);
                compare(texts.length, 2);
                const [message, action] = texts;
                verify(!message.truncated, language);
                verify(!action.contentItem.truncated, language);
                verify(message.x + message.width <= action.x, language);
                verify(action.x + action.width <= toast.width, language);
                world.board.undo();
            }
            world.board.setLanguageIndex(world.board.languageNames.indexOf("English"));
        }
    }
}
