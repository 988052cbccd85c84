import QtQuick
import QtTest
import Kelpa

Item {
    id: root

    width: 1100
    height: 700

    GoalBoard {
        id: board

        anchors.fill: parent
        board: world.board
    }
    SignalSpy {
        id: adding

        target: board
        signalName: "newGoalRequested"
    }

    TestCase {
        name: "BoardLayout"
        when: windowShown

        /// Everything below `item` for which `accepts` holds.
        function all(item, accepts) {
            let found = accepts(item) ? [item] : [];
            for (let i = 0; i < item.children.length; ++i)
                found = found.concat(all(item.children[i], accepts));
            return found;
        }
        function only(found) {
            return found.length === 1 ? found[0] : null;
        }
        function column(title) {
            return only(all(board, item => item instanceof GoalColumn && item.title === title));
        }
        function unified() {
            return only(all(board, item => item instanceof UnifiedTodoColumn));
        }
        function targets() {
            return unified().parent;
        }
        function view() {
            return only(all(board, item => item instanceof Flickable
                                           && item.Accessible.role === Accessible.Pane));
        }
        function isMoving() {
            return board.isMoving || all(board, item => item instanceof WaterfallView
                                                        && item.isMoving).length > 0;
        }
        function goal(number) {
            return "Goal " + number;
        }
        function settle() {
            tryVerify(() => !isMoving());
        }

        function initTestCase() {
            for (let number = 200; number > 0; --number)
                world.board.createGoal(goal(number));
            tryVerify(() => column(goal(1)) !== null);
        }
        function init() {
            world.clearSelection();
            view().contentY = 0;
            settle();
        }

        function test_a_click_on_the_rail_selects_and_expands_a_goal() {
            const entry = all(board, item => item.text === "(0)" + goal(3))[0];
            verify(entry);
            mouseClick(entry);
            compare(world.selectedGoal(), goal(3));
            settle();
            verify(column(goal(3)).isExpanded);
        }
    }
}
