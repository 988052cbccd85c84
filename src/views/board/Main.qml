pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Templates as T
import Kelpa.Appearance
import Kelpa.Board

/// The main window with the board.
T.ApplicationWindow {
    id: root

    required property BoardController board

    // The item that contains menus and sheets, which have keys of their own. Created before the
    // board listens for presses: otherwise an item over the board, even a tip, would keep them to
    // itself, and a click would not leave a field.
    readonly property Item overlay: T.Overlay.overlay

    // In which the whole board can be used.
    readonly property int leastWidth: 900
    readonly property int leastHeight: 620
    // The screen's size for the window, less the space of a title above it and of borders around
    // it.
    readonly property int usableWidth: Math.min(root.Screen.width, root.Screen.desktopAvailableWidth)
            - Theme.huge
    readonly property int usableHeight: Math.min(root.Screen.height, root.Screen.desktopAvailableHeight)
            - Theme.controlHeight - Theme.small

    // Created on first use.
    property SavingNotice savingNotice: null

    /// The sheets. They have no type here: that would be read before the first frame.
    function sheets(): var {
        if (sheetLoader.item === null)
            sheetLoader.setSource("BoardSheets.qml", { "board": root.board });
        return sheetLoader.item;
    }
    /// On Wayland the size that the compositor gives on a smaller screen may arrive before that
    /// screen, and is then raised to the minimum of the larger one. The compositor has to answer a
    /// request to maximise the window with its size again.
    function askForSizeAgain(): void {
        const isWider = root.width > root.Screen.width && root.width <= root.leastWidth;
        const isHigher = root.height > root.Screen.height && root.height <= root.leastHeight;
        if (root.visibility === Window.Windowed && Qt.platform.pluginName.startsWith("wayland")
                && (isWider || isHigher))
            root.showMaximized();
    }
    /// Opens the board's menu where no item with the focus has a menu of its own.
    function takeMenuKey(event: KeyEvent): void {
        event.accepted = event.key === Qt.Key_Menu
                || event.key === Qt.Key_F10 && (event.modifiers & Qt.ShiftModifier);
        if (event.accepted)
            goalBoard.openMenu();
    }

    // On a smaller screen, the whole window and its frame can still be seen.
    minimumWidth: Math.min(root.leastWidth, root.usableWidth)
    minimumHeight: Math.min(root.leastHeight, root.usableHeight)
    title: ViewSettings.copy.text(CopyKey.ProductName)
    color: Theme.window
    font: Theme.body
    onWidthChanged: root.askForSizeAgain()
    onHeightChanged: root.askForSizeAgain()
    onUsableWidthChanged: root.askForSizeAgain()
    onUsableHeightChanged: root.askForSizeAgain()
    onClosing: close => close.accepted = root.board.trouble.mayClose()
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
        onNewGoalRequested: root.board.newGoalRequested()
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
    FirstStepsPlace {
        id: firstSteps

        anchors.top: notices.bottom
        anchors.left: parent.left
        anchors.right: parent.right
        anchors.leftMargin: Theme.boardMargin
        anchors.rightMargin: Theme.boardMargin
        steps: root.board.firstSteps
        onBoardRequested: goalBoard.forceActiveFocus()
        Keys.onPressed: event => root.takeMenuKey(event)
    }
    Rectangle {
        id: divider

        anchors.top: firstSteps.bottom
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
        Keys.onPressed: event => root.takeMenuKey(event)
    }
    BoardShortcuts {
        board: root.board
    }
    Toast {
        id: toast

        anchors.horizontalCenter: parent.horizontalCenter
        anchors.bottom: parent.bottom
        anchors.bottomMargin: Theme.huge
        message: root.board.toastMessage
        actionText: root.board.toastActionText
        onActionRequested: root.board.takeToastOffer()
        onIsHeldChanged: root.board.setToastHeld(isHeld)
    }

    Loader {
        id: sheetLoader
    }
    LazySheet {
        isWanted: root.board.backups.isOpen
        file: "qrc:/qt/qml/Kelpa/Backups/BackupSheet.qml"
        parts: ({ "backups": root.board.backups })
    }
    LazySheet {
        isWanted: root.board.exporting.isOpen
        file: "qrc:/qt/qml/Kelpa/Transfer/ExportSheet.qml"
        parts: ({ "exporting": root.board.exporting })
    }
    LazySheet {
        isWanted: root.board.importing.isOpen
        file: "qrc:/qt/qml/Kelpa/Transfer/ImportSheet.qml"
        parts: ({ "importing": root.board.importing })
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
        function onNewGoalRequested(): void {
            root.sheets().askForGoal();
        }
        function onKeysRequested(): void {
            root.sheets().showKeys();
        }
    }
    Connections {
        target: root.board.trouble

        function onAskingRequested(): void {
            root.sheets().askToClose();
        }
        function onClosingAllowed(): void {
            root.board.presence.goOn();
        }
    }
    Connections {
        target: root.board.presence

        function onQuitRequested(): void {
            if (root.board.trouble.mayClose())
                root.board.presence.quit();
        }
        function onQuitConfirmed(): void {
            root.close();
        }
        function onCloseConfirmed(): void {
            root.close();
        }
    }
    Connections {
        target: root.board.goals

        function onRenameRequested(columnID: string): void {
            root.sheets().askForName(columnID);
        }
    }
    Connections {
        target: root.board.windows.memory

        function onListChanged(): void {
            if (root.board.windows.memory.isListOpen)
                root.sheets().showAbsentWindows();
        }
    }
    Connections {
        target: root.board.windows.picker

        function onRequestChanged(): void {
            if (root.board.windows.picker.isOpen)
                root.sheets().selectWindows();
        }
    }
}
