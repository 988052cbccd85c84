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

    width: Math.min(680, parent ? parent.width - 2 * Theme.large : 680)
    height: Math.min(540, parent ? parent.height - 2 * Theme.large : 540)
    title: ViewSettings.copy.text(CopyKey.RestoreBackupTitle)
    onRestorationCountChanged: root.close()
    onClosed: root.backups.close()
    Component.onCompleted: {
        root.open();
        list.forceActiveFocus(Qt.TabFocusReason);
    }

    Item {
        anchors.fill: parent

        Column {
            id: heading

            width: parent.width
            spacing: Theme.small

            AppText {
                width: parent.width
                text: root.title
                font: Theme.heading
                Accessible.role: Accessible.Heading
                Accessible.name: text
            }
            AppText {
                width: parent.width
                text: ViewSettings.copy.text(CopyKey.BackupsText)
                color: Theme.secondaryText
                wrapMode: Text.Wrap
                Accessible.role: Accessible.StaticText
                Accessible.name: text
            }
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
        BackupPreview {
            anchors.left: list.right
            anchors.leftMargin: Theme.small
            anchors.right: parent.right
            anchors.top: list.top
            anchors.bottom: list.bottom
            row: list.chosenRow
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
        Column {
            id: footer

            anchors.left: parent.left
            anchors.right: parent.right
            anchors.bottom: parent.bottom
            topPadding: Theme.medium
            spacing: Theme.small

            AppText {
                width: parent.width
                text: root.backups.refusal < 0 ? "" : ViewSettings.copy.text(root.backups.refusal)
                color: Theme.destructive
                wrapMode: Text.Wrap
                visible: root.backups.refusal >= 0
                Accessible.ignored: !visible
                Accessible.role: Accessible.AlertMessage
                Accessible.name: text

                Announcement {
                    text: parent.text
                }
            }
            Row {
                anchors.right: parent.right
                spacing: Theme.small

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
}
