pragma ComponentBehavior: Bound

import QtQuick
import Kelpa.Appearance
import Kelpa.Backups
import Kelpa.Controls
import Kelpa.Board

/// Says what is wrong with the board's file, what is safe and what helps.
Rectangle {
    id: root

    required property TroubleController trouble
    required property BackupController backups

    readonly property string heading: ViewSettings.copy.text(root.trouble.happened)
    readonly property string safeText: ViewSettings.copy.text(root.trouble.safe)
    readonly property string adviceText: root.trouble.advice >= 0
                                         ? ViewSettings.copy.text(root.trouble.advice)
                                         : ViewSettings.copy.movedAsideTo(root.trouble.movedAsideName)

    /// Whether the buttons are below large texts, which have too little room beside them.
    readonly property bool isStacked: Theme.textGrowth > 1
                                      && root.width - texts.anchors.leftMargin - buttons.implicitWidth
                                         - 2 * Theme.large < Theme.grown(320)

    implicitHeight: (root.isStacked ? texts.implicitHeight + Theme.small + buttons.implicitHeight
                                    : Math.max(texts.implicitHeight, buttons.implicitHeight))
                    + 2 * Theme.medium
    radius: Theme.cardRadius
    color: Theme.warningGround
    Accessible.role: Accessible.AlertMessage
    Accessible.ignored: !visible
    Accessible.name: root.heading
    Accessible.description: root.safeText + "\n" + root.adviceText

    Announcement {
        text: root.heading + root.Accessible.description
    }

    AppIcon {
        x: Theme.large
        anchors.verticalCenter: parent.verticalCenter
        name: "warning-triangle"
        size: 22
        color: Theme.warning
    }
    Column {
        id: texts

        anchors.left: parent.left
        anchors.leftMargin: Theme.large + 22 + Theme.medium
        anchors.right: root.isStacked ? parent.right : buttons.left
        anchors.rightMargin: Theme.large
        anchors.verticalCenter: parent.verticalCenter
        anchors.verticalCenterOffset: root.isStacked ? -(buttons.height + Theme.small) / 2 : 0
        spacing: 2

        AppText {
            width: parent.width
            text: root.heading
            font: Theme.bodyStrong
            wrapMode: Text.Wrap
        }
        AppText {
            width: parent.width
            text: root.safeText
            color: Theme.secondaryText
            wrapMode: Text.Wrap
        }
        AppText {
            width: parent.width
            text: root.adviceText
            color: Theme.secondaryText
            wrapMode: Text.Wrap
        }
    }
    Row {
        id: buttons

        anchors.right: parent.right
        anchors.rightMargin: Theme.large
        anchors.verticalCenter: parent.verticalCenter
        anchors.verticalCenterOffset: root.isStacked ? (texts.height + Theme.small) / 2 : 0
        spacing: Theme.small

        AppButton {
            text: ViewSettings.copy.text(CopyKey.RestoreBackup)
            // A file was moved aside, and something of it may be missing.
            visible: root.trouble.movedAsideName !== "" && root.backups.isOffered
            onClicked: root.backups.open()
        }
        AppButton {
            text: ViewSettings.copy.text(CopyKey.ShowFolder)
            visible: root.trouble.canShowFolder
            onClicked: root.trouble.showFolder()
        }
        AppButton {
            text: ViewSettings.copy.text(CopyKey.TryAgain)
            visible: root.trouble.canRetry
            onClicked: root.trouble.retry()
        }
        AppButton {
            text: ViewSettings.copy.text(CopyKey.GotIt)
            visible: root.trouble.canDismiss
            onClicked: root.trouble.dismiss()
        }
    }
}
