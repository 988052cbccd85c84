import QtQuick
import QtTest
import Kelpa.Controls
import Kelpa.Windows
import Kelpa.Board
import "../cases"

Item {
    id: root

    width: 1300
    height: 700

    BoardHeader {
        id: header

        width: parent.width
        board: world.board
    }
    GoalBoard {
        id: board

        anchors.fill: parent
        anchors.topMargin: 100
        board: world.board
    }

    TodoCase {
        name: "SearchKeys"
        goalBoard: board

        function init() {
            world.clearSelection();
            header.forceActiveFocus();
            header.focus = false;
            tryVerify(() => !isMoving());
        }
        function search() {
            return only(all(header, item => item instanceof SearchField));
        }
        function holder() {
            return root.Window.activeFocusItem;
        }
        function card(title) {
            return only(all(board, item => item instanceof WindowCard && item.visible
                                           && item.title === title));
        }

        function test_Control_with_F_goes_to_the_search_and_selects_what_is_there() {
            world.board.search.text = "mail";
            keyClick(Qt.Key_F, Qt.ControlModifier);
            verify(search().activeFocus);
            compare(search().selectedText, "mail");
            world.board.search.text = "";
        }
        function test_Return_and_Down_lead_from_the_search_to_what_it_has_found() {
            world.addWindow(21, "Report");
            world.addWindow(22, "Letter");
            world.addWindow(23, "Letter too");
            world.board.windows.moveWindow(22, world.columnOfGoal("Second"));
            world.board.windows.moveWindow(23, world.columnOfGoal("First"));
            for (const key of [Qt.Key_Return, Qt.Key_Down]) {
                keyClick(Qt.Key_F, Qt.ControlModifier);
                type("letter");
                keyClick(key);
                verify(!search().activeFocus);
                tryVerify(() => holder() !== null && holder() === card("Letter too"));
                verify(card("Letter too").isSelected);
                world.clearSelection();
                world.board.search.text = "nobody";
                keyClick(Qt.Key_F, Qt.ControlModifier);
                keyClick(key);
                verify(search().activeFocus);
                compare(world.board.selectedTarget, -1);
                world.board.search.text = "";
                // Where nothing is looked for, nothing is found.
                keyClick(key);
                compare(world.board.selectedTarget, -1);
            }
            for (const id of [21, 22, 23])
                world.removeWindow(id);
        }
        function raised() {
            world.runPending();
            return world.calls().filter(call => call.startsWith("raise "));
        }
        function test_Return_on_the_selected_window_brings_it_forward_and_ends_the_search() {
            world.addWindow(21, "Letter");
            const before = raised().length;
            keyClick(Qt.Key_F, Qt.ControlModifier);
            type("letter");
            keyClick(Qt.Key_Return);
            tryVerify(() => holder() === card("Letter"));
            world.repeatKey(card("Letter"), Qt.Key_Return);
            compare(raised().length, before);
            keyClick(Qt.Key_Return);
            compare(raised().slice(before), ["raise Letter"]);
            compare(world.board.search.text, "");
            keyClick(Qt.Key_Enter, Qt.KeypadModifier);
            compare(raised().slice(before), ["raise Letter", "raise Letter"]);
            world.removeWindow(21);
        }
        function test_Control_with_Return_opens_what_is_searched_at_once() {
            world.addWindow(21, "Letter");
            const before = raised().length;
            for (const key of [Qt.Key_Return, Qt.Key_Enter]) {
                keyClick(Qt.Key_F, Qt.ControlModifier);
                type("letter");
                keyClick(key, Qt.ControlModifier);
                verify(!search().activeFocus);
                compare(world.board.search.text, "");
            }
            compare(raised().slice(before), ["raise Letter", "raise Letter"]);
            keyClick(Qt.Key_F, Qt.ControlModifier);
            type("nobody");
            keyClick(Qt.Key_Return, Qt.ControlModifier);
            verify(search().activeFocus);
            compare(raised().length, before + 2);
            world.board.search.text = "";
            world.removeWindow(21);
        }
        function test_Return_and_Down_show_what_was_found_before_and_is_out_of_sight() {
            world.addWindow(21, "Letter");
            world.board.windows.moveWindow(21, world.columnOfGoal("First"));
            for (let i = 0; i < 60; ++i)
                world.addTodo("Todo " + i, "First");
            world.board.goals.goToColumn(world.columnOfGoal("First"));
            tryVerify(() => !isMoving() && view().contentHeight > 2 * view().height);
            for (const key of [Qt.Key_Return, Qt.Key_Down]) {
                keyClick(Qt.Key_F, Qt.ControlModifier);
                type("letter");
                keyClick(key);
                tryVerify(() => holder() === card("Letter") && !isMoving());
                view().contentY = 0;
                tryVerify(() => !isMoving());
                verify(card("Letter").mapToItem(view(), 0, 0).y > view().height);
                keyClick(Qt.Key_F, Qt.ControlModifier);
                keyClick(key);
                verify(!search().activeFocus);
                tryVerify(() => holder() === card("Letter") && !isMoving());
                const top = card("Letter").mapToItem(view(), 0, 0).y;
                verify(top >= 0 && top + card("Letter").height <= view().height, top);
                world.board.search.text = "";
            }
            world.removeWindow(21);
        }
    }
}
