pragma ComponentBehavior: Bound

import QtQuick
import Kelpa.Appearance
import Kelpa.Scene
import Kelpa.Controls
import Kelpa.Goals

/// The head of a column. A goal's title has a line of its own above the controls, as wide as the card;
/// "Unsorted" has its explanation there. A goal's head can be dragged onto another column, which accepts
/// it while goals have their own order.
Item {
    id: root

    required property GoalController goals
    required property BoardDragSource dragSource
    required property string columnID
    required property bool isUnassigned
    required property string title
    required property string accent
    required property string priority
    required property int openTodoCount
    required property int windowCount
    /// The number of the virtual desktop that the goal is pinned to, 0 for none, and what says so.
    property int pinnedDesktop: 0
    property string pinText: ""
    /// Whether a search finds the title, and whether it finds nothing at all in the column.
    property bool isTitleFound: false
    property bool isReceding: false
    /// Whether a title that is too long scrolls past.
    property bool isExpanded: false
    property bool isOnScreen: true
    /// Whether the header is dragged as the picture of its card.
    property bool isCardDragged: false
    /// The colour below the header.
    property color ground: Theme.column
    /// The position of the title, in points of the header.
    readonly property alias titleTop: titleText.y
    readonly property alias titleHeight: titleText.height

    signal menuRequested(button: Item)
    signal priorityMenuRequested(button: Item)
    signal addTodoRequested(isByKeyboard: bool)

    function takeKeyboard(): void {
        addButton.forceActiveFocus(Qt.TabFocusReason);
    }

    function openMenu(): void {
        root.menuRequested(menuButton);
    }

    implicitHeight: root.isUnassigned ? 40 + Theme.bodyGrowth : Theme.columnListY - Theme.small
    opacity: root.isReceding ? Theme.recedingOpacity : 1
    // From one of its buttons.
    Keys.onPressed: event => {
        event.accepted = !root.isUnassigned && (event.key === Qt.Key_Menu
                || event.key === Qt.Key_F10 && (event.modifiers & Qt.ShiftModifier));
        if (event.accepted)
            root.openMenu();
    }

    // The ground of the picture that follows the pointer.
    Rectangle {
        anchors.fill: parent
        radius: Theme.cardRadius
        color: Theme.card
        visible: dragArea.isDragged || root.isCardDragged
    }
    DragArea {
        id: dragArea

        anchors.fill: parent
        dragSource: root.dragSource
        picture: root
        text: root.goals.columnDragText(root.columnID)
        enabled: !root.isUnassigned
        onClicked: if (!dragArea.hasPassedDragDistance)
            root.goals.goToColumn(root.columnID)
        // The first of the two clicks has selected the goal.
        onDoubleClicked: mouse => {
            if (titleText.contains(dragArea.mapToItem(titleText, mouse.x, mouse.y)))
                root.goals.requestRename(root.columnID);
        }
    }

    Rectangle {
        id: dot

        // Aligned with the middle of the symbols of the todos below.
        x: Theme.columnSymbolX - root.x - width / 2
        width: 10
        height: 10
        radius: 5
        anchors.verticalCenter: titleText.verticalCenter
        color: root.isUnassigned ? "transparent" : Theme.accentColor(root.accent)
        border.width: root.isUnassigned ? 2 : 1
        border.color: root.isUnassigned ? Theme.secondaryText : Theme.accentEdge(root.accent)
    }
    Rectangle {
        anchors.fill: titleText
        anchors.margins: -Theme.tiny
        radius: Theme.smallRadius
        color: Theme.found
        visible: root.isTitleFound
    }
    MarqueeGoalTitle {
        id: titleText

        x: Theme.columnTextX - root.x
        width: (root.isUnassigned ? controls.x : root.width) - Theme.tiny - x
        y: root.isUnassigned ? (root.height - height) / 2 : Theme.tiny
        text: root.title
        // The head of a card, above texts of 13 points, has their size and not the smaller one of
        // the rail's entries. It is the same while the card is collapsed and while the title moves,
        // so that selecting a goal does not change the appearance of its card.
        font: Theme.bodyStrong
        ground: root.ground
        isAllowedToMove: root.isExpanded && !dragArea.pressed && !root.isCardDragged
        isOnScreen: root.isOnScreen
    }
    Row {
        id: controls

        // A badge at the end is aligned with the cards below, and the symbol of a button with the
        // texts.
        x: root.isUnassigned ? root.width - width - Theme.tiny : Theme.columnTextX - root.x - 6
        y: root.isUnassigned ? (root.height - height) / 2 : root.height - height
        spacing: 2

        HoverHandler {
            id: controlsHover
        }
        IconButton {
            id: addButton

            anchors.verticalCenter: parent.verticalCenter
            symbol: "lightbulb-plus"
            size: 28
            text: ViewSettings.copy.text(CopyKey.AddTodo)
            onClicked: root.addTodoRequested(addButton.visualFocus)
        }
        CountBadge {
            anchors.verticalCenter: parent.verticalCenter
            count: root.openTodoCount
            symbol: "list-checks"
            label: ViewSettings.copy.openTodoCount(root.openTodoCount)
        }
        PriorityButton {
            id: priorityButton

            anchors.verticalCenter: parent.verticalCenter
            symbol: root.goals.prioritySymbol(root.priority)
            color: Theme.priorityColor(root.priority)
            text: ViewSettings.copy.priorityAccessibilityLabel(root.priority)
            visible: !root.isUnassigned
            onClicked: root.priorityMenuRequested(priorityButton)
        }
        CountBadge {
            anchors.verticalCenter: parent.verticalCenter
            count: root.windowCount
            symbol: "app-window"
            label: ViewSettings.copy.windowCount(root.windowCount)
            visible: root.isUnassigned && root.goals.areWindowsListed
        }
        CountButton {
            anchors.verticalCenter: parent.verticalCenter
            count: root.windowCount
            symbol: "app-window-plus"
            text: ViewSettings.copy.text(CopyKey.AddWindowsToGoal)
            label: ViewSettings.copy.windowCount(root.windowCount)
            visible: !root.isUnassigned && root.goals.areWindowsListed
            onClicked: root.goals.requestWindows(root.columnID)
        }
        OptionalItem {
            isWanted: root.pinnedDesktop > 0

            CountBadge {
                // It has no parent when it goes.
                y: (controls.height - height) / 2
                count: root.pinnedDesktop
                symbol: "pin"
                label: root.pinText
            }
        }
    }
    IconButton {
        id: menuButton

        anchors.right: parent.right
        anchors.verticalCenter: controls.verticalCenter
        symbol: "ellipsis"
        size: 28
        text: ViewSettings.copy.text(CopyKey.MoreGoalActions)
        visible: !root.isUnassigned
        Accessible.role: Accessible.ButtonMenu
        onClicked: root.menuRequested(menuButton)
    }
    HoverHandler {
        id: hover
    }
    HoverTip {
        text: root.title
        isHovered: hover.hovered && titleText.isPartlySeen && !controlsHover.hovered
                   && !menuButton.hovered && !dragArea.pressed && !root.dragSource.isDragging
    }
}
