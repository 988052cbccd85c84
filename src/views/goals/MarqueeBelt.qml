pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Window
import Kelpa.Appearance
import Kelpa.Scene
import Kelpa.Controls

/// A title and its repeated start, scrolling past in the order in which it is read: when the first
/// has gone, the second is in its place.
Row {
    id: root

    required property string text
    required property font font
    required property color color
    required property MarqueeMeasure measure
    /// Whether it is in the part of the board that is on the screen.
    required property bool isOnScreen

    /// How far the title has moved from its place, below 0: to the left or, for a title that is read
    /// from right to left, to the right.
    property real offset: 0

    readonly property bool isMoving: pass.running

    function startAgain(): void {
        if (pass.running)
            pass.restart();
    }

    // Starts again even when the new title is as wide as the one before.
    onTextChanged: root.startAgain()

    x: root.measure.isRightToLeft ? root.measure.availableWidth - root.width - root.offset
                                  : root.offset
    layoutDirection: root.measure.isRightToLeft ? Qt.RightToLeft : Qt.LeftToRight
    spacing: root.measure.gap
    visible: root.isMoving

    Repeater {
        model: root.isMoving ? 2 : 0
        delegate: AppText {
            width: root.measure.textWidth
            height: root.height
            elide: Text.ElideNone
            text: root.text
            font: root.font
            color: root.color
        }
    }
    NumberAnimation {
        id: pass

        target: root
        property: "offset"
        from: 0
        to: -root.measure.travel
        // An animation of no duration would end before its duration is known.
        duration: Math.max(root.measure.passTime, 1)
        loops: Animation.Infinite
        // Runs only while the title can be seen.
        running: root.parent !== null && root.parent.visible && root.isOnScreen
                 && ViewSettings.isSeen
                 && root.Window.window !== null
                 && root.Window.visibility !== Window.Hidden
                 && root.Window.visibility !== Window.Minimized
        onToChanged: root.startAgain()
        onDurationChanged: root.startAgain()
    }
}
