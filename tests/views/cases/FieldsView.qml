import QtQuick
import Kelpa.Controls
import Kelpa.Goals
import Kelpa.Windows
import Kelpa.Board

/// Every kind of field: those of the board, a search, and those of the sheets.
Item {
    id: root

    readonly property alias goalBoard: board
    readonly property alias search: search
    readonly property alias sheet: sheet
    readonly property alias picker: picker

    width: 1300
    height: 700

    GoalBoard {
        id: board

        anchors.fill: parent
        board: world.board
    }
    Connections {
        target: world.board.goals

        function onRenameRequested(columnID: string): void {
            sheet.ask(world.board.goals.goalTitle(columnID));
        }
    }
    SearchField {
        id: search

        label: "Search"
        clearLabel: "Clear"
    }
    TitleSheet {
        id: sheet

        goals: world.board.goals
        title: "Create a goal"
        explanation: ""
        placeholder: ""
        fieldLabel: "Name"
        confirmLabel: "Create"
    }
    WindowSelectionSheet {
        id: picker

        windows: world.board.windows
    }
}
