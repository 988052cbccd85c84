pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Templates as T
import Kelpa.Appearance
import Kelpa.Scene
import Kelpa.Controls
import Kelpa.Goals
import Kelpa.Todos
import Kelpa.Board

/// The targets of the board in a waterfall, the rail beside them, and the menus that they share.
FocusScope {
    id: root

    required property BoardController board

    /// Whether cards are on their way to their places, or the board to the selection.
    readonly property bool isMoving: targets.isMoving || view.isScrolling || scroll.isWaiting
                                     || searchScroll.isWaiting

    /// The menus of cards and board. They have no type here: that would be read before the first frame.
    function menus(): var {
        if (menuLoader.item === null)
            menuLoader.setSource("CardMenus.qml", { "board": root.board });
        return menuLoader.item;
    }
    /// Opens the menu of the board as a whole.
    function openMenu(): void {
        view.openMenu();
    }
    /// Opens the menu of the selected window or goal or, where there is none, that of the board.
    function openSelectionMenu(): void {
        if (root.board.selectedTarget >= 0) {
            scroll.showSelection();
            if ((scroll.selectedColumn() as GoalColumn)?.openSelectionMenu() ?? false)
                return;
        }
        view.openMenu();
    }
    function renameSelection(): void {
        scroll.showSelection();
        const column = scroll.selectedColumn() as GoalColumn;
        if (column !== null)
            root.board.goals.requestRename(column.columnID);
    }

    Keys.forwardTo: [keys]

    BoardDragSource {
        id: source

        onRefused: text => {
            if (root.board.drops.isGoalDrag(text))
                root.board.explainAutomaticOrder();
        }
    }
    Binding {
        target: root.board
        property: "boardWidth"
        value: root.width - (rail.visible ? Theme.railGrowth : 0)
    }

    GoalBreadcrumbRail {
        id: rail

        x: Theme.boardMargin
        z: 1
        width: rail.implicitWidth
        anchors.top: parent.top
        anchors.bottom: parent.bottom
        anchors.topMargin: Theme.large
        anchors.bottomMargin: Theme.large
        visible: root.board.goals.breadcrumbs.count > 0
        goals: root.board.goals
        drops: root.board.drops
        dragSource: source
    }
    ScrollActivity {
        board: root.board
        view: view
    }
    BoardView {
        id: view

        board: root.board
        onMenuRequested: (item, place) => root.menus().openBoardMenu(item, place)
        end: targets.y + targets.implicitHeight + Theme.huge
        anchors.top: parent.top
        anchors.bottom: parent.bottom
        anchors.left: parent.left
        anchors.leftMargin: rail.visible ? rail.x + Theme.railWidth : 0
        anchors.right: parent.right
        T.ScrollBar.vertical: AppScrollBar {
            parent: root
            x: root.width - width - Theme.tiny
            y: Theme.tiny
            height: root.height - 2 * Theme.tiny
            onPressedChanged: {
                view.steered();
                view.halt();
            }
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
            room: view.height - y - Theme.huge
            visibleFrom: view.contentY - y - view.reach
            visibleTo: view.contentY - y + view.height + view.reach
            motionTime: Theme.mediumTime
            model: root.board.targets
            onItemShown: item => (item as GoalColumn)?.takeRequest()

            WaterfallDelegate {
                kind: "unifiedTodos"

                UnifiedTodoColumn {
                    todos: root.board.todos
                    dragSource: source
                    onTodoMenuRequested: (id, inColumn, row, place) => root.menus().openTodoMenu(id, inColumn, row, place)
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
                    goals: root.board.goals
                    drops: root.board.drops
                    dragSource: source
                    onClicked: root.board.newGoalRequested()
                }
            }
        }
    }
    SelectionFocus {
        id: selectionFocus

        board: root.board
        targets: targets
        scope: root
    }
    SelectionScroll {
        id: scroll

        board: root.board
        targets: targets
        view: view
        selectionFocus: selectionFocus
    }
    SearchScroll {
        id: searchScroll

        anchors.fill: view
        board: root.board
        targets: targets
        view: view
        dragSource: source
    }
    Connections {
        target: root.board

        function onSelectionMenuRequested(): void {
            root.openSelectionMenu();
        }
    }
    BoardKeys {
        id: keys

        board: root.board
        targets: targets
        view: view
        selectionFocus: selectionFocus
        onRenameRequested: root.renameSelection()
    }
    DragGuide {
        anchors.fill: parent
        z: 2
        dragSource: source
        view: view
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
            isShowingMatch: searchScroll.grownColumnID === goal.columnID
            onWindowMenuRequested: (id, card, place) => root.menus().openWindowMenu(id, goal.columnID, card, place)
            onColumnMenuRequested: button => root.menus().openColumnMenu(
                goal.columnID, goal.isSelected && !selectionFocus.isWriting, keys.movedColumn() === goal, button)
            onPriorityMenuRequested: button => root.menus().openPriorityMenu(goal.columnID, goal.priority, button)
            onTodoMenuRequested: (id, inColumn, row, place) => root.menus().openTodoMenu(id, inColumn, row, place)
        }
    }
    Loader {
        id: menuLoader

        anchors.fill: parent
    }
}
