pragma ComponentBehavior: Bound

import QtQuick
import Kelpa.Appearance
import Kelpa.Goals
import Kelpa.Windows
import Kelpa.Board

/// The sheets over the board, loaded by its file when one opens; each is created on first use.
Item {
    id: root

    required property BoardController board

    property NewGoalSheet createSheet: null
    property TitleSheet renameSheet: null
    property WindowSelectionSheet selectionSheet: null
    property AbsentWindowsSheet absentSheet: null
    property UnsavedChangesSheet unsavedSheet: null
    property KeysSheet keysSheet: null
    property string renamedColumnID

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
    /// Asks whether changes may be lost and, where they may, ends Kelpa.
    function askToClose(): void {
        if (root.unsavedSheet === null)
            root.unsavedSheet = unsavedSheetType.createObject(root) as UnsavedChangesSheet;
        root.unsavedSheet.ask();
    }
    /// From then on the sheet follows the requests by itself.
    function selectWindows(): void {
        if (root.selectionSheet !== null)
            return;
        root.selectionSheet = selectionSheetType.createObject(root) as WindowSelectionSheet;
        root.selectionSheet.followRequest();
    }
    /// From then on the sheet follows the requests by itself.
    function showAbsentWindows(): void {
        if (root.absentSheet !== null)
            return;
        root.absentSheet = absentSheetType.createObject(root) as AbsentWindowsSheet;
        root.absentSheet.followRequest();
    }
    function showKeys(): void {
        if (root.keysSheet === null)
            root.keysSheet = keysSheetType.createObject(root) as KeysSheet;
        root.keysSheet.open();
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
        id: absentSheetType

        AbsentWindowsSheet {
            memory: root.board.windows.memory
        }
    }
    Component {
        id: unsavedSheetType

        UnsavedChangesSheet {
            trouble: root.board.trouble
            onSaved: root.board.presence.goOn()
            onClosingConfirmed: root.board.presence.quit()
            onGivenUp: root.board.presence.stay()
        }
    }
    Component {
        id: keysSheetType

        KeysSheet {
            isDoubleTapOffered: root.board.isDoubleTapOffered
            isNewTodoKeyKnown: root.board.presence.shortcuts.isNewTodoKeyKnown
            canWorkOnGoals: root.board.goals.canWorkOnGoals
            canPinGoals: root.board.goals.canPinGoals
        }
    }
}
