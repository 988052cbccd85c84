pragma ComponentBehavior: Bound

import QtQuick
import Kelpa.Appearance
import Kelpa.Controls

/// The marks at the end of a card's caption. The card says in words what they mean.
Row {
    id: root

    required property string virtualDesktop
    required property bool isMinimized
    required property bool isAwaitingAnswer
    /// Points for all marks together.
    required property real room

    readonly property real roomForName: root.room - 2 * Theme.tiny
                                        - (root.isAwaitingAnswer ? 3 : 2) * root.spacing
                                        - (root.isMinimized ? 14 + root.spacing : 0)
                                        - (root.isAwaitingAnswer ? 28 : 14)

    spacing: Theme.tiny

    // Few cards have these.
    Repeater {
        model: root.isAwaitingAnswer ? 1 : 0
        delegate: AppIcon {
            name: "message-question"
            size: 14
            color: Theme.warning
        }
    }
    Repeater {
        model: root.virtualDesktop !== "" ? 1 : 0
        delegate: Rectangle {
            width: name.width + 2 * Theme.tiny
            height: 14 + Theme.captionGrowth
            radius: 4
            color: "transparent"
            border.width: 1
            border.color: Theme.fieldOutline

            AppText {
                id: name

                anchors.centerIn: parent
                // Many names differ in a number at their end.
                readonly property string number: /\d*$/.exec(root.virtualDesktop)[0]

                width: Math.min(implicitWidth, root.roomForName)
                text: name.number !== "" && wholeName.advanceWidth > root.roomForName
                      ? name.number : root.virtualDesktop
                font: Theme.caption
                color: Theme.secondaryText

                TextMetrics {
                    id: wholeName

                    font: name.font
                    text: root.virtualDesktop
                }
            }
        }
    }
    AppIcon {
        name: "minus"
        size: 14
        visible: root.isMinimized
    }
    AppIcon {
        name: "arrow-up-right"
        size: 14
    }
}
