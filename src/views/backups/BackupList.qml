pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Templates as T
import Kelpa.Appearance
import Kelpa.Controls
import Kelpa.Backups

/// The backups: the arrow keys choose one, and Return restores it.
ListView {
    id: root

    required property BackupController backups

    readonly property BackupListRow chosenRow: root.currentItem as BackupListRow

    signal confirmed

    boundsBehavior: Flickable.StopAtBounds
    clip: true
    activeFocusOnTab: true
    currentIndex: 0
    highlightMoveDuration: 0
    model: root.backups
    T.ScrollBar.vertical: AppScrollBar {}
    Accessible.role: Accessible.List
    Accessible.name: ViewSettings.copy.text(CopyKey.RestoreBackupTitle)
    Keys.onPressed: event => {
        event.accepted = true;
        if (event.key === Qt.Key_Return || event.key === Qt.Key_Enter)
            event.isAutoRepeat || root.confirmed();
        else if (event.key === Qt.Key_Home)
            root.currentIndex = 0;
        else if (event.key === Qt.Key_End)
            root.currentIndex = root.count - 1;
        else
            event.accepted = false;
    }

    delegate: BackupListRow {
        required property int index

        width: root.width - Theme.medium
        isChosen: ListView.isCurrentItem
        onChosen: {
            root.currentIndex = index;
            root.forceActiveFocus();
        }
        onConfirmed: root.confirmed()
    }
}
