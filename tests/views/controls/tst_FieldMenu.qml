import QtQuick
import QtTest
import Kelpa.Controls
import Kelpa.Board
import "../cases"

Item {
    id: root

    width: 1300
    height: 500

    SearchField {
        id: search

        width: 260
        label: "Search"
        clearLabel: "Clear"
    }
    GoalBoard {
        id: board

        anchors.fill: parent
        anchors.topMargin: 60
        board: world.board
    }

    TodoCase {
        name: "FieldMenu"
        goalBoard: board

        function texts(isEnabled) {
            return menuItems().filter(item => item.enabled === isEnabled)
                .sort((a, b) => a.y - b.y).map(item => item.text);
        }
        function open(field) {
            mouseClick(field, 20, 14, Qt.RightButton);
            tryVerify(() => menuItems().length === 6);
        }

        function test_the_menu_of_a_field_offers_what_can_be_done_with_its_text() {
            search.forceActiveFocus();
            search.clear();
            type("abc");
            open(search);
            compare(texts(false), ["Redo", "Cut", "Copy"]);
            choose("Select all");
            tryVerify(() => menuItems().length === 0);
            tryVerify(() => search.activeFocus);
            compare(search.selectedText, "abc");
            // The selection stays while the menu is open.
            open(search);
            compare(search.selectedText, "abc");
            verify(!texts(true).includes("Select all"));
            choose("Cut");
            tryVerify(() => search.activeFocus);
            compare(search.text, "");
            open(search);
            choose("Paste");
            tryVerify(() => search.activeFocus);
            compare(search.text, "abc");
            open(search);
            choose("Undo");
            tryVerify(() => search.activeFocus);
            compare(search.text, "");
            open(search);
            choose("Redo");
            tryVerify(() => search.activeFocus);
            compare(search.text, "abc");
        }
        function test_the_key_for_menus_opens_that_of_the_field() {
            search.forceActiveFocus();
            for (const press of [() => keyClick(Qt.Key_Menu),
                                 () => keyClick(Qt.Key_F10, Qt.ShiftModifier)]) {
                press();
                tryVerify(() => menuItems().length === 6);
                keyClick(Qt.Key_Escape);
                tryVerify(() => menuItems().length === 0);
                tryVerify(() => search.activeFocus);
            }
        }
        function test_a_todo_that_is_written_is_not_left_with_its_menu() {
            const first = column("First");
            show(first, "First", ["Read"]);
            row(first, "Read").edit(true);
            tryVerify(() => field(first) !== null && field(first).activeFocus);
            type("abc");
            open(field(first));
            compare(world.todos("First"), ["Read (todo)"]);
            // Nor with the press that closes it.
            mouseClick(root, 1290, 490);
            tryVerify(() => menuItems().length === 0);
            tryVerify(() => field(first).activeFocus);
            compare(field(first).text, "abc");
            compare(world.todos("First"), ["Read (todo)"]);
            keyClick(Qt.Key_Escape);
            compare(world.todos("First"), ["Read (todo)"]);
        }
    }
}
