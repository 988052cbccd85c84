pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Templates as T
import Kelpa.Appearance
import Kelpa.Controls
import Kelpa.Goals
import Kelpa.Windows

/// Moves a window to another column, or to a new goal; first come the goals that it may have been in.
AppMenu {
    id: root

    required property WindowController windows
    required property GoalController goals

    property real windowID
    property string columnID
    /// The goals that the window may have been in and, if there are any, that it is another window.
    property var formerEntries: []

    /// Opens the menu for a window in a column, beside a place in `owner`.
    function ask(windowID: real, columnID: string, owner: Item, place: rect): void {
        root.windowID = windowID;
        root.columnID = columnID;
        const formerGoals = root.windows.memory.formerGoals(windowID);
        root.formerEntries = formerGoals.length > 0 ? formerGoals.concat({columnID: ""}) : [];
        // Items that are created while the menu opens would close it again.
        targets.active = true;
        root.openBeside(owner, place);
    }

    title: ViewSettings.copy.text(CopyKey.MoveToGoal)

    readonly property NewGoalSheet newGoalSheet: NewGoalSheet {
        id: sheet

        property real windowID

        goals: root.goals
        onConfirmed: title => root.windows.createGoalForWindow(title, sheet.windowID)
    }

    T.MenuItem {
        id: heading

        implicitWidth: implicitContentWidth + leftPadding + rightPadding
        implicitHeight: 28 + Theme.bodyGrowth
        leftPadding: 10
        rightPadding: 14
        enabled: false
        focusPolicy: Qt.NoFocus
        Accessible.name: heading.text
        Accessible.focusable: false
        text: root.title
        contentItem: AppText {
            text: heading.text
            font: Theme.bodyStrong
        }
    }
    Instantiator {
        model: root.formerEntries
        delegate: AppMenuItem {
            required property var modelData

            readonly property bool isRefusal: modelData.columnID === ""

            text: isRefusal ? ViewSettings.copy.text(CopyKey.OtherWindow)
                            : ViewSettings.copy.wasIn([modelData.title])
            symbol: isRefusal ? "x" : "undo-2"
            onTriggered: isRefusal ? root.windows.memory.decline(root.windowID)
                                   : root.windows.memory.putBackInto(root.windowID,
                                                                     modelData.columnID)
        }
        onObjectAdded: (index, object) => root.insertItem(index, object)
        onObjectRemoved: (index, object) => root.removeItem(object)
    }
    MoveTargetItems {
        id: targets

        goals: root.goals
        menu: root
        // Placed below the heading.
        place: root.formerEntries.length + 1
        delegate: AppMenuItem {
            id: item

            required property string columnID
            required property string title
            required property string accent
            required property bool isUnassigned

            readonly property bool isCurrent: item.columnID === root.columnID

            text: item.title
            symbol: item.isCurrent ? "check" : "circle"
            symbolColor: item.isUnassigned ? Theme.secondaryText : Theme.accentEdge(item.accent)
            isChoice: true
            isChosen: item.isCurrent
            onTriggered: root.windows.moveWindow(root.windowID, item.columnID)
        }
    }
    AppMenuItem {
        text: ViewSettings.copy.text(CopyKey.NewGoal)
        symbol: "plus"
        onTriggered: {
            sheet.windowID = root.windowID;
            // Its card may go while the sheet is open.
            sheet.parent = root.parent.T.Overlay.overlay;
            sheet.ask("");
        }
    }
}
