pragma ComponentBehavior: Bound

import QtQuick
import Kelpa.Appearance
import Kelpa.Scene
import Kelpa.Controls

/// A goal's title in one line. A title wider than its place scrolls past slowly, over and over,
/// while it can be seen.
Item {
    id: root

    required property string text
    property bool isEmphasized: false
    /// False for a title that must not move for now.
    property bool isAllowedToMove: true
    /// Whether it is in the part of the board that is on the screen.
    property bool isOnScreen: true
    property font font: root.isEmphasized ? Theme.captionEmphasized : Theme.captionStrong
    property color color: Theme.text
    /// The colour below the title: letters that come and go fade into it.
    property color ground: Theme.column

    property MarqueeBelt belt: null

    readonly property bool isMoving: root.belt?.isMoving ?? false
    readonly property bool isTruncated: still.visible && still.truncated
    /// Whether the title is never seen as a whole.
    readonly property bool isPartlySeen: root.isTruncated || root.isMoving
    readonly property real offset: root.belt?.offset ?? 0
    readonly property MarqueeMeasure measure: MarqueeMeasure {
        text: root.text
        font: root.font
        availableWidth: root.width
    }

    implicitWidth: root.measure.textWidth
    implicitHeight: still.implicitHeight
    clip: root.isMoving

    AppText {
        id: still

        width: root.width
        height: root.height
        text: root.text
        font: root.font
        color: root.color
        visible: !root.isMoving
    }
    // Most titles fit.
    OptionalItem {
        isWanted: root.measure.isWide && root.isAllowedToMove && !ViewSettings.isReducingMotion
        onItemChanged: root.belt = item as MarqueeBelt

        MarqueeBelt {
            height: root.height
            text: root.text
            font: root.font
            color: root.color
            measure: root.measure
            isOnScreen: root.isOnScreen
        }
    }
    // At the end of the title and, once it has left its place, at its beginning.
    OptionalItem {
        isWanted: root.isMoving

        Item {
            anchors.fill: root

            Repeater {
                model: 2
                delegate: Rectangle {
                    id: fade

                    required property int index

                    readonly property bool isAtEnd: fade.index === 0
                    readonly property bool isAtRight: fade.isAtEnd !== root.measure.isRightToLeft

                    x: fade.isAtRight ? root.width - width : 0
                    width: Math.min(Theme.medium, root.width / 3)
                    height: root.height
                    visible: fade.isAtEnd || root.offset < 0
                    gradient: Gradient {
                        orientation: Gradient.Horizontal

                        GradientStop {
                            position: 0
                            color: Qt.alpha(root.ground, fade.isAtRight ? 0 : 1)
                        }
                        GradientStop {
                            position: 1
                            color: Qt.alpha(root.ground, fade.isAtRight ? 1 : 0)
                        }
                    }
                }
            }
        }
    }
}
