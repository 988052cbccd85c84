pragma ComponentBehavior: Bound

import QtQuick
import Kelpa.Appearance
import Kelpa.Goals
import Kelpa.Windows
import Kelpa.Board

/// The sheets over the board, each created on first use.
Item {
    id: root

    required property BoardController board

    property NewGoalSheet createSheet: null
    property TitleSheet renameSheet: null
    property WindowSelectionSheet selectionSheet: null
    property UnsavedChangesSheet unsavedSheet: null
    property string renamedColumnID

    /// The window that was not to close may do so now.
    signal closingConfirmed

    function askForGoal(): void {
        if (root.createSheet === null)
            root.createSheet = createSheetType.createObject(root) as NewGoalSheet;
        root.createSheet.ask("");
    }
    function askForName(columnID: string): void {
        if (root.renameSheet === null)
            root.renameSheet = renameSheetType.createObject(root) as TitleSheet;
        root.renamedColumnID = columnID;
        root.renameSheet.explanation = root.board.goals.goalTitleNotice(columnID);
        root.renameSheet.ask(root.board.goals.goalTitle(columnID));
    }
    /// Whether the window may close; asks where changes would be lost.
    function mayClose(): bool {
        if (root.board.trouble.mayClose())
            return true;
        if (root.unsavedSheet === null)
            root.unsavedSheet = unsavedSheetType.createObject(root) as UnsavedChangesSheet;
        root.unsavedSheet.ask();
        return false;
    }

    Component {
        id: createSheetType

        NewGoalSheet {
            goals: root.board.goals
            onConfirmed: title => root.board.goals.createGoal(title)
        }
    }
    Component {
        id: renameSheetType

        TitleSheet {
            goals: root.board.goals
            title: ViewSettings.copy.text(CopyKey.RenameGoal)
            explanation: ""
            placeholder: ViewSettings.copy.text(CopyKey.EnterGoalName)
            fieldLabel: ViewSettings.copy.text(CopyKey.GoalName)
            confirmLabel: ViewSettings.copy.text(CopyKey.Save)
            onConfirmed: title => root.board.goals.renameGoal(root.renamedColumnID, title)

            Connections {
                target: root.board.targets

                // A goal that is deleted meanwhile takes its sheet with it.
                function onRowsRemoved(): void {
                    if (!root.board.goals.hasGoal(root.renamedColumnID))
                        root.renameSheet.close();
                }
            }
        }
    }
    Component {
        id: selectionSheetType

        WindowSelectionSheet {
            windows: root.board.windows
        }
    }
    Component {
        id: unsavedSheetType

        UnsavedChangesSheet {
            trouble: root.board.trouble
            onClosingConfirmed: root.closingConfirmed()
        }
    }
    Connections {
        target: root.board.goals

        function onRenameRequested(columnID: string): void {
            root.askForName(columnID);
        }
    }
    Connections {
        target: root.board.windows.picker

        function onRequestChanged(): void {
            // From then on the sheet follows the requests by itself.
            if (root.selectionSheet !== null || !root.board.windows.picker.isOpen)
                return;
            root.selectionSheet = selectionSheetType.createObject(root) as WindowSelectionSheet;
            root.selectionSheet.followRequest();
        }
    }
}
