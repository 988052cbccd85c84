pragma ComponentBehavior: Bound

import QtQuick
import Kelpa.Appearance

/// The field for a new todo of a list. It stays open for the next todo; text that is not added is
/// kept as the list's draft.
TodoField {
    id: root

    required property string listID

    signal added
    /// `returnsKeyboard` says whether the focus is to return to where it came from; it is false
    /// where the focus has gone elsewhere already.
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

    // A blank field that was left is in the way. It closes once the focus has arrived elsewhere.
    Timer {
        id: closing

        interval: 0
        onTriggered: if (!root.hasKeyboard && !root.todos.isTitle(root.text))
            root.closed(false)
    }
    Connections {
        target: root.todos
        // The text of a closed field is only in the draft.
        enabled: root.Window.window !== null

        // Fields without the focus were left before: their drafts stay wanted.
        function onEditorGivenUp(): void {
            if (root.hasKeyboard)
                root.todos.giveUpDraft(root.listID);
        }
        function onWritingFinished(): void {
            root.finishComposition();
            const title = root.text;
            root.text = "";
            if (root.todos.isTitle(title))
                root.todos.add(title, root.listID);
        }
    }
}
