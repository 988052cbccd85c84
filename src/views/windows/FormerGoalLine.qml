pragma ComponentBehavior: Bound

import QtQuick
import Kelpa.Appearance
import Kelpa.Controls

/// Says on a card which goal its window may have been in. A click puts it back there, and the cross says
/// that it is another window. The goals may take two lines: the beginning alone would often name none.
Item {
    id: root

    /// The titles of the goals.
    required property list<string> goals

    readonly property bool hasKeyboard: back.visualFocus || other.visualFocus

    signal accepted
    signal declined

    implicitHeight: Math.max(24 + Theme.captionGrowth, back.implicitContentHeight + Theme.small)

    Rectangle {
        anchors.fill: parent
        radius: 5
        color: Theme.card
        border.width: 1
        border.color: Theme.outline
    }
    PressButton {
        id: back

        anchors.left: parent.left
        anchors.right: other.left
        anchors.top: parent.top
        anchors.bottom: parent.bottom
        leftPadding: Theme.tiny
        rightPadding: 0
        font: Theme.captionStrong
        text: ViewSettings.copy.wasIn(root.goals)
        Accessible.description: ViewSettings.copy.text(CopyKey.PutWindowBack)
        onClicked: root.accepted()

        contentItem: SymbolLabel {
            mostLines: 2
            symbol: "undo-2"
            symbolColor: Theme.accentText
            text: back.text
            color: Theme.accentText
            font: back.font
            spacing: Theme.tiny
        }
        background: Rectangle {
            radius: 5
            color: back.down ? Theme.press : back.hovered ? Theme.hover : "transparent"
        }

        FocusRing {
            radius: 5
            margin: 0
        }
        HoverTip {
            text: back.text + "\n" + back.Accessible.description
        }
    }
    PressButton {
        id: other

        anchors.right: parent.right
        anchors.top: parent.top
        anchors.bottom: parent.bottom
        implicitWidth: 24
        text: ViewSettings.copy.text(CopyKey.OtherWindow)
        onClicked: root.declined()

        contentItem: AppIcon {
            name: "x"
            size: 14
            color: other.hovered ? Theme.text : Theme.secondaryText
        }
        background: Rectangle {
            radius: 5
            color: other.down ? Theme.press : other.hovered ? Theme.hover : "transparent"
        }

        FocusRing {
            radius: 5
            margin: 0
        }
        HoverTip {}
    }
}
