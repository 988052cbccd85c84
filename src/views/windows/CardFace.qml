pragma ComponentBehavior: Bound

import QtQuick
import Kelpa.Appearance
import Kelpa.Windows

/// What a card shows of its window: the picture, the caption and, where it may have been in a goal, the
/// line that says so.
Item {
    id: root

    required property WindowController windows
    required property real windowID
    required property string ownerName
    required property string title
    required property string applicationID
    required property real iconRevision
    required property real previewRevision
    required property string previewMessage
    required property list<string> formerGoals
    required property string virtualDesktop
    required property bool isMinimized
    required property bool isOnScreen
    required property bool isAwaitingAnswer
    /// The colour of the card.
    required property color ground
    /// The rotation with which round corners are drawn: see `WindowCard`.
    required property real tilt

    readonly property bool isElided: caption.isElided
    readonly property alias isMessageCut: preview.isMessageCut
    /// Whether a person reached the line about its former goal by keyboard.
    property bool hasKeyboard: false
    /// What the marks in the caption mean.
    readonly property list<string> marks: [
        root.isAwaitingAnswer ? ViewSettings.copy.text(CopyKey.WindowAwaitsAnswer) : "",
        root.virtualDesktop !== "" ? ViewSettings.copy.onVirtualDesktop(root.virtualDesktop) : ""
    ].filter(each => each !== "")
    /// What else there is to read.
    readonly property list<string> lines: [
        root.isMinimized ? ViewSettings.copy.text(CopyKey.PreviewMinimized) : "",
        root.formerGoals.length > 0 ? ViewSettings.copy.wasIn(root.formerGoals) : ""
    ].filter(each => each !== "")

    signal menuRequested(place: rect)

    CardPreview {
        id: preview

        anchors.left: parent.left
        anchors.right: parent.right
        anchors.top: parent.top
        anchors.margins: Theme.small
        windows: root.windows
        windowID: root.windowID
        revision: root.previewRevision
        message: root.previewMessage
        cardGround: root.ground
        tilt: root.tilt
    }
    // Few cards have it.
    Repeater {
        model: root.formerGoals.length > 0 ? 1 : 0
        delegate: FormerGoalLine {
            id: formerGoalLine

            anchors.horizontalCenter: preview.horizontalCenter
            anchors.bottom: preview.bottom
            width: preview.shownWidth
            goals: root.formerGoals
            onHasKeyboardChanged: root.hasKeyboard = formerGoalLine.hasKeyboard
            onAccepted: if (!root.windows.memory.putBack(root.windowID))
                root.menuRequested(Qt.rect(preview.x, preview.y, 0, preview.height))
            onDeclined: root.windows.memory.decline(root.windowID)
            Component.onDestruction: root.hasKeyboard = false
        }
    }
    CardCaption {
        id: caption

        anchors.left: parent.left
        anchors.right: parent.right
        anchors.bottom: parent.bottom
        anchors.leftMargin: Theme.medium
        anchors.rightMargin: Theme.medium
        anchors.bottomMargin: Theme.small
        windows: root.windows
        windowID: root.windowID
        applicationID: root.applicationID
        iconRevision: root.iconRevision
        previewRevision: root.previewRevision
        ownerName: root.ownerName
        title: root.title
        isAway: root.isMinimized || !root.isOnScreen
        isMinimized: root.isMinimized
        virtualDesktop: root.virtualDesktop
        isAwaitingAnswer: root.isAwaitingAnswer
    }
}
