pragma ComponentBehavior: Bound

import QtQuick
import Kelpa.Appearance

/// The field for a new todo of a list. It stays for the next one; what is written and not added is
/// kept as the list's draft.
TodoField {
    id: root

    required property string listID

    signal added
    /// It is not needed any more. The keyboard goes back to where it came from, unless it has gone
    /// elsewhere by itself.
    signal closed(returnsKeyboard: bool)

    symbol: "circle"
    label: ViewSettings.copy.text(CopyKey.AddTodo)
    onTextChanged: root.todos.setDraft(root.listID, root.text)
    Component.onCompleted: root.text = root.todos.draft(root.listID)
    onCommitted: title => {
        root.text = "";
        root.todos.add(title, root.listID);
        root.added();
    }
    onCancelled: {
        root.text = "";
        root.closed(true);
    }
    onAbandoned: closing.restart()

    // One in which nobody has written is in the way. It goes when the keyboard has come to where it
    // goes.
    Timer {
        id: closing

        interval: 0
        onTriggered: if (!root.hasKeyboard && !root.todos.isTitle(root.text))
            root.closed(false)
    }
    Connections {
        target: root.todos
        // What was written in one that is closed is the draft's alone.
        enabled: root.Window.window !== null

        // Others that close with it were left before, and wait.
        function onEditorGivenUp(): void {
            if (root.hasKeyboard)
                root.todos.giveUpDraft(root.listID);
        }
        function onWritingFinished(): void {
            root.finish();
            const title = root.text;
            root.text = "";
            if (root.todos.isTitle(title))
                root.todos.add(title, root.listID);
        }
    }
}
