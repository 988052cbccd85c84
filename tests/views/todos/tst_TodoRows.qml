import QtQuick
import QtTest
import Kelpa.Appearance
import Kelpa.Controls
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
        name: "TodoRows"
        goalBoard: board

        function test_todos_are_list_items_named_by_their_title() {
            const first = column("First");
            show(first, "First", ["Read"]);
            compare(content(first, "Read").Accessible.name, "Read");
            compare(unified().Accessible.role, Accessible.List);
            compare(unified().Accessible.name, "All todos");
            compare(content(unified(), "Read").Accessible.description, "First");
        }
        function test_the_status_button_cycles_through_the_statuses() {
            const first = column("First");
            show(first, "First", ["Read", "Write"]);
            const status = button(row(first, "Read"), "circle");
            compare(status.Accessible.name,
                    ViewSettings.copy.statusAccessibilityLabel("todo"));
            compare(status.help, ViewSettings.copy.statusHelp("todo"));
            compare(status.Accessible.description,
                    "Current status: Todo; click to change\nNext status: In progress");
            mouseClick(status);
            compare(world.todos("First")[0], "Read (ing)");
            compare(status.symbol, "circle-half");
            compare(status.outcome, "Next status: Completed");
            mouseClick(status);
            compare(world.todos("First")[0], "Read (completed)");
            compare(status.symbol, "circle-check-filled");
            // Still on its goal's card, but no more in the list of all todos.
            compare(rowTitles(first), ["Read", "Write"]);
            tryVerify(() => row(unified(), "Read") === null);
            mouseClick(status);
            compare(world.todos("First")[0], "Read (todo)");
        }
        function test_a_key_that_is_held_presses_a_button_once() {
            const first = column("First");
            show(first, "First", ["Read"]);
            for (const key of [Qt.Key_Return, Qt.Key_Space]) {
                const before = world.todos("First")[0];
                button(first, before === "Read (todo)" ? "circle" : "circle-half")
                    .forceActiveFocus(Qt.TabFocusReason);
                keyPress(key);
                for (let i = 0; i < 5; ++i)
                    world.repeatKey(board, key);
                keyRelease(key);
                compare(world.todos("First")[0],
                        before === "Read (todo)" ? "Read (ing)" : "Read (completed)");
            }
        }
        function test_the_list_of_all_todos_is_selected_by_mouse_and_by_assistive_programs() {
            world.clearSelection();
            mouseClick(unified(), 60, 24);
            verify(world.board.todos.isUnifiedSelected);
            world.clearSelection();
            unified().Accessible.pressAction();
            verify(world.board.todos.isUnifiedSelected);
        }
        function test_a_click_on_the_handle_copies_the_title() {
            show(column("First"), "First", ["Read"]);
            const handle = button(row(column("First"), "Read"), "menu");
            compare(handle.Accessible.name, "Copy and drag todo");
            mouseClick(handle);
            compare(world.clipboard(), "Read");
        }
        function test_alt_and_an_arrow_reorder() {
            const first = column("First");
            show(first, "First", ["A", "B", "C"]);
            content(first, "C").forceActiveFocus();
            keyClick(Qt.Key_Up, Qt.AltModifier);
            tryVerify(() => rowTitles(first).join() === "A,C,B");
            keyClick(Qt.Key_Up, Qt.AltModifier);
            tryVerify(() => rowTitles(first).join() === "C,A,B");
            keyClick(Qt.Key_Down, Qt.AltModifier);
            tryVerify(() => rowTitles(first).join() === "A,C,B");
            tryVerify(() => rowTitles(unified()).join() === "A,C,B");
        }
        function test_the_priority_menu_sets_the_priority() {
            const second = column("Second");
            const shown = button(second, "equal");
            compare(shown.Accessible.name, ViewSettings.copy.priorityAccessibilityLabel("p2"));
            mouseClick(shown);
            tryVerify(() => menuItems().length === 4);
            compare(menuItems().filter(item => item.isChosen).map(item => item.text),
                    [ViewSettings.copy.priorityName("p2")]);
            keyClick(Qt.Key_Down);
            keyClick(Qt.Key_Return);
            tryVerify(() => world.priorityOf("Second") === "p0");
            compare(shown.symbol, "chevrons-up");
            world.board.goals.setPriority(world.columnOfGoal("Second"), "p2");
        }
        function test_a_dragged_todo_has_an_opaque_background_wherever_it_is_held() {
            const first = column("First");
            show(first, "First", ["Read"]);
            const shown = row(first, "Read");
            const grounds = () => all(content(first, "Read"), item => item instanceof Rectangle
                                      && item.width === shown.width && item.height === shown.height
                                      && Qt.colorEqual(item.color, Theme.card)).length;
            for (const x of [60, shown.width - 14]) {
                compare(grounds(), 0);
                mousePress(shown, x, 17);
                mouseMove(shown, x - 40, 17);
                compare(grounds(), 1);
                mouseRelease(shown, x - 40, 17);
            }
        }
        function test_alt_and_an_arrow_move_a_goal() {
            button(column("Second"), "ellipsis").forceActiveFocus();
            keyClick(Qt.Key_Left, Qt.AltModifier);
            compare(world.goalTitles(), ["Second", "First"]);
            keyClick(Qt.Key_Right, Qt.AltModifier);
            compare(world.goalTitles(), ["First", "Second"]);
        }
        function test_the_badges_count_open_todos() {
            const first = column("First");
            show(first, "First", ["A", "B"]);
            world.board.todos.toggle(world.todoID("A", "First"), first.columnID);
            world.board.todos.toggle(world.todoID("A", "First"), first.columnID);
            tryCompare(first, "openTodoCount", 1);
            const badge = all(first, item => item instanceof CountBadge)[0];
            compare(badge.Accessible.name, ViewSettings.copy.openTodoCount(1));
        }
        function test_an_empty_list_says_so() {
            const texts = all(column("First"), item => item instanceof AppText && item.visible)
                .map(item => item.text);
            verify(texts.includes("No todos yet"));
        }
        function test_a_goal_whose_todos_are_all_completed_says_how_many_they_are() {
            const first = column("First");
            const isSaid = text => all(first, item => item instanceof AppText && item.visible
                                              && item.text === text).length === 1;
            show(first, "First", ["A", "B"]);
            for (const title of ["A", "B"]) {
                verify(!isSaid("1 completed"));
                world.board.todos.toggle(world.todoID(title, "First"), first.columnID);
                world.board.todos.toggle(world.todoID(title, "First"), first.columnID);
            }
            // The last one shows for a moment more.
            compare(rowTitles(first), ["B"]);
            verify(!isSaid("2 completed"));
            world.pass(1500);
            tryVerify(() => isSaid("2 completed"));
            compare(rowTitles(first), []);
            // A list that has had todos does not say that it has none yet.
            verify(!isSaid("No todos yet"));
            // Within the card, and not over the words beside it.
            const texts = all(first, item => item instanceof AppText && item.visible);
            const none = only(texts.filter(item => item.text === "No open todos"));
            const some = only(texts.filter(item => item.text === "2 completed"));
            const left = some.mapToItem(first, 0, 0).x;
            verify(none.mapToItem(first, none.width, 0).x <= left);
            verify(left + some.width <= first.width);
            verify(!none.truncated && !some.truncated);
            compare(some.mapToItem(first, 0, some.baselineOffset).y,
                    none.mapToItem(first, 0, none.baselineOffset).y);
            world.addTodo("C", "First");
            tryVerify(() => !isSaid("2 completed"));
            verify(!isSaid("No open todos"));
            for (const title of ["A", "B", "C"])
                world.board.todos.remove(world.todoID(title, "First"), first.columnID);
            tryVerify(() => isSaid("No todos yet"));
        }
        function test_a_long_list_makes_only_the_rows_that_show() {
            for (let i = 0; i < 1000; ++i)
                world.addTodo("Todo " + i, "First");
            tryVerify(() => rowTitles(column("First")).length > 5);
            verify(rowTitles(column("First")).length < 60);
            verify(rowTitles(unified()).length < 60);
        }
    }
}
