pragma ComponentBehavior: Bound

import QtQuick
import Kelpa.Appearance
import Kelpa.Board

/// The place of the first steps above the board, which closes up where a step was done, and at last
/// behind all of them.
Item {
    id: root

    required property FirstSteps steps

    /// Whether a step was done, or none is left: before, nobody has seen the place in another height.
    readonly property bool isMoving: root.steps.hasGoal || !root.steps.isOpen

    /// The keyboard goes back to the board.
    signal boardRequested

    height: root.steps.isOpen ? panels.height + Theme.large : 0
    clip: root.isMoving

    Behavior on height {
        enabled: root.isMoving

        NumberAnimation {
            duration: Theme.mediumTime
            easing.type: Easing.OutCubic
        }
    }

    Column {
        id: panels

        width: parent.width

        Repeater {
            model: root.steps.isOpen ? 1 : 0
            delegate: FirstStepsPanel {
                width: panels.width
                steps: root.steps
                onBoardRequested: root.boardRequested()
            }
        }
    }
}
