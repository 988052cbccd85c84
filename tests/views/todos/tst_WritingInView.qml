import QtQuick
import QtTest
import Kelpa.Controls
import Kelpa.Todos
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

    BigBoardCase {
        id: bigBoard

        name: "WritingInView"
        goalBoard: board

        function cleanup() {
            world.board.todos.leaveEditor();
            if (world.board.isAutoSortingGoals)
                world.board.toggleAutoSortingGoals();
            world.removeTodos();
        }
        function field() {
            return only(all(board, item => item instanceof TextInputField));
        }
        function write(number) {
            world.board.todos.requestEditor(world.columnOfGoal(goal(number)));
            tryVerify(() => (field()?.activeFocus ?? false) && !isMoving());
            verify(isInView(field()));
        }
        function add(count) {
            for (let i = 0; i < count; ++i) {
                type("todo");
                keyClick(Qt.Key_Return);
            }
            tryVerify(() => !isMoving());
            verify(field().activeFocus);
            compare(field().text, "");
        }

        function test_the_field_stays_in_view_while_todos_are_added_above_it() {
            write(150);
            for (let i = 0; i < 6; ++i) {
                add(5);
                tryVerify(() => isInView(field()), 2000, "after " + (5 * i + 5));
            }
            verify(column(goal(150)).height > view().height);
        }
        function test_the_field_stays_in_view_when_its_goal_goes_to_the_front() {
            world.board.toggleAutoSortingGoals();
            write(150);
            const before = world.board.selectedTarget;
            add(2);
            verify(world.board.selectedTarget < before);
            tryVerify(() => isInView(field()));
        }
        function test_a_board_scrolled_elsewhere_stays_there_when_the_selected_goal_moves() {
            world.board.toggleAutoSortingGoals();
            select(1);
            settle();
            view().contentY = 9000;
            settle();
            const place = view().contentY;
            const before = world.board.selectedTarget;
            world.addTodo("Elsewhere", goal(60));
            tryVerify(() => world.board.selectedTarget !== before && !isMoving());
            compare(view().contentY, place);
        }
        function test_an_undo_scrolls_to_its_goal_also_while_that_is_selected() {
            world.addTodo("Read", goal(1));
            select(1);
            settle();
            view().contentY = 9000;
            settle();
            verify(column(goal(1)) === null || !isInView(column(goal(1))));
            world.board.undo();
            compare(world.todos(goal(1)), []);
            tryVerify(() => column(goal(1)) !== null && !isMoving()
                            && column(goal(1)).mapToItem(view(), 0, 0).y >= 0);
        }
        function test_a_restored_todo_is_shown_in_its_long_card() {
            for (let i = 0; i < 60; ++i)
                world.addTodo("Todo " + i, goal(1));
            const id = world.todoID("Todo 45", goal(1));
            world.board.todos.remove(id, world.columnOfGoal(goal(1)));
            select(30);
            settle();
            world.board.undo();
            const row = () => only(all(column(goal(1)), item => item instanceof TodoRow
                                                              && item.todoID === id));
            tryVerify(() => column(goal(1)) !== null && row() !== null && !isMoving());
            tryVerify(() => isInView(row()));
        }
        function test_a_restored_todo_is_shown_in_the_selected_list_of_all_todos() {
            for (let i = 0; i < 60; ++i)
                world.addTodo("Todo " + i, "");
            world.board.todos.goToUnified();
            const id = world.todoID("Todo 45", "");
            world.board.todos.remove(id, "kelpa-unassigned");
            settle();
            const row = () => only(all(unified(), item => item instanceof TodoRow
                                                       && item.todoID === id));
            compare(row(), null);
            world.board.undo();
            verify(world.board.todos.isUnifiedSelected);
            tryVerify(() => row() !== null && !isMoving());
            const y = row().mapToItem(unified(), 0, 0).y;
            verify(y >= 48 && y + row().height <= unified().height, y);
        }
        function test_a_field_is_left_when_something_elsewhere_is_undone() {
            world.addTodo("Read", goal(60));
            write(1);
            type("half");
            world.board.undo();
            compare(world.todos(goal(60)), []);
            tryVerify(() => field() === null && !isMoving());
            verify(isInView(column(goal(60))));
            compare(world.board.todos.draft(world.columnOfGoal(goal(1))), "half");
            write(1);
            compare(field().text, "half");
            field().text = "";
        }
        function test_a_field_stays_when_something_in_its_goal_is_undone() {
            write(1);
            add(2);
            world.board.undo();
            compare(world.todos(goal(1)).length, 1);
            tryVerify(() => !isMoving());
            wait(100);
            verify(field().activeFocus);
        }
        function test_a_blank_field_closes_when_it_loses_the_focus() {
            write(1);
            field().focus = false;
            tryVerify(() => field() === null);
            compare(world.board.todos.editorColumnID, "");
        }
    }
}
