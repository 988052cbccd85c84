pragma ComponentBehavior: Bound

import QtQuick
import Kelpa.Appearance
import Kelpa.Controls
import Kelpa.Backups

/// The backups: the arrow keys choose one, and Return restores it.
ChoiceList {
    id: root

    required property BackupController backups

    readonly property BackupListRow chosenRow: root.currentItem as BackupListRow

    label: ViewSettings.copy.text(CopyKey.RestoreBackupTitle)
    model: root.backups

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
