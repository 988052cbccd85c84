pragma ComponentBehavior: Bound

import QtQuick
import Kelpa.Appearance

/// The field in which the title of a todo is changed. Only Escape and the button throw away what was
/// written: `ended` comes after these and after Return, `abandoned` when the keyboard goes elsewhere.
TodoField {
    id: root

    required property string todoID
    required property string columnID

    /// The title that the field was given: while it holds that, nobody has written.
    property string givenTitle

    signal ended

    function takeTitle(): void {
        root.givenTitle = root.todos.title(root.todoID, root.columnID);
        root.text = root.givenTitle;
    }

    label: ViewSettings.copy.text(CopyKey.EditTodo)
    Component.onCompleted: root.takeTitle()
    onCommitted: title => {
        root.todos.rename(root.todoID, root.columnID, title);
        root.ended();
    }
    onCancelled: root.ended()
    // What was not written here may be old: the title can be undone meanwhile.
    onAbandoned: {
        if (root.text !== root.givenTitle && root.todos.isTitle(root.text))
            root.todos.rename(root.todoID, root.columnID, root.text);
    }

    Connections {
        target: root.todos

        function onEntriesChanged(): void {
            if (root.text === root.givenTitle)
                root.takeTitle();
        }
        function onWritingFinished(): void {
            root.finish();
            root.abandoned();
        }
    }
}
