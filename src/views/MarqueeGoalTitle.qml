pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Window
import Kelpa

/// A goal's title in one line. One that is too wide for its place passes by slowly, over and over,
/// while it can be seen.
Item {
    id: root

    required property string text
    property bool isEmphasized: false
    /// False for a title that is to stay still for now.
    property bool isAllowedToMove: true
    /// Whether it stands in the part of the board that is on the screen.
    property bool isOnScreen: true
    property font font: root.isEmphasized ? Theme.captionEmphasized : Theme.captionStrong
    property color color: Theme.text

    readonly property bool isMoving: pass.running
    readonly property bool isTruncated: still.visible && still.truncated
    readonly property real offset: belt.x
    readonly property MarqueeMeasure measure: MarqueeMeasure {
        text: root.text
        font: root.font
        availableWidth: root.width
    }

    function startAgain(): void {
        if (pass.running)
            pass.restart();
    }

    // Also when the new one is as wide as the one before.
    onTextChanged: root.startAgain()

    implicitWidth: root.measure.textWidth
    implicitHeight: still.implicitHeight
    clip: root.isMoving

    AppText {
        id: still

        anchors.fill: parent
        text: root.text
        font: root.font
        color: root.color
        visible: !root.isMoving
    }
    // The title and its repeated start: when the first has gone, the second stands in its place.
    Row {
        id: belt

        height: parent.height
        spacing: root.measure.gap
        visible: root.isMoving

        Repeater {
            model: root.isMoving ? 2 : 0
            delegate: AppText {
                width: root.measure.textWidth
                height: belt.height
                elide: Text.ElideNone
                text: root.text
                font: root.font
                color: root.color
            }
        }
    }
    NumberAnimation {
        id: pass

        target: belt
        property: "x"
        from: 0
        to: -root.measure.travel
        // One that lasts no time would end before it knows how long it lasts.
        duration: Math.max(root.measure.passTime, 1)
        loops: Animation.Infinite
        // What nobody can see costs nothing.
        running: root.measure.isWide && root.isAllowedToMove && !ViewSettings.isReducingMotion
                 && root.visible && root.isOnScreen && ViewSettings.isSeen
                 && root.Window.window !== null
                 && root.Window.visibility !== Window.Hidden
                 && root.Window.visibility !== Window.Minimized
        onToChanged: root.startAgain()
        onDurationChanged: root.startAgain()
    }
}
