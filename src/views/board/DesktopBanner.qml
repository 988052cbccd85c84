pragma ComponentBehavior: Bound

import QtQuick
import Kelpa.Appearance
import Kelpa.Controls
import Kelpa.Board

/// Says what the desktop does not give, why, and what helps, until the person has read it.
Rectangle {
    id: root

    required property DesktopNotice notice

    readonly property string heading: root.notice.isOpen ? ViewSettings.copy.text(root.notice.heading)
                                                         : ""
    readonly property string explanation: root.notice.isOpen ? ViewSettings.copy.text(root.notice.text)
                                                             : ""

    readonly property real buttonsWidth: button.implicitWidth
                                         + (remedy.visible ? remedy.implicitWidth + Theme.small : 0)
    /// Whether the buttons are below large texts, which have too little room beside them.
    readonly property bool isStacked: Theme.textGrowth > 1
                                      && root.width - texts.anchors.leftMargin - root.buttonsWidth
                                         - 2 * Theme.large < Theme.grown(320)

    implicitHeight: (root.isStacked ? texts.implicitHeight + Theme.small + button.implicitHeight
                                    : Math.max(texts.implicitHeight, button.implicitHeight))
                    + 2 * Theme.medium
    radius: Theme.cardRadius
    color: Theme.warningGround
    Accessible.role: Accessible.AlertMessage
    Accessible.name: root.heading
    Accessible.description: root.explanation

    Announcement {
        text: root.heading + "\n" + root.explanation
    }
    AppIcon {
        x: Theme.large
        anchors.verticalCenter: parent.verticalCenter
        name: "app-window"
        size: 22
        color: Theme.warning
    }
    Column {
        id: texts

        anchors.left: parent.left
        anchors.leftMargin: Theme.large + 22 + Theme.medium
        anchors.right: root.isStacked ? parent.right : remedy.visible ? remedy.left : button.left
        anchors.rightMargin: Theme.large
        anchors.verticalCenter: parent.verticalCenter
        anchors.verticalCenterOffset: root.isStacked ? -(button.height + Theme.small) / 2 : 0
        spacing: 2

        AppText {
            width: parent.width
            text: root.heading
            font: Theme.bodyStrong
            wrapMode: Text.Wrap
        }
        AppText {
            width: parent.width
            text: root.explanation
            color: Theme.secondaryText
            wrapMode: Text.Wrap
        }
    }
    AppButton {
        id: remedy

        anchors.right: button.left
        anchors.rightMargin: Theme.small
        anchors.verticalCenter: button.verticalCenter
        visible: root.notice.remedy >= 0
        isPrimary: true
        text: visible ? ViewSettings.copy.text(root.notice.remedy) : ""
        onClicked: root.notice.mend()
    }
    AppButton {
        id: button

        anchors.right: parent.right
        anchors.rightMargin: Theme.large
        anchors.verticalCenter: parent.verticalCenter
        anchors.verticalCenterOffset: root.isStacked ? (texts.height + Theme.small) / 2 : 0
        text: ViewSettings.copy.text(CopyKey.GotIt)
        onClicked: root.notice.dismiss()
    }
}
