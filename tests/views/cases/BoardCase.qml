import QtQuick
import QtTest
import Kelpa.Scene
import Kelpa.Controls
import Kelpa.Todos
import Kelpa.Board

/// Looks at a board that shows, as a person does.
TestCase {
    id: root

    required property GoalBoard goalBoard

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
        return only(all(root.goalBoard, item => item instanceof GoalColumn && item.title === title));
    }
    function unified() {
        return only(all(root.goalBoard, item => item instanceof UnifiedTodoColumn));
    }
    function targets() {
        return only(all(root.goalBoard, item => item instanceof WaterfallView
                                                && item.minimumColumnWidth === 320));
    }
    function view() {
        return only(all(root.goalBoard, item => item instanceof Flickable
                                                && item.Accessible.role === Accessible.Pane));
    }
    function isMoving() {
        return root.goalBoard.isMoving
                || all(root.goalBoard, item => item instanceof WaterfallView
                                               && item.isMoving).length > 0;
    }
    function menuItems() {
        return all(root.goalBoard.Window.contentItem,
                   item => item instanceof AppMenuItem && item.visible && item.opacity > 0);
    }
    /// By the keyboard: where the highlight starts depends on where the pointer rests.
    function choose(text) {
        const chosen = () => menuItems().find(item => item.text === text);
        tryVerify(() => chosen() !== undefined);
        for (let i = 0; i < 8 && !chosen().highlighted; ++i)
            keyClick(Qt.Key_Down);
        for (let i = 0; i < 8 && !chosen().highlighted; ++i)
            keyClick(Qt.Key_Up);
        verify(chosen().highlighted);
        keyClick(Qt.Key_Return);
    }
    function type(text) {
        for (const character of text)
            keyClick(character);
    }
}
