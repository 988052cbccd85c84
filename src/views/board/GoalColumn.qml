pragma ComponentBehavior: Bound

import QtQuick
import Kelpa.Appearance
import Kelpa.Scene
import Kelpa.Goals
import Kelpa.Todos
import Kelpa.Windows
import Kelpa.Board

/// A goal, or the unassigned column, with its todos and its window cards. A card that shows only its
/// beginning expands while the keyboard, or the first match of a search, is in what its fade would
/// cover.
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
    required property int pinnedDesktop
    required property string pinText
    required property int foldedCount
    required property string foldedApplications
    required property bool isUnfolded
    required property int absentWindowCount
    required property bool areFromLastTime
    required property bool isSearchedEmpty
    required property bool isTitleFound
    required property bool isReceding
    required property WindowListModel windows

    /// The part of the board that is on the screen, in the column's coordinates, without the items
    /// that are prepared beyond it.
    property real shownFrom: root.visibleFrom
    property real shownTo: root.visibleTo
    /// Whether it expands for a match of the search.
    property bool isShowingMatch: false

    /// The focus moves on from here to the next selected item.
    readonly property bool yieldsFocus: true

    signal windowMenuRequested(windowID: real, card: Item, place: rect)
    signal columnMenuRequested(button: Item)
    signal priorityMenuRequested(button: Item)
    signal todoMenuRequested(todoID: string, todoColumnID: string, row: Item, place: rect)

    /// The rect of the card of that row's window, in the column's coordinates.
    function windowRect(row: int): rect {
        return cards.mapToItem(root, cards.rowRect(row));
    }
    /// The rect of a todo's row; of no height when the column does not show the todo.
    function todoRect(todoID: string): rect {
        return todos.mapToItem(root, todos.rowRect(todoID));
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
    isExpanded: root.isSelected || root.isUnassigned || root.isShowingMatch
                || todos.y + todos.keyboardEnd > Theme.collapsedCardHeight - Theme.fadeHeight
    WaterfallDelegate.isPinned: ((root.isExpanded || root.isResizing) && !root.isUnassigned)
                                || todos.isWriting
    WaterfallDelegate.restHeight: root.isUnassigned ? 0 : root.collapsedHeight
    WaterfallDelegate.fullHeight: root.naturalHeight
    isRestless: cards.isRestless
    isAccepting: backdrop.wouldReceive
    wouldInsertBefore: backdrop.wouldInsertBefore
    naturalHeight: cards.y + cards.implicitHeight + Theme.medium
    Accessible.role: Accessible.List
    Accessible.name: root.title
    Accessible.focusable: true
    Accessible.selectable: true
    Accessible.selected: root.isSelected
    Accessible.onPressAction: root.board.goals.goToColumn(root.columnID)

    ColumnBackdrop {
        id: backdrop

        anchors.fill: parent
        goals: root.board.goals
        drops: root.board.drops
        dragSource: root.dragSource
        columnID: root.columnID
        picture: header
        isDraggable: !root.isUnassigned
    }
    ColumnHeader {
        id: header

        x: Theme.small
        y: Theme.small
        width: root.width - 2 * x
        goals: root.board.goals
        dragSource: root.dragSource
        columnID: root.columnID
        isUnassigned: root.isUnassigned
        title: root.title
        accent: root.accent
        priority: root.priority
        openTodoCount: root.openTodoCount
        windowCount: root.windowCount
        pinnedDesktop: root.pinnedDesktop
        pinText: root.pinText
        isTitleFound: root.isTitleFound
        isReceding: root.isReceding
        isExpanded: root.isSelected
        isCardDragged: backdrop.isDragged
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
    ColumnHint {
        id: hint

        anchors.left: parent.left
        anchors.right: parent.right
        anchors.leftMargin: Theme.columnTextX
        anchors.rightMargin: Theme.medium
        y: header.y + header.titleTop + header.titleHeight + 1
        height: Theme.columnListY - y
        visible: root.isUnassigned && root.board.windows.areListed
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
        onMenuRequested: (todoID, todoColumnID, row, place) => {
            root.todoMenuRequested(todoID, todoColumnID, row, place);
        }
        onFocusReturned: header.takeKeyboard()
    }
    OptionalItem {
        isWanted: root.absentWindowCount > 0

        AbsentWindowsLine {
            x: Theme.medium
            y: todos.y + todos.height + Theme.tiny
            width: Math.min(implicitWidth, root.width - 2 * Theme.medium)
            count: root.absentWindowCount
            areFromLastTime: root.areFromLastTime
            onClicked: root.board.windows.memory.openList(root.columnID)
        }
    }
    ColumnWindows {
        id: cards

        anchors.left: parent.left
        anchors.right: parent.right
        anchors.top: todos.bottom
        anchors.leftMargin: Theme.medium
        anchors.topMargin: root.absentWindowCount > 0 ? Theme.symbolSize + 2 * Theme.small
                                                        + Theme.captionGrowth
                                                      : Theme.small
        anchors.rightMargin: Theme.medium
        visibleFrom: root.visibleFrom - y
        visibleTo: Math.min(root.visibleTo, root.height) - y
        pinnedRow: root.isSelected ? root.board.selectedWindow : -1
        model: root.windows
        windows: root.board.windows
        dragSource: root.dragSource
        windowCount: root.windowCount
        foldedCount: root.foldedCount
        foldedApplications: root.foldedApplications
        isUnfolded: root.isUnfolded
        isSearchedEmpty: root.isSearchedEmpty
        onMenuRequested: (windowID, card, place) => {
            root.windowMenuRequested(windowID, card, place);
        }
    }
}
