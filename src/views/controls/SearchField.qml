pragma ComponentBehavior: Bound

import QtQuick
import Kelpa.Appearance
import Kelpa.Controls

/// A text field with a magnifier, which Escape or its button clears.
TextInputField {
    id: root

    required property string clearLabel

    /// While true, the Down key leads to the matches.
    readonly property bool isSearching: root.length > 0

    /// Escape was pressed in the empty field.
    signal dismissed

    leftPadding: 32
    rightPadding: 32
    Accessible.role: Accessible.EditableText
    Accessible.searchEdit: true
    onCancelled: if (root.length > 0)
        root.clear();
    else
        root.dismissed()

    AppIcon {
        name: "search"
        x: 10
        anchors.verticalCenter: parent.verticalCenter
    }
    IconButton {
        symbol: "x"
        size: 24
        text: root.clearLabel
        visible: root.length > 0
        anchors.right: parent.right
        anchors.rightMargin: Theme.tiny
        anchors.verticalCenter: parent.verticalCenter
        // Escape clears the text as well, and nobody finds the keyboard in a button that is gone.
        onVisibleChanged: if (!visible && activeFocus)
            root.forceActiveFocus()
        onClicked: {
            TextComposition.cancel(root);
            root.clear();
            root.forceActiveFocus();
        }
    }
}
