pragma ComponentBehavior: Bound

import QtQuick
import Kelpa.Appearance
import Kelpa.Controls

/// A short message over the board, with a button for an action on it. Presses end here, and do not
/// take the keyboard from a field.
Rectangle {
    id: root

    required property string message
    /// The text of the button; empty for no button.
    property string actionText

    /// The last message stays readable while it fades, and the button in its place.
    property string shownMessage
    property string shownActionText

    readonly property bool hasAction: root.shownActionText.length > 0
    /// Whether a person reads it or is about to press its button, so that it must stay.
    readonly property bool isHeld: root.message.length > 0
                                   && (ground.containsMouse || action.hovered || action.activeFocus)
    readonly property bool keepsFields: true
    /// The width within the window, in points.
    readonly property real room: (root.parent?.width ?? Infinity) - 2 * Theme.large

    signal actionRequested

    function noteShown(): void {
        if (root.message.length === 0) {
            // The next message must not take the keyboard by itself.
            action.focus = false;
            return;
        }
        root.shownMessage = root.message;
        root.shownActionText = root.actionText;
    }

    onMessageChanged: root.noteShown()
    onActionTextChanged: root.noteShown()

    implicitWidth: Math.min(Theme.grown(560), root.room, label.implicitWidth + label.anchors.leftMargin
                                 + label.anchors.rightMargin)
    implicitHeight: 36 + Theme.bodyGrowth
    radius: height / 2
    color: Theme.text
    opacity: root.message.length > 0 ? 1 : 0
    visible: root.opacity > 0
    Accessible.role: Accessible.AlertMessage
    Accessible.ignored: !root.visible
    Accessible.name: root.shownMessage

    Announcement {
        text: root.message
    }

    Behavior on opacity {
        NumberAnimation {
            duration: Theme.mediumTime
        }
    }

    MouseArea {
        id: ground

        anchors.fill: parent
        acceptedButtons: Qt.AllButtons
        hoverEnabled: true
        onWheel: wheel => wheel.accepted = false
    }
    AppText {
        id: label

        anchors.fill: parent
        anchors.leftMargin: Theme.large
        anchors.rightMargin: root.hasAction ? action.width + Theme.large : Theme.large
        horizontalAlignment: Text.AlignHCenter
        text: root.shownMessage
        color: Theme.window
    }
    PressButton {
        id: action

        anchors.right: parent.right
        anchors.rightMargin: Theme.tiny
        anchors.verticalCenter: parent.verticalCenter
        implicitWidth: implicitContentWidth + 2 * Theme.medium
        implicitHeight: 28 + Theme.bodyGrowth
        text: root.shownActionText
        font: Theme.bodyStrong
        visible: root.hasAction
        enabled: root.actionText.length > 0
        focusPolicy: Qt.TabFocus
        onClicked: root.actionRequested()

        contentItem: AppText {
            horizontalAlignment: Text.AlignHCenter
            text: action.text
            font: action.font
            color: Theme.window
        }
        background: Rectangle {
            radius: height / 2
            color: Theme.window
            opacity: action.down ? 0.3 : (action.hovered ? 0.22 : 0.12)
        }

        FocusRing {
            radius: 16
            color: Theme.window
        }
    }
}
