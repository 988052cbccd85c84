pragma ComponentBehavior: Bound

import QtQuick
import Kelpa.Appearance
import Kelpa.Controls
import Kelpa.Goals

/// The actions on a goal.
AppMenu {
    id: root

    required property GoalController goals

    property string columnID
    /// The virtual desktops that the goal can be pinned to.
    property var pinChoices: []
    /// Whether the goal can be worked on, if only because it is pinned to a virtual desktop.
    property bool canWork: false
    property bool hasCompletedTodos: false
    /// Whether the keys that act on the selected goal act on this one, and those that move the goal
    /// with the keyboard.
    property bool isSelected: false
    property bool hasKeyboard: false
    /// Why goals cannot be moved; empty where they can.
    property string hindrance

    /// Opens the menu for a goal, beside a place in `owner`.
    function ask(columnID: string, isSelected: bool, hasKeyboard: bool, owner: Item, place: rect): void {
        root.columnID = columnID;
        root.isSelected = isSelected;
        root.hasKeyboard = hasKeyboard;
        // Items that are created while the menu opens would close it again.
        root.pinChoices = root.goals.pinChoices(columnID);
        root.canWork = root.goals.canWorkOn(columnID);
        root.hasCompletedTodos = root.goals.hasCompletedTodos(columnID);
        root.openBeside(owner, place);
    }

    // The item that opens the menu of desktops, the only one within this menu.
    delegate: AppMenuItem {
        symbol: "pin"
        isOffered: root.pinChoices.length > 0
    }
    title: ViewSettings.copy.text(CopyKey.MoreGoalActions)
    onAboutToShow: {
        // While goals sort themselves, these look as if they could not be chosen, and say why the
        // goal stays.
        const isHindered = [-1, 1].some(step => root.goals.hasGoalBeside(root.columnID, step)
                                                && !root.goals.canMoveColumn(root.columnID, step));
        root.hindrance = isHindered ? ViewSettings.copy.text(CopyKey.GoalsSortThemselves) : "";
        earlier.enabled = root.goals.hasGoalBeside(root.columnID, -1);
        later.enabled = root.goals.hasGoalBeside(root.columnID, 1);
        first.enabled = earlier.enabled;
        last.enabled = later.enabled;
        work.enabled = root.goals.hasWorkplace(root.columnID);
    }

    AppMenuItem {
        text: ViewSettings.copy.text(CopyKey.AddWindowsToGoal)
        isOffered: root.goals.areWindowsListed
        symbol: "app-window-plus"
        onTriggered: root.goals.requestWindows(root.columnID)
    }
    AppMenuItem {
        text: ViewSettings.copy.text(CopyKey.OpenChrome)
        isOffered: root.goals.areWindowsListed
        symbol: "globe"
        onTriggered: root.goals.openChrome(root.columnID)
    }
    AppMenuItem {
        text: ViewSettings.copy.text(CopyKey.OpenTerminal)
        isOffered: root.goals.areWindowsListed
        symbol: "terminal"
        onTriggered: root.goals.openTerminal(root.columnID)
    }
    AppMenuItem {
        text: ViewSettings.copy.text(CopyKey.ShowAllWindows)
        isOffered: root.goals.canShowWindows
        symbol: "layers"
        onTriggered: root.goals.showAllWindows(root.columnID)
    }
    AppMenuItem {
        id: work

        text: ViewSettings.copy.text(CopyKey.WorkOnGoal)
        isOffered: root.goals.canWorkOnGoals || root.canWork
        symbol: "focus"
        keys: root.isSelected ? ViewSettings.copy.workKeys() : ""
        onTriggered: root.goals.workOn(root.columnID)
    }
    AppMenuItem {
        text: ViewSettings.copy.text(CopyKey.GoBack)
        isOffered: root.goals.canWorkOnGoals && root.goals.canGoBack
        symbol: "rotate-ccw"
        keys: ViewSettings.copy.goBackKeys()
        onTriggered: root.goals.goBack()
    }
    AppMenu {
        id: pins

        isWithinMenu: true
        title: ViewSettings.copy.text(CopyKey.PinToDesktop)

        Instantiator {
            model: root.pinChoices
            delegate: AppMenuItem {
                required property var modelData

                text: modelData.name
                symbol: modelData.isChosen ? "check" : ""
                isChoice: true
                isChosen: modelData.isChosen
                enabled: modelData.isThere
                onTriggered: root.goals.pinTo(root.columnID, modelData.number)
            }
            onObjectAdded: (index, object) => pins.insertItem(index, object)
            onObjectRemoved: (index, object) => pins.removeItem(object)
        }
    }
    AppMenuItem {
        text: ViewSettings.copy.text(CopyKey.RenameGoal)
        symbol: "pencil"
        keys: root.isSelected ? ViewSettings.copy.renameKeys() : ""
        onTriggered: root.goals.requestRename(root.columnID)
    }
    AppMenuItem {
        text: ViewSettings.copy.text(CopyKey.ExportMenu)
        symbol: "upload"
        onTriggered: root.goals.requestExport(root.columnID)
    }
    AppMenuSeparator {}
    AppMenuItem {
        id: earlier

        hindrance: root.hindrance
        text: ViewSettings.copy.text(CopyKey.MoveGoalLeft)
        symbol: "arrow-left"
        keys: root.hasKeyboard ? ViewSettings.copy.moveLeftKeys() : ""
        onTriggered: root.goals.moveColumn(root.columnID, -1)
    }
    AppMenuItem {
        id: later

        hindrance: root.hindrance
        text: ViewSettings.copy.text(CopyKey.MoveGoalRight)
        symbol: "arrow-right"
        keys: root.hasKeyboard ? ViewSettings.copy.moveRightKeys() : ""
        onTriggered: root.goals.moveColumn(root.columnID, 1)
    }
    AppMenuItem {
        id: first

        hindrance: root.hindrance
        text: ViewSettings.copy.text(CopyKey.MoveToBeginning)
        symbol: "arrow-left-to-line"
        onTriggered: root.goals.moveColumnToEnd(root.columnID, -1)
    }
    AppMenuItem {
        id: last

        hindrance: root.hindrance
        text: ViewSettings.copy.text(CopyKey.MoveToEnd)
        symbol: "arrow-right-to-line"
        onTriggered: root.goals.moveColumnToEnd(root.columnID, 1)
    }
    AppMenuSeparator {
        isOffered: root.hasCompletedTodos
    }
    AppMenuItem {
        text: ViewSettings.copy.text(CopyKey.DeleteCompletedTodos)
        isOffered: root.hasCompletedTodos
        symbol: "list-checks"
        symbolColor: Theme.destructive
        foreground: Theme.destructive
        onTriggered: root.goals.deleteCompletedTodos(root.columnID)
    }
    AppMenuSeparator {}
    AppMenuItem {
        text: ViewSettings.copy.text(CopyKey.DeleteGoal)
        symbol: "trash-2"
        symbolColor: Theme.destructive
        foreground: Theme.destructive
        onTriggered: root.goals.deleteGoal(root.columnID)
    }
}
