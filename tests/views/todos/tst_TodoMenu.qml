import QtQuick
import QtTest
import Kelpa.Board
import Kelpa.Todos
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
        name: "TodoMenu"
        goalBoard: board

        function test_the_goals_of_the_menu_follow_their_order_on_the_board() {
            show(unified(), "", ["Sort"]);
            const goals = () => {
                content(unified(), "Sort").forceActiveFocus();
                keyClick(Qt.Key_Menu);
                choose("Move to goal");
                tryVerify(() => menuItems().some(item => item.text === "Second"));
                const titles = menuItems().filter(item => item.symbol === "circle")
                    .sort((a, b) => a.y - b.y).map(item => item.text);
                keyClick(Qt.Key_Escape);
                keyClick(Qt.Key_Escape);
                tryVerify(() => menuItems().length === 0);
                return titles;
            };
            compare(goals(), ["First", "Second"]);
            verify(world.board.goals.moveColumn(world.columnOfGoal("First"), 1));
            compare(goals(), ["Second", "First"]);
            verify(world.board.goals.moveColumn(world.columnOfGoal("First"), -1));
            compare(goals(), ["First", "Second"]);
        }
        function test_a_title_keeps_its_width_when_the_button_appears() {
            const first = column("First");
            const title = "A title that is far too long for the row of any list of the board";
            show(first, "First", [title]);
            const text = only(all(row(first, title), item => item instanceof Text
                                                             && item.text === title));
            const width = text.width;
            verify(text.truncated);
            mouseMove(row(first, title), 60, 17);
            tryCompare(button(row(first, title), "ellipsis"), "isShown", true);
            compare(text.width, width);
            mouseMove(root, 1, 699);
        }
        function test_the_menu_button_shows_where_the_pointer_or_the_keyboard_is() {
            const first = column("First");
            show(first, "First", ["Read", "Write"]);
            const menu = button(row(first, "Read"), "ellipsis");
            compare(menu.Accessible.name, "More todo actions");
            compare(menu.Accessible.role, Accessible.ButtonMenu);
            verify(!menu.Accessible.ignored);
            verify(!menu.isShown);
            mouseMove(row(first, "Read"), 60, 17);
            tryCompare(menu, "isShown", true);
            mouseMove(root, 1, 699);
            tryCompare(menu, "isShown", false);
            content(first, "Read").forceActiveFocus();
            verify(menu.isShown);
            mouseClick(menu);
            tryVerify(() => menuItems().length === 7);
            keyClick(Qt.Key_Escape);
        }
        function test_the_row_whose_menu_is_open_stays_marked_and_no_other() {
            const first = column("First");
            show(first, "First", ["Read", "Write"]);
            const marked = () => ["Read", "Write"].filter(title => row(first, title).isMenuOpen);
            const menu = button(row(first, "Read"), "ellipsis");
            mouseMove(row(first, "Read"), 60, 17);
            mouseClick(row(first, "Read"), 60, 17, Qt.RightButton);
            tryVerify(() => menuItems().length === 7);
            mouseMove(root, 1, 699);
            compare(marked(), ["Read"]);
            verify(menu.isShown);
            keyClick(Qt.Key_Escape);
            tryVerify(() => menuItems().length === 0);
            compare(marked(), []);
            tryCompare(menu, "isShown", false);
        }
        function test_a_long_list_fades_where_it_is_cut_off_until_its_end_shows() {
            const fades = () => all(unified(), item => item instanceof TodoFade && item.visible);
            show(unified(), "First", ["One"]);
            compare(fades().length, 0);
            for (let i = 0; i < 20; ++i)
                world.addTodo("Todo " + i, "First");
            tryVerify(() => fades().length === 1);
            const rows = all(unified(), item => item instanceof TodoListView)[0];
            const fade = fades()[0];
            compare(fade.y + fade.height, rows.y + rows.height);
            rows.contentY = rows.contentHeight - rows.height;
            tryVerify(() => fades().length === 0);
            rows.contentY = 0;
            tryVerify(() => fades().length === 1);
        }
        function test_the_menu_of_a_todo_says_which_keys_do_the_same() {
            const first = column("First");
            show(first, "First", ["Read", "Write"]);
            const keys = () => menuItems().filter(item => item.visible && item.keys)
                .map(item => item.text + ": " + item.keys);
            content(first, "Read").forceActiveFocus();
            keyClick(Qt.Key_Menu);
            tryVerify(() => menuItems().length === 7);
            compare(keys().sort(), ["Delete todo: Delete", "Edit todo: F2", "Move todo down: Alt+↓",
                                    "Move todo up: Alt+↑"]);
            keyClick(Qt.Key_Escape);
            tryVerify(() => menuItems().length === 0);
        }
        function test_the_menu_names_keys_only_for_the_todo_that_has_the_keyboard() {
            const first = column("First");
            show(first, "First", ["Read", "Write"]);
            for (const [title, count] of [["Write", 0], ["Read", 4]]) {
                content(first, "Read").forceActiveFocus();
                mouseClick(row(first, title), 60, 17, Qt.RightButton);
                tryVerify(() => menuItems().length === 7);
                compare(menuItems().filter(item => item.keys).length, count);
                keyClick(Qt.Key_Escape);
                tryVerify(() => menuItems().length === 0);
            }
        }
        function test_the_menu_of_a_todo_edits_it() {
            const first = column("First");
            show(first, "First", ["Read"]);
            content(first, "Read").forceActiveFocus();
            keyClick(Qt.Key_Menu);
            choose("Edit todo");
            tryVerify(() => field(first) !== null && field(first).activeFocus);
            type("abc");
            keyClick(Qt.Key_Return);
            compare(world.todos("First"), ["abc (todo)"]);
            tryVerify(() => content(first, "abc").activeFocus);
        }
        function test_the_menu_of_a_todo_deletes_it() {
            const first = column("First");
            show(first, "First", ["Read", "Write"]);
            mouseClick(row(first, "Read"), 60, 17, Qt.RightButton);
            tryVerify(() => menuItems().length === 7);
            choose("Delete todo");
            tryVerify(() => world.todos("First").length === 1);
            compare(world.todos("First"), ["Write (todo)"]);
        }
        function test_the_keys_move_a_todo_to_another_goal_by_its_menu() {
            const first = column("First");
            show(first, "First", ["Read"]);
            content(first, "Read").forceActiveFocus();
            keyClick(Qt.Key_F10, Qt.ShiftModifier);
            choose("Move to goal");
            // The other goal and the unassigned column.
            tryVerify(() => menuItems().length === 9);
            choose("Second");
            tryVerify(() => world.todos("Second").length === 1);
            compare(world.todos("First"), []);
        }
        function test_the_menu_of_a_todo_moves_it_within_the_list_that_shows_it() {
            const first = column("First");
            show(first, "First", ["A", "B", "C"]);
            content(first, "B").forceActiveFocus();
            keyClick(Qt.Key_Menu);
            tryVerify(() => menuItems().length === 7);
            const move = text => menuItems().find(item => item.text === text);
            verify(move("Move todo up").enabled);
            verify(move("Move todo down").enabled);
            choose("Move todo down");
            tryVerify(() => rowTitles(first).join() === "A,C,B");
            tryVerify(() => menuItems().length === 0);
            content(first, "B").forceActiveFocus();
            keyClick(Qt.Key_Menu);
            tryVerify(() => menuItems().length === 7);
            verify(!move("Move todo down").enabled);
            keyClick(Qt.Key_Escape);
            tryVerify(() => menuItems().length === 0);
        }
        function test_the_menu_of_a_todo_moves_it_to_the_ends_of_the_list_in_one_step() {
            const first = column("First");
            show(first, "First", ["A", "B", "C"]);
            content(first, "C").forceActiveFocus();
            keyClick(Qt.Key_Menu);
            choose("Move to the beginning");
            tryVerify(() => rowTitles(first).join() === "C,A,B");
            tryVerify(() => menuItems().length === 0);
            world.board.undo();
            tryVerify(() => rowTitles(first).join() === "A,B,C");
            content(first, "A").forceActiveFocus();
            keyClick(Qt.Key_Menu);
            choose("Move to the end");
            tryVerify(() => rowTitles(first).join() === "B,C,A");
            tryVerify(() => menuItems().length === 0);
        }
        function test_move_to_goal_is_disabled_where_there_is_no_other_column() {
            const goals = [world.columnOfGoal("First"), world.columnOfGoal("Second")];
            for (const goal of goals)
                world.board.goals.deleteGoal(goal);
            const unsorted = column("Unsorted");
            show(unsorted, "", ["Read"]);
            content(unsorted, "Read").forceActiveFocus();
            keyClick(Qt.Key_Menu);
            const move = () => menuItems().find(item => item.text === "Move to goal");
            tryVerify(() => move() !== undefined);
            verify(!move().enabled);
            keyClick(Qt.Key_Escape);
            tryVerify(() => menuItems().length === 0);
            world.removeTodos();
            world.board.goals.createGoal("First");
            world.board.goals.createGoal("Second");
            tryVerify(() => column("Second") !== null);
            world.addTodo("Read", "");
            tryVerify(() => row(unsorted, "Read") !== null);
            content(unsorted, "Read").forceActiveFocus();
            keyClick(Qt.Key_Menu);
            tryVerify(() => move() !== undefined);
            verify(move().enabled);
            keyClick(Qt.Key_Escape);
        }
    }
}
