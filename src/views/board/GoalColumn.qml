pragma ComponentBehavior: Bound

import QtQuick
import Kelpa.Appearance
import Kelpa.Scene
import Kelpa.Controls
import Kelpa.Goals
import Kelpa.Todos
import Kelpa.Windows
import Kelpa.Board

/// A goal, or the unassigned column, with its todos and its window cards. Alt with the left or
/// right arrow moves a goal by one place.
ExpandableGoalCard {
    id: root

    required property BoardController board
    required property BoardDragSource dragSource
    required property string columnID
    required property bool isUnassigned
    required property string title
    required property string accent
    required property string priority
    required property int openTodoCount
    required property int windowCount
    required property bool isSearchedEmpty
    required property WindowListModel windows

    /// The part of the board that is on the screen, in the column's coordinates, without the items
    /// that are prepared beyond it.
    property real shownFrom: root.visibleFrom
    property real shownTo: root.visibleTo

    /// The focus moves on from here to the next selected item.
    readonly property bool yieldsFocus: true

    signal windowMenuRequested(windowID: real, card: Item, position: point)
    signal columnMenuRequested(button: Item)
    signal priorityMenuRequested(button: Item)
    signal todoMenuRequested(todoID: string, todoColumnID: string, row: Item, position: point)

    /// The rect of the card of that row's window, in the column's coordinates.
    function windowRect(row: int): rect {
        const rect = cards.rowRect(row);
        return Qt.rect(cards.x + rect.x, cards.y + rect.y, rect.width, rect.height);
    }

    /// The rect of a todo's row; of no height when the column does not show the todo.
    function todoRect(todoID: string): rect {
        const rect = todos.rowRect(todoID);
        return Qt.rect(todos.x + rect.x, todos.y + rect.y, rect.width, rect.height);
    }

    /// The selected card or the highlighted todo, in the column's coordinates; of no height where the
    /// column as a whole is selected.
    function selectedRect(): rect {
        return root.board.selectedWindow >= 0 ? root.windowRect(root.board.selectedWindow)
                                              : root.todoRect(root.board.todos.highlightedTodoID);
    }

    /// The item that the arrow keys have selected: the column itself, or the card of a window.
    function selectedPart(): Item {
        if (root.board.selectedWindow < 0)
            return root;
        // The selected row has an item of its own, wherever it is.
        cards.layOut();
        return cards.itemAtRow(root.board.selectedWindow);
    }

    /// Takes the keyboard if a field of the column was requested before the column showed.
    function takeRequest(): void {
        todos.takeRequest();
    }

    /// Opens the menu of the selected window, or of the goal; false where there is none.
    function openSelectionMenu(): bool {
        const card = root.selectedPart() as WindowCard;
        if (card !== null)
            card.openMenu();
        else if (!root.isUnassigned)
            header.openMenu();
        return card !== null || !root.isUnassigned;
    }

    // The unassigned column shows all of its contents, since they are to be sorted.
    isExpanded: root.isSelected || root.isUnassigned
    WaterfallDelegate.isPinned: (root.expansionProgress > 0 && !root.isUnassigned) || todos.isWriting
    isAccepting: dropArea.wouldReceive
    wouldInsertBefore: dropArea.wouldInsertBefore
    naturalHeight: cards.y + (root.windowCount > 0 ? cards.implicitHeight : emptyPlace.height)
                   + Theme.medium
    Accessible.role: Accessible.List
    Accessible.name: root.title
    Accessible.focusable: true
    Accessible.selectable: true
    Accessible.selected: root.isSelected
    Accessible.onPressAction: root.board.goals.goToColumn(root.columnID)
    // Handles keys of the column and of whatever in it has the keyboard, except for text fields.
    Keys.onPressed: event => {
        const step = event.key === Qt.Key_Left ? -1 : event.key === Qt.Key_Right ? 1 : 0;
        event.accepted = step !== 0 && (event.modifiers & Qt.AltModifier)
                && !(root.Window.activeFocusItem instanceof TextInputField)
                && root.board.goals.moveColumn(root.columnID, step);
    }

    // Outside its other items, the card can be dragged as by its head.
    DragArea {
        id: ground

        anchors.fill: parent
        dragSource: root.dragSource
        picture: header
        text: root.board.goals.columnDragText(root.columnID)
        isDraggable: !root.isUnassigned
        onClicked: if (!ground.hasPassedDragDistance)
            root.board.goals.goToColumn(root.columnID)
    }

    // Placed below everything else: the rows of todos take precedence.
    ColumnDropArea {
        id: dropArea

        anchors.fill: parent
        drops: root.board.drops
        dragSource: root.dragSource
        columnID: root.columnID
    }

    ColumnHeader {
        id: header

        anchors.left: parent.left
        anchors.right: parent.right
        anchors.top: parent.top
        anchors.margins: Theme.small
        goals: root.board.goals
        dragSource: root.dragSource
        columnID: root.columnID
        isUnassigned: root.isUnassigned
        title: root.title
        accent: root.accent
        priority: root.priority
        openTodoCount: root.openTodoCount
        windowCount: root.windowCount
        isExpanded: root.isSelected
        isCardDragged: ground.isDragged
        ground: root.ground
        isOnScreen: root.shownFrom < y + header.titleTop + header.titleHeight
                    && root.shownTo > y + header.titleTop
        onMenuRequested: button => root.columnMenuRequested(button)
        onPriorityMenuRequested: button => root.priorityMenuRequested(button)
        onAddTodoRequested: isByKeyboard => {
            if (root.isUnassigned) {
                todos.openEditor(isByKeyboard);
                return;
            }
            todos.returnsFocusOnClose = isByKeyboard;
            root.board.todos.requestEditor(root.columnID);
        }
    }
    AppText {
        id: hint

        anchors.left: parent.left
        anchors.right: parent.right
        anchors.leftMargin: Theme.columnTextX
        anchors.rightMargin: Theme.medium
        y: header.y + header.titleTop + header.titleHeight + 1
        text: ViewSettings.copy.text(CopyKey.UnsortedHint)
        color: Theme.secondaryText
        font: Theme.caption
        height: Theme.columnListY - y
        verticalAlignment: Text.AlignTop
        visible: root.isUnassigned
        Accessible.ignored: !visible
        Accessible.role: Accessible.StaticText
        Accessible.name: text
    }
    TodoList {
        id: todos

        anchors.left: parent.left
        anchors.right: parent.right
        anchors.top: hint.visible ? hint.bottom : header.bottom
        anchors.leftMargin: Theme.small
        anchors.rightMargin: Theme.small
        height: implicitHeight
        visibleFrom: root.visibleFrom - y
        visibleTo: Math.min(root.visibleTo, root.height) - y
        todos: root.board.todos
        dragSource: root.dragSource
        listID: root.columnID
        roomBelow: root.height - y - height
        onMenuRequested: (todoID, todoColumnID, row, position) => {
            root.todoMenuRequested(todoID, todoColumnID, row, position);
        }
        onFocusReturned: header.takeKeyboard()
    }
    // Two columns, as the arrow keys walk them.
    WaterfallView {
        id: cards

        anchors.left: parent.left
        anchors.right: parent.right
        anchors.top: todos.bottom
        anchors.leftMargin: Theme.medium
        anchors.topMargin: Theme.small
        anchors.rightMargin: Theme.medium
        height: implicitHeight
        fixedColumnCount: 2
        fixedItemHeight: Theme.windowCardHeight
        spacing: Theme.small
        visibleFrom: root.visibleFrom - y
        visibleTo: Math.min(root.visibleTo, root.height) - y
        motionTime: Theme.mediumTime
        pinnedRow: root.isSelected ? root.board.selectedWindow : -1
        model: root.windows

        WaterfallDelegate {
            WindowCard {
                id: card

                windows: root.board.windows
                dragSource: root.dragSource
                onMenuRequested: (item, position) => {
                    root.windowMenuRequested(card.windowID, item, position);
                }
            }
        }
    }
    EmptyWindowPlace {
        id: emptyPlace

        anchors.left: parent.left
        anchors.right: parent.right
        anchors.top: cards.top
        anchors.leftMargin: Theme.medium
        anchors.rightMargin: Theme.medium
        visible: root.windowCount === 0
        isSearchedEmpty: root.isSearchedEmpty
    }
}
