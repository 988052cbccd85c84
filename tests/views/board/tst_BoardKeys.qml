import QtQuick
import QtTest
import Kelpa.Controls
import Kelpa.Goals
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
    SignalSpy {
        id: renames

        target: world.board.goals
        signalName: "renameRequested"
    }

    TodoCase {
        name: "BoardKeys"
        goalBoard: board

        function init() {
            renames.clear();
            world.clearSelection();
            header.forceActiveFocus();
            header.focus = false;
            tryVerify(() => !isMoving());
        }
        function search() {
            return only(all(header, item => item instanceof SearchField));
        }

        function test_F2_and_a_double_click_ask_for_another_title_of_the_goal() {
            keyClick(Qt.Key_F2);
            compare(renames.count, 0);
            world.board.goals.goToColumn(world.columnOfGoal("Second"));
            tryVerify(() => !isMoving());
            keyClick(Qt.Key_F2);
            compare(renames.count, 1);
            compare(renames.signalArguments[0][0], world.columnOfGoal("Second"));
            tryVerify(() => !isMoving());
            view().contentY = 0;
            const title = only(all(column("First"), item => item instanceof MarqueeGoalTitle));
            mouseClick(title, 10, 8);
            tryCompare(world.board, "selectedTarget", 2);
            compare(world.selectedGoal(), "First");
            compare(renames.count, 1);
            tryVerify(() => !isMoving());
            mouseDoubleClickSequence(title, 10, 8);
            compare(renames.count, 2);
            compare(renames.signalArguments[1][0], world.columnOfGoal("First"));
            // The press is over.
            mouseMove(root, 640, 690);
            verify(!all(column("First"), item => item instanceof MouseArea && item.pressed).length);
        }
        function test_F2_belongs_to_the_todo_that_has_the_keyboard() {
            const first = column("First");
            world.board.goals.goToColumn(world.columnOfGoal("First"));
            show(first, "First", ["Read"]);
            content(first, "Read").forceActiveFocus(Qt.TabFocusReason);
            keyClick(Qt.Key_F2);
            tryVerify(() => field(first) !== null && field(first).activeFocus);
            keyClick(Qt.Key_F2);
            compare(renames.count, 0);
            keyClick(Qt.Key_Escape);
        }
        function test_Delete_deletes_the_todo_that_has_the_keyboard() {
            const first = column("First");
            show(first, "First", ["Read", "Write", "Walk"]);
            content(first, "Write").forceActiveFocus(Qt.TabFocusReason);
            keyClick(Qt.Key_Delete);
            compare(world.todos("First"), ["Read (todo)", "Walk (todo)"]);
            verify(world.board.toastOffersUndo);
            tryVerify(() => content(first, "Walk")?.activeFocus ?? false);
            // Held, it does no more; nor does it with another key.
            world.repeatKey(content(first, "Walk"), Qt.Key_Delete);
            keyClick(Qt.Key_Delete, Qt.ShiftModifier);
            compare(world.todos("First"), ["Read (todo)", "Walk (todo)"]);
        }
        function test_the_keys_for_pages_scroll_the_board() {
            const titles = [];
            for (let i = 0; i < 100; ++i)
                titles.push("Todo " + i);
            world.board.goals.goToColumn(world.columnOfGoal("First"));
            for (const title of titles)
                world.addTodo(title, "First");
            tryVerify(() => !isMoving() && view().contentHeight > 4 * view().height);
            keyClick(Qt.Key_Home);
            tryVerify(() => view().contentY === 0 && !isMoving());
            keyClick(Qt.Key_PageDown);
            tryVerify(() => view().contentY > 0 && !isMoving());
            const page = view().contentY;
            verify(page > 0.7 * view().height && page < view().height);
            // Twice at once is twice as far.
            keyClick(Qt.Key_PageDown);
            keyClick(Qt.Key_PageDown);
            tryVerify(() => view().contentY === 3 * page);
            keyClick(Qt.Key_PageUp);
            tryVerify(() => view().contentY === 2 * page);
            keyClick(Qt.Key_End);
            tryVerify(() => view().contentY === view().contentHeight - view().height);
            const end = view().contentY;
            search().forceActiveFocus();
            for (const key of [Qt.Key_Home, Qt.Key_PageUp])
                keyClick(key);
            wait(0);
            verify(!isMoving());
            compare(view().contentY, end);
            search().focus = false;
        }
    }
}
