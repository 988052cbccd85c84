import QtQuick
import QtTest
import Kelpa.Appearance

/// Two hundred goals, without todos and without a selection before each test.
BoardCase {
    id: root

    readonly property string longTitle: "A goal whose title is a good deal longer than its place in the head of a card"

    function goal(number) {
        return "Goal " + number;
    }
    function settle() {
        targets().layOut();
        tryVerify(() => !isMoving());
        targets().layOut();
    }
    function initTestCase() {
        for (let number = 1; number <= 200; ++number)
            world.board.goals.createGoal(goal(number));
        tryVerify(() => column(goal(1)) !== null);
    }
    function init() {
        root.forceActiveFocus();
        // With the rail at its beginning.
        select(1);
        world.clearSelection();
        view().contentY = 0;
        settle();
    }
    function cleanup() {
        world.removeTodos();
        world.board.goals.renameGoal(world.columnOfGoal(longTitle), goal(1));
        ViewSettings.isReducingMotion = false;
    }
    function select(number) {
        world.board.goals.goToColumn(world.columnOfGoal(goal(number)));
    }
    function isInView(item) {
        const top = item.mapToItem(view(), 0, 0).y;
        return top >= 0 && top + Math.min(item.height, view().height) <= view().height + 1;
    }
}
