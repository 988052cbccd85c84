import QtQuick
import QtTest
import Kelpa.Board
import "../cases"

/// What a person looks at stays in view when the window gets another size.
Item {
    id: root

    width: 1300
    height: 700

    GoalBoard {
        id: board

        anchors.fill: parent
        board: world.board
    }

    BigBoardCase {
        name: "ResizedBoard"
        goalBoard: board

        function cleanup() {
            root.width = 1300;
            root.height = 700;
            world.removeTodos();
            settle();
        }
        function showFar() {
            select(150);
            tryVerify(() => column(goal(150)) !== null && !isMoving());
            verify(isInView(column(goal(150))));
        }

        function test_the_selected_goal_stays_in_view_when_the_board_gets_narrower_and_wider() {
            showFar();
            for (const width of [900, 600, 1300]) {
                root.width = width;
                targets().layOut();
                tryVerify(() => !isMoving() && isInView(column(goal(150))), 5000, String(width));
            }
        }
        function test_the_selected_goal_stays_in_view_when_the_board_is_resized_step_by_step() {
            showFar();
            for (let width = 1290; width >= 500; width -= 10) {
                root.width = width;
                waitForRendering(board);
            }
            tryVerify(() => !isMoving() && isInView(column(goal(150))));
        }
        function test_the_selected_goal_stays_in_view_when_the_board_gets_lower() {
            showFar();
            // At the lower edge of the view.
            view().contentY = column(goal(150)).y + 16 + 292 - view().height;
            settle();
            verify(isInView(column(goal(150))));
            root.height = 380;
            targets().layOut();
            tryVerify(() => !isMoving() && isInView(column(goal(150))));
        }
        function test_a_selected_goal_that_fills_the_view_is_not_scrolled() {
            for (let i = 0; i < 60; ++i)
                world.addTodo("Todo " + i, goal(1));
            select(1);
            tryVerify(() => column(goal(1)) !== null && !isMoving()
                            && column(goal(1)).height > 1500);
            view().contentY = column(goal(1)).y + 600;
            settle();
            const place = view().contentY;
            root.height = 500;
            tryVerify(() => !isMoving());
            compare(view().contentY, place);
        }
        function test_a_board_scrolled_elsewhere_stays_there() {
            select(1);
            settle();
            view().contentY = 9000;
            settle();
            root.height = 500;
            tryVerify(() => !isMoving());
            compare(view().contentY, 9000);
        }
    }
}
