pragma ComponentBehavior: Bound

import QtQuick
import Kelpa.Appearance
import Kelpa.Controls
import Kelpa.Backups

/// Chooses a backup and replaces the board by it. Opens when it is created.
Sheet {
    id: root

    required property BackupController backups

    readonly property bool canRestore: list.chosenRow !== null && list.chosenRow.isReadable
                                       && !root.backups.isRestoring

    readonly property int restorationCount: root.backups.restorationCount

    function restore(): void {
        if (root.canRestore)
            root.backups.restore(list.currentIndex);
    }

    width: Math.min(Theme.grown(680), parent ? parent.width - 2 * Theme.large : 680)
    height: Math.min(Theme.grown(540), parent ? parent.height - 2 * Theme.large : 540)
    title: ViewSettings.copy.text(CopyKey.RestoreBackupTitle)
    onRestorationCountChanged: root.close()
    // Not only when it has faded away: until then, the backup would still take the board's place.
    onAboutToHide: root.backups.cancel()
    onClosed: root.backups.close()
    Component.onCompleted: {
        root.open();
        list.forceActiveFocus(Qt.TabFocusReason);
    }

    Item {
        anchors.fill: parent

        SheetHeading {
            id: heading

            width: parent.width
            title: root.title
            explanation: ViewSettings.copy.text(CopyKey.BackupsText)
        }
        BackupList {
            id: list

            anchors.left: parent.left
            anchors.top: heading.bottom
            anchors.topMargin: Theme.medium
            anchors.bottom: footer.top
            width: Math.round(parent.width * 0.54)
            backups: root.backups
            onConfirmed: root.restore()
        }
        GoalCountList {
            anchors.left: list.right
            anchors.leftMargin: Theme.small
            anchors.right: parent.right
            anchors.top: list.top
            anchors.bottom: list.bottom
            label: list.chosenRow?.title ?? ""
            titles: list.chosenRow?.goalTitles ?? []
            counts: list.chosenRow?.goalCounts ?? []
            visible: root.backups.count > 0
        }
        AppText {
            anchors.left: list.left
            anchors.right: parent.right
            anchors.top: list.top
            text: ViewSettings.copy.text(CopyKey.NoBackupsYet)
            color: Theme.secondaryText
            wrapMode: Text.Wrap
            visible: root.backups.isRead && root.backups.count === 0
            Accessible.ignored: !visible
            Accessible.role: Accessible.StaticText
            Accessible.name: text
        }
        SheetFooter {
            id: footer

            anchors.left: parent.left
            anchors.right: parent.right
            anchors.bottom: parent.bottom
            problem: root.backups.refusal < 0 ? "" : ViewSettings.copy.text(root.backups.refusal)
            progress: root.backups.isSaving
                      ? ViewSettings.copy.text(CopyKey.SavingFirst)
                      : root.backups.isRestoring ? ViewSettings.copy.text(CopyKey.RestoringBackup) : ""

            AppButton {
                text: ViewSettings.copy.text(CopyKey.Cancel)
                onClicked: root.close()
            }
            AppButton {
                text: ViewSettings.copy.text(CopyKey.Restore)
                isPrimary: true
                Accessible.defaultButton: true
                enabled: root.canRestore
                onClicked: root.restore()
            }
        }
    }
}
