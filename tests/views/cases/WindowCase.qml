import QtQuick
import QtTest
import Kelpa.Windows
import Kelpa.Board

/// A goal, and two windows that belong to none.
BoardCase {
    id: root

    function initTestCase() {
        world.board.goals.createGoal("First");
        world.addWindow(4294967295, "Report");
        world.addWindow(8, "Letter");
    }
    function columns() {
        return all(root.goalBoard, item => item instanceof GoalColumn)
            .sort((a, b) => b.isUnassigned - a.isUnassigned);
    }
    /// Null while a window that moved still has a card in a column that it left, and while
    /// cards move.
    function card(title) {
        if (isMoving())
            return null;
        const isCard = item => item instanceof WindowCard && item.visible
                               && item.title === title;
        const found = all(root.goalBoard, isCard);
        if (found.length !== 1)
            return null;
        const place = world.goalOfWindow(found[0].windowID) || "Unsorted";
        return all(columns().find(column => column.title === place), isCard).length === 1
                ? found[0] : null;
    }
    function moveBack(windowID, title) {
        tryVerify(() => card(title) !== null);
        world.board.windows.moveWindow(windowID, "kelpa-unassigned");
        tryVerify(() => card(title) !== null);
    }
    function cardButton(title, symbol) {
        return all(card(title), item => item instanceof CardButton && item.symbol === symbol)[0];
    }
    function chooseAndClose(text) {
        root.choose(text);
        tryVerify(() => menuItems().length === 0);
    }
}
