pragma ComponentBehavior: Bound

import QtQuick
import Kelpa.Appearance
import Kelpa.Scene
import Kelpa.Controls
import Kelpa.Goals

/// The last card of the board, which creates another goal. A goal that is dropped on it moves
/// behind the others.
PressButton {
    id: root

    required property GoalController goals
    required property DropController drops
    required property BoardDragSource dragSource

    // Two such cards, with the space between, are as high as a goal's card.
    implicitHeight: (Theme.collapsedCardHeight - Theme.targetSpacing) / 2
    text: ViewSettings.copy.text(CopyKey.AddGoal)
    Accessible.description: root.goals.noGoalsHint

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
                text: root.goals.noGoalsHint
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
        color: dropArea.wouldChangeBoard ? Theme.accepting
               : root.down ? Theme.press : root.hovered ? Theme.hover : "transparent"
        border.width: dropArea.wouldChangeBoard ? 2 : 1
        border.color: dropArea.wouldChangeBoard ? Theme.focus
                      : root.hovered ? Theme.accentText : Theme.outline
    }

    DropArea {
        id: dropArea

        /// Whether a drop would move the goal.
        property bool wouldChangeBoard: false

        function leave(): void {
            dropArea.wouldChangeBoard = false;
            root.dragSource.leaveDestination(dropArea);
        }

        anchors.fill: parent
        keys: ["text/plain"]
        onEntered: drag => {
            drag.accepted = root.dragSource.isDragging && root.drops.canDropAtEnd(drag.text);
            dropArea.wouldChangeBoard = drag.accepted && root.drops.wouldDropAtEndMove(drag.text);
            if (dropArea.wouldChangeBoard)
                root.dragSource.nameDestination(
                        dropArea, ViewSettings.copy.dropInto(ViewSettings.copy.text(CopyKey.MoveToEnd)));
        }
        onExited: dropArea.leave()
        onDropped: drop => {
            dropArea.leave();
            drop.accepted = root.dragSource.isDragging && root.drops.dropAtEnd(drop.text);
        }
    }

    FocusRing {
        radius: Theme.columnRadius + 2
    }
}
