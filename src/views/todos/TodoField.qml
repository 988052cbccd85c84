pragma ComponentBehavior: Bound

import QtQuick
import Kelpa.Appearance
import Kelpa.Controls
import Kelpa.Todos

/// The row in which the title of a todo is written. A blank title is not committed, so that the
/// field stays.
FocusScope {
    id: root

    required property TodoController todos
    required property string symbol
    required property string label

    property alias text: field.text

    readonly property bool hasKeyboard: field.activeFocus || field.isMenuOpen
                                        || cancelButton.activeFocus

    signal committed(title: string)
    signal cancelled
    /// The keyboard went elsewhere within the window, or to nobody.
    signal abandoned

    function take(): void {
        field.forceActiveFocus();
        field.cursorPosition = field.length;
    }
    /// The first letter that is typed replaces the text.
    function takeWhole(): void {
        root.take();
        field.selectAll();
    }
    /// What is not yet composed to its end counts as it is.
    function finish(): void {
        TextComposition.keep(field);
    }
    function noteLeft(): void {
        if (root.activeFocus && root.Window.active && !root.hasKeyboard)
            root.abandoned();
    }

    implicitHeight: Theme.todoHeight
    Accessible.ignored: true

    AppIcon {
        x: 6
        name: root.symbol
        anchors.verticalCenter: parent.verticalCenter
    }
    TextInputField {
        id: field

        anchors.left: parent.left
        // The text stands where it stands when it is not being written.
        anchors.leftMargin: 26
        anchors.right: cancelButton.left
        anchors.rightMargin: 2
        anchors.verticalCenter: parent.verticalCenter
        implicitHeight: 28
        focus: true
        leftPadding: 4
        rightPadding: 4
        label: root.label
        placeholderText: ViewSettings.copy.text(CopyKey.EnterTodo)
        onCommitted: if (root.todos.isTitle(field.text))
            root.committed(field.text)
        onCancelled: root.cancelled()
        onActiveFocusChanged: if (!field.activeFocus)
            leaving.start()
    }
    // A click beside the field leaves it before it is known where it goes: the button may be next.
    Timer {
        id: leaving

        interval: 0
        onTriggered: root.noteLeft()
    }
    IconButton {
        id: cancelButton

        anchors.right: parent.right
        anchors.verticalCenter: parent.verticalCenter
        symbol: "x"
        size: 28
        symbolSize: 14
        text: ViewSettings.copy.text(CopyKey.Cancel)
        onClicked: root.cancelled()
    }

    // While another window has the keyboard, what was typed waits.
    onActiveFocusChanged: if (!root.activeFocus && root.Window.active && !field.isMenuOpen)
        root.abandoned()
}
