pragma ComponentBehavior: Bound

import QtQuick
import Kelpa.Appearance
import Kelpa.Controls
import Kelpa.Windows

/// A window that can be chosen, or that is in the goal already. A click chooses it.
Item {
    id: root

    required property WindowController windows
    required property real windowID
    required property string ownerName
    required property string title
    required property string location
    required property bool isInGoal
    required property bool isChosen
    required property real previewRevision

    function toggle(): void {
        root.windows.picker.toggle(root.windowID);
    }

    Accessible.role: Accessible.CheckBox
    Accessible.name: ViewSettings.copy.windowName(root.ownerName, root.title)
    Accessible.description: root.location
    Accessible.focusable: true
    Accessible.checkable: !root.isInGoal
    Accessible.checked: root.isChosen || root.isInGoal
    // The state that a custom item can report for a box that cannot be changed.
    Accessible.readOnly: root.isInGoal
    Accessible.onPressAction: root.toggle()
    Accessible.onToggleAction: root.toggle()

    Rectangle {
        anchors.fill: parent
        radius: Theme.controlRadius
        color: root.isChosen ? Theme.accepting
               : hover.hovered && !root.isInGoal ? Theme.hover : "transparent"
    }
    HoverHandler {
        id: hover
    }
    MouseArea {
        anchors.fill: parent
        onClicked: root.toggle()
    }
    CheckMark {
        id: mark

        x: Theme.small
        anchors.verticalCenter: parent.verticalCenter
        isChosen: root.isChosen
        isSettled: root.isInGoal
    }
    Rectangle {
        id: picture

        anchors.left: mark.right
        anchors.leftMargin: 10
        anchors.verticalCenter: parent.verticalCenter
        width: 72
        height: 41
        radius: 5
        color: Theme.previewGround
        opacity: root.isInGoal ? 0.6 : 1

        WindowPreview {
            anchors.fill: parent
            radius: parent.radius
            windows: root.windows
            windowID: root.windowID
            revision: root.previewRevision
            visible: root.previewRevision !== 0
        }
        // A white window would have no edge on the sheet.
        Rectangle {
            anchors.fill: parent
            radius: parent.radius
            color: "transparent"
            border.width: 1
            border.color: Theme.outline
            visible: root.previewRevision !== 0
        }
        AppIcon {
            anchors.centerIn: parent
            name: "app-window"
            size: 20
            visible: root.previewRevision === 0
        }
    }
    Column {
        anchors.left: picture.right
        anchors.leftMargin: 10
        anchors.right: parent.right
        anchors.rightMargin: Theme.small
        anchors.verticalCenter: parent.verticalCenter

        AppText {
            id: titleText

            width: parent.width
            text: root.windows.titleLengths(root.title)
            color: root.isInGoal ? Theme.secondaryText : Theme.text
        }
        AppText {
            id: ownerText

            width: parent.width
            text: root.ownerName
            font: Theme.caption
            color: Theme.secondaryText
        }
        AppText {
            id: locationText

            width: parent.width
            text: root.location
            font: Theme.caption
            color: Theme.secondaryText
        }
    }
    FocusRing {
        radius: Theme.controlRadius
        margin: 0
    }
    HoverTip {
        text: root.title + "\n" + root.ownerName + "\n" + root.location
        isHovered: hover.hovered && (titleText.truncated || ownerText.truncated
                                     || titleText.implicitWidth > titleText.width
                                     || locationText.truncated)
    }
}
