pragma ComponentBehavior: Bound

import QtQuick
import Kelpa.Appearance

/// The field for a new todo of a list. It stays open for the next todo; text that is not added is
/// kept as the list's draft. Pasting several lines has it offer a todo for each of them.
TodoField {
    id: root

    required property string listID

    /// The text as it was before the last change.
    property string knownText
    /// How many todos are offered for the text; 0 for no offer.
    property int offeredCount: 0

    signal added
    /// `returnsKeyboard` says whether the focus is to return to where it came from; it is false
    /// where the focus has gone elsewhere already.
    signal closed(returnsKeyboard: bool)

    symbol: "circle"
    label: ViewSettings.copy.text(CopyKey.AddTodo)
    offer: root.offeredCount > 0 ? ViewSettings.copy.makeTodos(root.offeredCount) : ""
    onTextChanged: {
        root.todos.setDraft(root.listID, root.text);
        root.offeredCount = root.todos.pastedTodoCount(root.knownText, root.text);
        root.knownText = root.text;
    }
    Component.onCompleted: {
        root.knownText = root.todos.draft(root.listID);
        root.text = root.knownText;
    }
    onOfferTaken: {
        const lines = root.text;
        root.text = "";
        root.todos.addLines(lines, root.listID);
        root.focusField();
        root.added();
    }
    onOfferDeclined: root.offeredCount = 0
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
            // Left before, and blank only now.
            if (!root.hasKeyboard)
                root.closed(false);
        }
    }
}
