import QtQuick
import QtTest
import Kelpa.Controls
import Kelpa.Board
import "../cases/Search.js" as Search

/// The menu of a field in a sheet, over the whole board.
Item {
    width: 10
    height: 10

    Window {
        id: elsewhere

        width: 100
        height: 100
    }
    Main {
        id: main

        width: 1000
        height: 700
        visible: true
        board: world.board

        TestCase {
            name: "SheetFieldMenu"
            when: windowShown

            function shown(accepts) {
                return Search.all(main.overlay, item => item.visible && accepts(item));
            }
            /// The menu that is open closes meanwhile.
            function leaveAndComeBack() {
                // The toolkit counts a window as active while one that belongs to it is.
                elsewhere.transientParent = null;
                elsewhere.show();
                elsewhere.requestActivate();
                tryVerify(() => shown(item => item instanceof AppMenuItem).length === 0);
                elsewhere.close();
                main.requestActivate();
                tryVerify(() => main.active);
            }
            function test_a_new_todo_has_the_keyboard_again_after_its_menu_closed_for_another_window() {
                main.requestActivate();
                tryVerify(() => main.active);
                world.board.goals.createGoal("Garden");
                world.board.todos.requestEditor(world.columnOfGoal("Garden"));
                tryVerify(() => main.activeFocusItem instanceof TextInputField);
                const field = main.activeFocusItem;
                keyClick(Qt.Key_Menu);
                tryVerify(() => shown(item => item instanceof AppMenuItem).length === 6);
                leaveAndComeBack();
                tryVerify(() => field.activeFocus);
                // Nor is it taken away later.
                wait(50);
                verify(field.activeFocus);
                keyClick(Qt.Key_Escape);
                tryCompare(world.board.todos, "editorColumnID", "");
            }
            function test_the_sheet_has_the_keyboard_again_after_its_menu_closed_for_another_window() {
                main.requestActivate();
                tryVerify(() => main.active);
                world.board.goals.createGoal("Taxes");
                keyClick(Qt.Key_N, Qt.ControlModifier);
                tryVerify(() => main.activeFocusItem instanceof TextInputField);
                const field = main.activeFocusItem;
                keyClick(Qt.Key_Menu);
                tryVerify(() => shown(item => item instanceof AppMenuItem).length === 6);
                leaveAndComeBack();
                tryVerify(() => field.activeFocus);
                keyClick(Qt.Key_Escape);
                tryVerify(() => !field.visible);
            }
        }
    }
}
