pragma ComponentBehavior: Bound

import QtQuick
import Kelpa.Appearance
import Kelpa.Controls
import Kelpa.Board

/// Says which permissions are missing and what they are for.
Rectangle {
    id: root

    required property BoardController board

    implicitHeight: Math.max(rows.implicitHeight,
                             settingsButton.visible ? settingsButton.implicitHeight : 0)
                    + 2 * Theme.medium
    radius: Theme.cardRadius
    color: Theme.warningGround
    visible: !root.board.isScreenCaptureTrusted || !root.board.isAccessibilityTrusted

    component Explanation: Column {
        id: explanation

        required property string heading
        required property string text

        width: rows.width
        spacing: 2
        Accessible.role: Accessible.StaticText
        Accessible.ignored: !visible
        Accessible.name: explanation.heading
        Accessible.description: explanation.text

        AppText {
            width: parent.width
            text: explanation.heading
            font: Theme.bodyStrong
        }
        AppText {
            width: parent.width
            text: explanation.text
            color: Theme.secondaryText
            wrapMode: Text.Wrap
        }
    }

    AppIcon {
        x: Theme.large
        anchors.verticalCenter: parent.verticalCenter
        name: "shield-lock"
        size: 22
        color: Theme.warning
    }
    Column {
        id: rows

        anchors.left: parent.left
        anchors.leftMargin: Theme.large + 22 + Theme.medium
        anchors.right: settingsButton.visible ? settingsButton.left : parent.right
        anchors.rightMargin: Theme.large
        anchors.verticalCenter: parent.verticalCenter
        spacing: 6

        Explanation {
            heading: ViewSettings.copy.text(CopyKey.ScreenRecordingNeeded)
            text: ViewSettings.copy.text(CopyKey.ScreenRecordingText)
            visible: !root.board.isScreenCaptureTrusted
        }
        Explanation {
            heading: ViewSettings.copy.text(CopyKey.AccessibilityNeeded)
            text: ViewSettings.copy.text(CopyKey.AccessibilityText)
            visible: !root.board.isAccessibilityTrusted
        }
    }
    AppButton {
        id: settingsButton

        visible: root.board.hasPermissionSettings
        anchors.right: parent.right
        anchors.rightMargin: Theme.large
        anchors.verticalCenter: parent.verticalCenter
        text: ViewSettings.copy.text(CopyKey.OpenSystemSettings)
        onClicked: root.board.requestPermissions()
    }
}
