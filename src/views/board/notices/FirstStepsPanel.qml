pragma ComponentBehavior: Bound

import QtQuick
import Kelpa.Appearance
import Kelpa.Controls
import Kelpa.Board

/// Teaches the board on the board itself: what to type, what to drag, and the key that leads back. Its
/// field is the place to type in.
Rectangle {
    id: root

    required property FirstSteps steps

    /// Whether there is a goal that a window can be dragged to.
    readonly property bool hasGoal: root.steps.hasGoal && !root.steps.needsGoalAgain
    readonly property int stepCount: 1 + (root.steps.isWindowOffered ? 1 : 0)
                                     + (root.steps.isReturnOffered ? 1 : 0)
    readonly property real stepsWidth: root.width - 2 * Theme.large - closeButton.width
                                       - root.stepCount * Theme.huge
    /// The step with the field shows all of the example in it.
    readonly property real firstWidth: Math.max(
        root.stepsWidth / root.stepCount,
        root.hasGoal ? 0 : Math.min(root.stepsWidth / 2, root.exampleWidth))
    readonly property real exampleWidth: first.textLeft + Math.ceil(example.advanceWidth) + 1
                                         + field.leftPadding + field.rightPadding
    readonly property real otherWidth: (root.stepsWidth - root.firstWidth)
                                       / Math.max(1, root.stepCount - 1)

    /// The keyboard goes back to the board.
    signal boardRequested

    function createGoal(): void {
        if (field.text.trim().length === 0)
            return;
        root.steps.createGoal(field.text);
        field.clear();
        root.boardRequested();
    }

    implicitHeight: row.implicitHeight + 2 * Theme.large
    radius: Theme.columnRadius
    color: Theme.card
    border.width: 1
    border.color: Theme.cardOutline
    Accessible.role: Accessible.Grouping
    Accessible.ignored: !visible
    Accessible.name: ViewSettings.copy.text(CopyKey.FirstSteps)

    Connections {
        target: root.steps

        function onGoalRequested(): void {
            if (!root.hasGoal)
                field.forceActiveFocus();
        }
    }
    TextMetrics {
        id: example

        font: field.font
        text: field.placeholderText
    }
    Row {
        id: row

        x: Theme.large
        y: Theme.large
        spacing: Theme.huge

        FirstStep {
            id: first

            width: root.firstWidth
            number: 1
            text: ViewSettings.copy.text(CopyKey.FirstStepGoal)
            isDone: root.hasGoal
            isNext: !root.hasGoal

            TextInputField {
                id: field

                width: parent?.width ?? 0
                label: ViewSettings.copy.text(CopyKey.FirstStepGoal)
                placeholderText: ViewSettings.copy.text(CopyKey.CreateGoalPlaceholder)
                onCommitted: root.createGoal()
                onCancelled: root.boardRequested()
            }
        }
        FirstStep {
            width: root.otherWidth
            number: 2
            text: ViewSettings.copy.text(CopyKey.FirstStepWindow)
            isDone: root.steps.hasAssignment
            isNext: root.hasGoal && !root.steps.hasAssignment
            visible: root.steps.isWindowOffered
        }
        FirstStep {
            width: root.otherWidth
            number: root.stepCount
            text: ViewSettings.copy.text(CopyKey.DoubleTapHint)
            isDone: root.steps.hasReturned
            isNext: root.hasGoal
                    && (root.steps.hasAssignment || !root.steps.isWindowOffered)
                    && !root.steps.hasReturned
            visible: root.steps.isReturnOffered
        }
    }
    IconButton {
        id: closeButton

        anchors.right: parent.right
        anchors.rightMargin: Theme.small
        anchors.top: parent.top
        anchors.topMargin: Theme.small
        symbol: "x"
        size: 28
        text: ViewSettings.copy.text(CopyKey.GotIt)
        onClicked: root.steps.dismiss()
    }
}
