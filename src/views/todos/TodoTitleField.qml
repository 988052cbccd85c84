pragma ComponentBehavior: Bound

import QtQuick
import Kelpa.Appearance

/// The field in which the title of a todo is edited. `ended` follows Return, Escape and the button,
/// `abandoned` a loss of the focus; only Escape and the button discard the text.
TodoField {
    id: root

    required property string todoID
    required property string columnID

    /// The stored title that the field was filled with: equal to the text until somebody types. A
    /// title that is too long for a field leaves it empty, and stays until another one is written.
    property string storedTitle

    signal ended

    function readTitle(): void {
        root.storedTitle = root.todos.title(root.todoID, root.columnID);
        root.text = root.storedTitle;
        root.notice = root.todos.titleNotice(root.todoID, root.columnID);
    }

    label: ViewSettings.copy.text(CopyKey.EditTodo)
    Component.onCompleted: root.readTitle()
    onCommitted: title => {
        root.todos.rename(root.todoID, root.columnID, title);
        root.ended();
    }
    onCancelled: root.ended()
    // A text that nobody typed may be outdated: an undo can change the title meanwhile.
    onAbandoned: {
        if (root.text !== root.storedTitle && root.todos.isTitle(root.text))
            root.todos.rename(root.todoID, root.columnID, root.text);
    }

    Connections {
        target: root.todos

        function onEntriesChanged(): void {
            if (root.text === root.storedTitle)
                root.readTitle();
        }
        function onWritingFinished(): void {
            root.finishComposition();
            root.abandoned();
        }
    }
}
