import QtQuick
import QtTest
import Kelpa.Todos
import Kelpa.Board
import "../cases"

Item {
    id: root

    width: 1300
    height: 700

    GoalBoard {
        id: board

        anchors.fill: parent
        board: world.board
    }

    TodoCase {
        name: "TodoWay"
        goalBoard: board

        function test_the_button_for_going_to_a_todo_selects_its_goal() {
            show(unified(), "Second", ["Read"]);
            column("First").forceActiveFocus();
            mouseClick(button(row(unified(), "Read"), "arrow-right"));
            tryCompare(column("Second"), "isSelected", true);
            verify(!column("First").isSelected);
            tryVerify(() => row(column("Second"), "Read").isHighlighted);
            verify(!row(unified(), "Read").isHighlighted);
            verify(!hasKeyboard());
            world.board.goals.goToColumn(column("First").columnID);
            tryVerify(() => !row(column("Second"), "Read").isHighlighted);
        }
        function test_going_to_a_todo_by_keyboard_focuses_its_row() {
            show(unified(), "Second", ["Read"]);
            button(row(unified(), "Read"), "arrow-right").forceActiveFocus(Qt.TabFocusReason);
            keyClick(Qt.Key_Return);
            tryVerify(() => row(column("Second"), "Read").isHighlighted);
            tryVerify(() => content(column("Second"), "Read").activeFocus);
        }
        function test_going_to_a_todo_focuses_a_row_that_showed_another_todo() {
            const first = column("First");
            show(first, "First", ["Done with"]);
            const former = row(first, "Done with");
            world.board.todos.remove(world.todoID("Done with", "First"), first.columnID);
            tryVerify(() => row(first, "Done with") === null);
            // Requested before the todo has a row.
            world.addTodo("Read", "First");
            compare(row(first, "Read"), null);
            world.board.todos.goToTodo(world.todoID("Read", "First"), first.columnID, true);
            tryVerify(() => row(first, "Read") !== null);
            compare(row(first, "Read"), former);
            tryVerify(() => content(first, "Read").activeFocus);
        }
        function test_the_tab_key_walks_through_a_list_that_is_longer_than_its_column() {
            for (let i = 0; i < 40; ++i)
                world.addTodo("Todo " + i, "");
            const list = only(all(unified(), item => item instanceof TodoList));
            tryVerify(() => row(unified(), "Todo 0") !== null);
            content(unified(), "Todo 0").forceActiveFocus();
            const isFace = () => root.Window.activeFocusItem?.Accessible.role
                               === Accessible.ListItem;
            for (let i = 1; i < 40; ++i) {
                keyClick(Qt.Key_Tab);
                for (let part = 0; part < 5 && !isFace(); ++part)
                    keyClick(Qt.Key_Tab);
                compare(root.Window.activeFocusItem.Accessible.name, "Todo " + i);
                const rect = list.rowRect(world.todoID("Todo " + i, ""));
                verify(rect.y >= 0 && rect.y + rect.height <= list.height);
                // The list creates rows before the next frame.
                waitForRendering(unified());
            }
            for (let i = 38; i >= 0; --i) {
                keyClick(Qt.Key_Backtab, Qt.ShiftModifier);
                for (let part = 0; part < 5 && !isFace(); ++part)
                    keyClick(Qt.Key_Backtab, Qt.ShiftModifier);
                compare(root.Window.activeFocusItem.Accessible.name, "Todo " + i);
                waitForRendering(unified());
            }
        }
        function test_the_focus_moves_on_where_a_todo_was_deleted() {
            const first = column("First");
            show(first, "First", ["A", "B", "C"]);
            const remove = title => {
                content(first, title).forceActiveFocus();
                keyClick(Qt.Key_Menu);
                choose("Delete todo");
                tryVerify(() => row(first, title) === null);
            };
            remove("B");
            tryVerify(() => content(first, "C").activeFocus);
            remove("C");
            tryVerify(() => content(first, "A").activeFocus);
            remove("A");
            tryVerify(() => button(first, "lightbulb-plus").visualFocus);
        }
        function test_the_focus_moves_on_where_a_todo_was_completed_or_moved_away() {
            const place = unified();
            show(place, "First", ["A", "B", "C"]);
            button(row(place, "B"), "circle").forceActiveFocus(Qt.TabFocusReason);
            keyClick(Qt.Key_Return);
            keyClick(Qt.Key_Return);
            tryVerify(() => row(place, "B") === null);
            tryVerify(() => content(place, "C").activeFocus);
            const first = column("First");
            content(first, "A").forceActiveFocus();
            world.board.todos.move(world.todoID("A", "First"), first.columnID,
                                   column("Second").columnID);
            tryVerify(() => row(first, "A") === null);
            tryVerify(() => content(first, "B").activeFocus);
        }
        function test_deleting_a_todo_by_mouse_moves_no_focus() {
            const first = column("First");
            show(first, "First", ["A", "B"]);
            mouseClick(row(first, "A"), 60, 17, Qt.RightButton);
            tryVerify(() => menuItems().length === 7);
            choose("Delete todo");
            tryVerify(() => row(first, "A") === null);
            tryVerify(() => menuItems().length === 0);
            verify(!hasKeyboard());
        }
    }
}
