pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Templates as T
import Kelpa

/// Moves a window to another column, or to a new goal.
AppMenu {
    id: root

    required property BoardController board

    property real windowID
    property string columnID
    /// Whether it has its items; to be set before it is shown.
    property bool isPrepared: false

    title: root.board.copy.text(CopyKey.MoveToGoal)

    readonly property TitleSheet newGoalSheet: TitleSheet {
        id: sheet

        property real windowID

        board: root.board
        title: root.board.copy.text(CopyKey.CreateGoalTitle)
        explanation: root.board.copy.text(CopyKey.CreateGoalText)
        placeholder: root.board.copy.text(CopyKey.CreateGoalPlaceholder)
        fieldLabel: root.board.copy.text(CopyKey.GoalName)
        confirmLabel: root.board.copy.text(CopyKey.Create)
        onConfirmed: title => root.board.createGoalForWindow(title, sheet.windowID)
    }

    T.MenuItem {
        id: heading

        implicitWidth: implicitContentWidth + leftPadding + rightPadding
        implicitHeight: 28
        leftPadding: 10
        rightPadding: 14
        enabled: false
        text: root.title
        contentItem: AppText {
            text: heading.text
            font: Theme.bodyStrong
        }
    }
    // A board may have many goals. Items that come while the menu opens would close it again.
    Instantiator {
        active: root.isPrepared
        model: root.board.moveTargets
        delegate: AppMenuItem {
            id: item

            required property string columnID
            required property string title
            required property string accent
            required property bool isUnassigned

            readonly property bool isCurrent: item.columnID === root.columnID

            text: item.title
            symbol: item.isCurrent ? "check" : "circle"
            symbolColor: item.isUnassigned ? Theme.secondaryText : Theme.accentColor(item.accent)
            Accessible.checkable: true
            Accessible.checked: item.isCurrent
            onTriggered: root.board.moveWindow(root.windowID, item.columnID)
        }
        // Below the heading.
        onObjectAdded: (index, object) => root.insertItem(index + 1, object)
        onObjectRemoved: (index, object) => root.removeItem(object)
    }
    AppMenuItem {
        text: root.board.copy.text(CopyKey.NewGoal)
        symbol: "plus"
        onTriggered: {
            sheet.windowID = root.windowID;
            // Its card may go while the sheet is open.
            sheet.parent = root.parent.T.Overlay.overlay;
            sheet.ask("");
        }
    }
}
