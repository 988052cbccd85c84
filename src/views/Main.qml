pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Templates as T
import Kelpa

/// The main window with the board.
T.ApplicationWindow {
    id: root

    required property BoardController board

    width: 1200
    height: 800
    minimumWidth: 900
    minimumHeight: 620
    title: root.board.copy.text(CopyKey.ProductName)
    color: Theme.window
    font: Theme.body

    BoardHeader {
        id: header

        anchors.left: parent.left
        anchors.right: parent.right
        board: root.board
        onNewGoalRequested: createSheet.ask("")
    }
    PermissionBanner {
        id: banner

        anchors.top: header.bottom
        anchors.left: parent.left
        anchors.right: parent.right
        anchors.leftMargin: Theme.boardMargin
        anchors.rightMargin: Theme.boardMargin
        board: root.board
    }
    Rectangle {
        id: divider

        anchors.top: banner.visible ? banner.bottom : header.bottom
        anchors.topMargin: banner.visible ? Theme.large : 0
        width: parent.width
        height: 1
        color: Theme.outline
    }
    GoalBoard {
        anchors.top: divider.bottom
        anchors.bottom: parent.bottom
        anchors.left: parent.left
        anchors.right: parent.right
        board: root.board
        onNewGoalRequested: createSheet.ask("")
        onRenameRequested: (columnID, title) => {
            renameSheet.columnID = columnID;
            renameSheet.ask(title);
        }
    }
    Toast {
        anchors.horizontalCenter: parent.horizontalCenter
        anchors.bottom: parent.bottom
        anchors.bottomMargin: Theme.huge
        message: root.board.toastMessage
        actionText: root.board.toastOffersUndo ? root.board.copy.text(CopyKey.Undo) : ""
        onActionRequested: root.board.undo()
        onIsHeldChanged: root.board.setToastHeld(isHeld)
    }

    TitleSheet {
        id: createSheet

        board: root.board
        title: root.board.copy.text(CopyKey.CreateGoalTitle)
        explanation: root.board.copy.text(CopyKey.CreateGoalText)
        placeholder: root.board.copy.text(CopyKey.CreateGoalPlaceholder)
        fieldLabel: root.board.copy.text(CopyKey.GoalName)
        confirmLabel: root.board.copy.text(CopyKey.Create)
        onConfirmed: title => root.board.createGoal(title)
    }
    TitleSheet {
        id: renameSheet

        property string columnID

        board: root.board
        title: root.board.copy.text(CopyKey.RenameGoal)
        explanation: ""
        placeholder: root.board.copy.text(CopyKey.EnterGoalName)
        fieldLabel: root.board.copy.text(CopyKey.GoalName)
        confirmLabel: root.board.copy.text(CopyKey.Save)
        onConfirmed: title => root.board.renameGoal(renameSheet.columnID, title)
    }
    WindowSelectionSheet {
        board: root.board
    }
}
