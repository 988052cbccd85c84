pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Templates as T
import Kelpa.Appearance
import Kelpa.Goals
import Kelpa.Windows
import Kelpa.Board

/// The main window with the board.
T.ApplicationWindow {
    id: root

    required property BoardController board

    // The item that contains menus and sheets, which have keys of their own. Created before the
    // board listens for presses: otherwise an item over the board, even a tip, would keep them to
    // itself, and a click would not leave a field.
    readonly property Item overlay: T.Overlay.overlay

    // The screen's size for the window, less the space of a title above it and of borders around
    // it.
    readonly property int usableWidth: Math.min(root.Screen.width, root.Screen.desktopAvailableWidth)
            - Theme.huge
    readonly property int usableHeight: Math.min(root.Screen.height, root.Screen.desktopAvailableHeight)
            - Theme.controlHeight - Theme.small

    // Created on first use.
    property NewGoalSheet createSheet: null
    property TitleSheet renameSheet: null
    property WindowSelectionSheet selectionSheet: null
    property SavingNotice savingNotice: null
    property string renamedColumnID

    function askForGoal(): void {
        if (root.createSheet === null)
            root.createSheet = createSheetType.createObject(root.contentItem) as NewGoalSheet;
        root.createSheet.ask("");
    }
    function askForName(columnID: string): void {
        if (root.renameSheet === null)
            root.renameSheet = renameSheetType.createObject(root.contentItem) as TitleSheet;
        root.renamedColumnID = columnID;
        root.renameSheet.ask(root.board.goals.goalTitle(columnID));
    }

    /// Opens the board's menu where no item with the focus has a menu of its own.
    function takeMenuKey(event: KeyEvent): void {
        event.accepted = event.key === Qt.Key_Menu
                || event.key === Qt.Key_F10 && (event.modifiers & Qt.ShiftModifier);
        if (event.accepted)
            goalBoard.openMenu();
    }

    // On a smaller screen, the whole window and its frame can still be seen.
    minimumWidth: Math.min(900, root.usableWidth)
    minimumHeight: Math.min(620, root.usableHeight)
    title: ViewSettings.copy.text(CopyKey.ProductName)
    color: Theme.window
    font: Theme.body
    // The size when the window is no longer maximised. Not bound, since a person's size outlives a
    // change of the screen.
    Component.onCompleted: {
        root.width = Math.min(1200, root.usableWidth);
        root.height = Math.min(800, root.usableHeight);
    }

    BoardHeader {
        id: header

        anchors.left: parent.left
        anchors.right: parent.right
        board: root.board
        onNewGoalRequested: root.askForGoal()
        onMatchSelected: goalBoard.forceActiveFocus()
        Keys.onPressed: event => root.takeMenuKey(event)
    }
    BoardNotices {
        id: notices

        anchors.top: header.bottom
        anchors.left: parent.left
        anchors.right: parent.right
        anchors.leftMargin: Theme.boardMargin
        anchors.rightMargin: Theme.boardMargin
        board: root.board
        Keys.onPressed: event => root.takeMenuKey(event)
    }
    Rectangle {
        id: divider

        anchors.top: notices.bottom
        width: parent.width
        height: 1
        color: Theme.outline
    }
    GoalBoard {
        id: goalBoard

        anchors.top: divider.bottom
        anchors.bottom: parent.bottom
        anchors.left: parent.left
        anchors.right: parent.right
        board: root.board
        onNewGoalRequested: root.askForGoal()
        Keys.onPressed: event => root.takeMenuKey(event)
    }
    Toast {
        id: toast

        anchors.horizontalCenter: parent.horizontalCenter
        anchors.bottom: parent.bottom
        anchors.bottomMargin: Theme.huge
        message: root.board.toastMessage
        actionText: root.board.toastOffersUndo ? ViewSettings.copy.text(CopyKey.Undo) : ""
        onActionRequested: root.board.undo()
        onIsHeldChanged: root.board.setToastHeld(isHeld)
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
        id: savingNoticeType

        // Above the toast, which may show at the same time.
        SavingNotice {
            anchors.horizontalCenter: parent.horizontalCenter
            anchors.bottom: toast.top
            anchors.bottomMargin: Theme.small
            visible: root.board.isSavingSlowly
        }
    }
    Connections {
        target: root.board

        function onIsSavingSlowlyChanged(): void {
            if (root.savingNotice === null)
                root.savingNotice = savingNoticeType.createObject(root.contentItem) as SavingNotice;
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
            root.selectionSheet = selectionSheetType.createObject(root.contentItem)
                    as WindowSelectionSheet;
            root.selectionSheet.followRequest();
        }
    }
}
