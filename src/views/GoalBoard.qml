pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Templates as T
import QtQuick.Window
import Kelpa

/// The targets of the board in a waterfall, the rail beside them, and the menus that they share.
FocusScope {
    id: root

    required property BoardController board

    /// Whether cards are on their way to their places, or the board to the selection.
    readonly property bool isMoving: targets.isMoving || scrolling.running
                                     || selectionScroll.running

    signal renameRequested(columnID: string, title: string)
    signal newGoalRequested

    // Menus stay where they opened: cards, rows and buttons move away below them, or go.
    function openBelow(menu: AppMenu, button: Item): void {
        menu.popup(root, button.mapToItem(root, 0, button.height + Theme.tiny));
    }
    function showTodoMenu(todoID: string, columnID: string, row: Item, position: point): void {
        todoMenu.ask(todoID, columnID, row as TodoRow, root, row.mapToItem(root, position));
    }

    /// Scrolls until the selected target, or the selected window in it, is in view.
    function showSelection(): void {
        targets.pinnedRow = root.board.selectedTarget;
        if (targets.pinnedRow < 0)
            return;
        // It has its height of now on only once it has an item.
        targets.layOut();
        let wanted = targets.rowRect(targets.pinnedRow);
        const column = targets.itemAtRow(targets.pinnedRow) as GoalColumn;
        if (column !== null && root.board.selectedWindow >= 0) {
            const card = column.windowRect(root.board.selectedWindow);
            wanted = Qt.rect(wanted.x, wanted.y + card.y, card.width, card.height);
        }
        const todo = column === null ? Qt.rect(0, 0, 0, 0)
                                     : column.todoRect(root.board.todos.highlightedTodoID);
        if (todo.height > 0 && root.board.selectedWindow < 0)
            wanted = Qt.rect(wanted.x, wanted.y + todo.y, todo.width, todo.height);
        view.reveal(wanted.y, wanted.height);
        root.focusSelection();
    }
    /// Lets the focus follow the selection, so that a screen reader tells of it, unless it is where
    /// a person has put it.
    function focusSelection(): void {
        const column = targets.itemAtRow(root.board.selectedTarget);
        const part = (column as GoalColumn)?.selectedPart()
                ?? (column as UnifiedTodoColumn)?.selectedPart() ?? null;
        const holder = root.Window.activeFocusItem;
        if (part === null || holder === part || !root.isFollowing(holder))
            return;
        part.forceActiveFocus();
    }
    /// Whether an item that has the focus gives it up to the selection. While another program has
    /// the keyboard there is none, and who had it has it again afterwards.
    function isFollowing(item: Item): bool {
        if (item === null)
            return false;
        if (item instanceof WindowCard || item instanceof GoalColumn
                || item instanceof UnifiedTodoColumn)
            return true;
        // Nobody has it: it is left to whatever the board stands in.
        let around = root as Item;
        while (around !== null && around !== item)
            around = around.parent;
        return around === item;
    }

    function showFocus(): void {
        const item = root.Window.activeFocusItem;
        // What follows the selection is in view with it.
        if (item !== null && view.isHolding(item) && !root.isFollowing(item)) {
            const top = item.mapToItem(targets, 0, 0).y;
            view.reveal(top, item.height);
        }
    }

    BoardDragSource {
        id: source
    }
    Connections {
        target: root.board

        function onSelectionChanged(): void {
            selectionScroll.restart();
        }
        function onSelectionMenuRequested(): void {
            selectionScroll.stop();
            root.showSelection();
            (targets.itemAtRow(root.board.selectedTarget) as GoalColumn)?.openSelectionMenu();
        }
    }
    Connections {
        target: root.board.todos

        function onTodoRequested(): void {
            selectionScroll.restart();
        }
    }
    // A held arrow key scrolls once, after its last step.
    Timer {
        id: selectionScroll

        interval: 45
        onTriggered: root.showSelection()
    }
    // Once whoever gave the focus up has had its way with it.
    Timer {
        id: selectionFocus

        interval: 45
        onTriggered: root.focusSelection()
    }
    // What the Tab key reaches is seen.
    Connections {
        target: root.Window.window
        ignoreUnknownSignals: true

        function onActiveFocusItemChanged(): void {
            focusScroll.restart();
            // Back from a field that is closed, or a menu.
            if (root.board.selectedTarget >= 0 && root.isFollowing(root.Window.activeFocusItem))
                selectionFocus.restart();
        }
    }
    // After the list in which it stands has scrolled to it.
    Timer {
        id: focusScroll

        interval: 0
        onTriggered: root.showFocus()
    }
    Binding {
        target: root.board
        property: "boardWidth"
        value: root.width
    }

    GoalBreadcrumbRail {
        id: rail

        x: Theme.boardMargin
        width: Theme.railWidth
        anchors.top: parent.top
        anchors.bottom: parent.bottom
        anchors.topMargin: Theme.large
        anchors.bottomMargin: Theme.large
        visible: root.board.breadcrumbs.count > 0
        board: root.board
    }
    ScrollNote {
        board: root.board
        view: view
    }
    Flickable {
        id: view

        readonly property real end: targets.y + targets.implicitHeight + Theme.huge
        // Room that is not needed any more stays until nothing moves in it.
        property real easedEnd: end
        /// Above and below what shows, so that the Tab key finds what follows.
        readonly property real reach: 100

        /// Of the targets' coordinates; as little as is needed, and the upper end of what does not
        /// fit.
        function reveal(top: real, length: real): void {
            const first = top + targets.y - Theme.large;
            const last = top + targets.y + length + Theme.large - view.height;
            const wanted = Math.min(first, Math.max(last, view.contentY));
            scrolling.stop();
            scrolling.to = Math.max(0, Math.min(wanted, view.end - view.height));
            if (scrolling.to !== view.contentY)
                scrolling.start();
        }
        function isHolding(item: Item): bool {
            for (let each = item; each !== null; each = each.parent)
                if (each === targets)
                    return true;
            return false;
        }

        anchors.top: parent.top
        anchors.bottom: parent.bottom
        anchors.left: rail.visible ? rail.right : parent.left
        anchors.right: parent.right
        contentHeight: Math.max(view.end, view.easedEnd)
        boundsBehavior: Flickable.StopAtBounds
        clip: true
        onMovementStarted: scrolling.stop()
        Accessible.role: Accessible.Pane
        Accessible.name: root.board.copy.text(CopyKey.Board)
        T.ScrollBar.vertical: AppScrollBar {
            parent: root
            x: root.width - width - Theme.tiny
            y: Theme.tiny
            height: root.height - 2 * Theme.tiny
        }

        Behavior on easedEnd {
            NumberAnimation {
                duration: Theme.mediumTime
                easing.type: Easing.OutCubic
            }
        }
        NumberAnimation {
            id: scrolling

            target: view
            property: "contentY"
            duration: Theme.mediumTime
            easing.type: Easing.OutCubic
        }

        // Beside all cards.
        MouseArea {
            width: view.width
            height: Math.max(view.height, view.contentHeight)
            onClicked: root.board.clearSelection()
        }
        WaterfallView {
            id: targets

            x: rail.visible ? Theme.railSpacing : Theme.boardMargin
            y: Theme.large
            width: root.board.targetAreaWidth
            height: implicitHeight
            minimumColumnWidth: Theme.targetWidth
            spacing: Theme.targetSpacing
            assumedHeight: Theme.collapsedCardHeight
            visibleFrom: view.contentY - y - view.reach
            visibleTo: view.contentY - y + view.height + view.reach
            motionTime: Theme.mediumTime
            model: root.board.targets

            WaterfallDelegate {
                kind: "unifiedTodos"

                UnifiedTodoColumn {
                    board: root.board
                    dragSource: source
                    onTodoMenuRequested: (todoID, columnID, row, position) => {
                        root.showTodoMenu(todoID, columnID, row, position);
                    }
                }
            }
            WaterfallDelegate {
                kind: "goal"
                component: column
            }
            WaterfallDelegate {
                kind: "unassigned"
                component: column
            }
            WaterfallDelegate {
                kind: "addGoal"

                AddGoalCard {
                    board: root.board
                    onClicked: root.newGoalRequested()
                }
            }
        }
    }
    // A card that is dragged to the edge finds the goals beyond it.
    DragScroll {
        anchors.fill: view
        isActive: source.isDragging
        onScrolled: step => {
            scrolling.stop();
            view.contentY = Math.max(0, Math.min(view.contentY + step, view.end - view.height));
        }
    }
    Component {
        id: column

        GoalColumn {
            id: goal

            board: root.board
            dragSource: source
            visibleFrom: targets.visibleFrom - y
            visibleTo: targets.visibleTo - y
            shownFrom: view.contentY - targets.y - y
            shownTo: view.contentY - targets.y + view.height - y
            onWindowMenuRequested: (windowID, card, position) => {
                windowMenu.ask(windowID, goal.columnID, root, card.mapToItem(root, position));
            }
            onColumnMenuRequested: button => {
                columnMenu.columnID = goal.columnID;
                columnMenu.columnTitle = root.board.goalTitle(goal.columnID);
                root.openBelow(columnMenu, button);
            }
            onPriorityMenuRequested: button => {
                priorityMenu.columnID = goal.columnID;
                priorityMenu.priority = goal.priority;
                root.openBelow(priorityMenu, button);
            }
            onTodoMenuRequested: (todoID, todoColumnID, row, position) => {
                root.showTodoMenu(todoID, todoColumnID, row, position);
            }
        }
    }

    WindowMenu {
        id: windowMenu

        board: root.board
    }
    PriorityMenu {
        id: priorityMenu

        board: root.board
    }
    TodoMenu {
        id: todoMenu

        board: root.board
    }
    ColumnMenu {
        id: columnMenu

        board: root.board
        onRenameRequested: root.renameRequested(columnMenu.columnID, columnMenu.columnTitle)
    }
}
