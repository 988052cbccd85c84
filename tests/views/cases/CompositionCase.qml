import QtQuick
import QtTest
import Kelpa.Controls
import Kelpa.Todos

/// Composes in every kind of field.
TodoCase {
    id: root

    required property FieldsView scene

    readonly property SignalSpy committed: SignalSpy {
        signalName: "committed"
    }
    readonly property SignalSpy cancelled: SignalSpy {
        signalName: "cancelled"
    }

    goalBoard: root.scene.goalBoard

    function focusedField() {
        const item = root.scene.Window.activeFocusItem;
        return item instanceof TextInputField ? item : null;
    }
    /// Opens a field and returns it once it has the keyboard.
    function opened(open) {
        open();
        tryVerify(() => focusedField() !== null);
        committed.target = focusedField();
        cancelled.target = focusedField();
        committed.clear();
        cancelled.clear();
        return focusedField();
    }
    function cleanup() {
        root.scene.sheet.close();
        world.board.windows.picker.close();
        tryVerify(() => !root.scene.sheet.visible && !root.scene.picker.visible);
        root.goalBoard.forceActiveFocus();
        world.board.todos.cancelEditor();
        world.board.todos.setDraft(world.columnOfGoal("First"), "");
        world.removeTodos();
        tryVerify(() => all(root.goalBoard, item => item instanceof TodoField).length === 0);
    }
    function fields() {
        return [
            {tag: "search", open: () => root.scene.search.forceActiveFocus()},
            {tag: "title of a goal", open: () => root.scene.sheet.ask("")},
            {tag: "search of the sheet",
             open: () => world.board.goals.requestWindows(world.columnOfGoal("First"))},
            {tag: "new todo",
             open: () => world.board.todos.requestEditor(world.columnOfGoal("First"))},
            {tag: "title of a todo", open: () => {
                show(column("First"), "First", ["Read"]);
                content(column("First"), "Read").forceActiveFocus(Qt.TabFocusReason);
                keyClick(Qt.Key_F2);
            }}
        ];
    }
}
