pragma ComponentBehavior: Bound

import QtQuick
import Kelpa

/// The last card of the board, which makes another goal.
PressButton {
    id: root

    required property BoardController board

    // Two of them, with the space between, are as high as a goal's card.
    implicitHeight: (Theme.collapsedCardHeight - Theme.targetSpacing) / 2
    text: root.board.copy.text(CopyKey.AddGoal)
    Accessible.description: root.board.noGoalsHint

    contentItem: Item {
        Column {
            anchors.centerIn: parent
            spacing: Theme.small

            AppIcon {
                anchors.horizontalCenter: parent.horizontalCenter
                name: "circle-plus"
                size: 24
                color: root.hovered ? Theme.accentText : Theme.secondaryText
            }
            AppText {
                anchors.horizontalCenter: parent.horizontalCenter
                width: Math.min(implicitWidth, root.width - 2 * Theme.medium)
                text: root.text
                font: Theme.bodyStrong
                color: root.hovered ? Theme.accentText : Theme.secondaryText
            }
            AppText {
                anchors.horizontalCenter: parent.horizontalCenter
                width: root.width - 2 * Theme.medium
                horizontalAlignment: Text.AlignHCenter
                text: root.board.noGoalsHint
                color: Theme.secondaryText
                wrapMode: Text.Wrap
                visible: text.length > 0
                Accessible.ignored: !visible
                Accessible.role: Accessible.StaticText
                Accessible.name: text
            }
        }
    }
    background: Rectangle {
        radius: Theme.columnRadius
        color: root.down ? Theme.press : root.hovered ? Theme.hover : "transparent"
        border.width: 1
        border.color: root.hovered ? Theme.accentText : Theme.outline
    }

    FocusRing {
        radius: Theme.columnRadius + 2
    }
}
