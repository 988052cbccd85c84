pragma ComponentBehavior: Bound

import QtQuick
import Kelpa.Appearance
import Kelpa.Controls

/// Has the path of a file typed, where the desktop has no dialog.
Column {
    id: root

    property alias path: field.text

    signal committed
    signal cancelled
    signal edited

    function focusField(): void {
        field.forceActiveFocus(Qt.TabFocusReason);
        field.selectAll();
    }

    spacing: Theme.small

    AppText {
        width: parent.width
        text: ViewSettings.copy.text(CopyKey.NoFileDialog)
        color: Theme.secondaryText
        wrapMode: Text.Wrap
        Accessible.ignored: !visible
        Accessible.role: Accessible.AlertMessage
        Accessible.name: text

        Announcement {
            text: parent.text
        }
    }
    TextInputField {
        id: field

        width: parent.width
        label: ViewSettings.copy.text(CopyKey.FilePath)
        placeholderText: label
        onTextEdited: root.edited()
        onCommitted: root.committed()
        onCancelled: root.cancelled()
    }
}
