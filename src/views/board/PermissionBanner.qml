pragma ComponentBehavior: Bound

import QtQuick
import Kelpa.Appearance
import Kelpa.Controls
import Kelpa.Board

/// Says what keeps the board from windows or their previews, and what helps.
Rectangle {
    id: root

    required property BoardController board

    implicitHeight: Math.max(rows.implicitHeight,
                             settingsButton.visible ? settingsButton.implicitHeight : 0)
                    + 2 * Theme.medium
    radius: Theme.cardRadius
    color: Theme.warningGround
    // Before the desktop has been asked nothing is known to be in the way.
    visible: root.board.needsScreenCapture || root.board.needsAccessibility
             || root.board.needsWindowManager || root.board.needsComposite

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
            wrapMode: Text.Wrap
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
            visible: root.board.needsScreenCapture
        }
        Explanation {
            heading: ViewSettings.copy.text(CopyKey.AccessibilityNeeded)
            text: ViewSettings.copy.text(CopyKey.AccessibilityText)
            visible: root.board.needsAccessibility
        }
        Explanation {
            heading: ViewSettings.copy.text(CopyKey.WindowManagerNeeded)
            text: ViewSettings.copy.text(CopyKey.WindowManagerText)
            visible: root.board.needsWindowManager
        }
        Explanation {
            heading: ViewSettings.copy.text(CopyKey.CompositeNeeded)
            text: ViewSettings.copy.text(CopyKey.CompositeText)
            visible: root.board.needsComposite
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
