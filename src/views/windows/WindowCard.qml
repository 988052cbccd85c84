pragma ComponentBehavior: Bound

import QtQuick
import Kelpa.Appearance
import Kelpa.Scene
import Kelpa.Controls
import Kelpa.Windows

/// A window of another application. A click switches to it; it can be dragged to another column, or
/// moved by its menu. The Tab key selects it; it handles Return only then, and leaves it to the board
/// where the arrow keys have selected it.
FocusableItem {
    id: root

    required property WindowController windows
    required property BoardDragSource dragSource
    required property real windowID
    required property string ownerName
    required property string title
    required property string applicationID
    required property real iconRevision
    required property bool isMinimized
    required property bool isOnScreen
    required property bool isSelected
    required property real previewRevision
    required property string previewMessage
    required property list<string> formerGoals
    required property string virtualDesktop
    required property bool isAwaitingAnswer

    readonly property bool isRaised: hover.hovered || root.isSelected
    /// The focus moves on from here to the next selected item.
    readonly property bool yieldsFocus: true
    /// Whether a person moved the focus to the card, or to one of its buttons, by keyboard.
    readonly property bool hasKeyboard: root.visualFocus || (root.buttons?.hasKeyboard ?? false)
                                        || face.hasKeyboard
    /// Whether its buttons show.
    readonly property bool isPointedAt: root.isRaised || root.hasKeyboard || root.activeFocus
                                        || revelation.running
    readonly property string help: ViewSettings.copy.text(root.windows.canAct ? CopyKey.WindowCardHelp
                                                                     : CopyKey.DragWindowHelp)

    /// Whether the pointer rests on the card instead of crossing it: the text of its tip is soon
    /// known, and the tip covers other cards.
    property bool hasRested: false
    property CardButtons buttons: null

    signal menuRequested(card: Item, place: rect)

    implicitHeight: Theme.windowCardHeight
    Accessible.role: Accessible.ListItem
    Accessible.ignored: !root.visible
    Accessible.name: ViewSettings.copy.windowName(root.ownerName, root.title)
    Accessible.description: [root.help, ...face.marks, ...face.lines].join("\n")
    Accessible.focusable: true
    Accessible.selectable: true
    Accessible.selected: root.isSelected
    Accessible.onPressAction: root.switchToWindow()
    onHasKeyboardChanged: if (root.hasKeyboard)
        root.windows.selectWindow(root.windowID)
    Keys.onReturnPressed: event => event.accepted = root.takeReturn(event)
    Keys.onEnterPressed: event => event.accepted = root.takeReturn(event)
    Keys.onPressed: event => {
        event.accepted = event.key === Qt.Key_Menu
                || event.key === Qt.Key_F10 && (event.modifiers & Qt.ShiftModifier);
        if (event.accepted)
            root.openMenu();
    }

    function switchToWindow(): void {
        root.windows.focusWindow(root.windowID);
    }
    function takeReturn(event: KeyEvent): bool {
        if (root.visualFocus && !event.isAutoRepeat)
            root.switchToWindow();
        return root.visualFocus;
    }
    function openMenu(): void {
        root.menuRequested(root, Qt.rect(Theme.medium, root.height - Theme.small, 0, 0));
    }

    HoverHandler {
        id: hover

        onHoveredChanged: root.hasRested = false
    }
    Timer {
        interval: Theme.tipDelay
        running: hover.hovered && !root.hasRested
        onTriggered: root.hasRested = true
    }
    // A finger has no way to rest over the card: what it has revealed stays for a while.
    Timer {
        id: revelation

        interval: 5000
    }

    DragArea {
        id: area

        anchors.fill: parent
        dragSource: root.dragSource
        picture: cardItem
        text: root.windows.windowDragText(root.windowID)
        acceptedButtons: Qt.LeftButton | Qt.RightButton
        onPressed: tip.dismiss()
        onClicked: mouse => {
            if (mouse.button === Qt.RightButton)
                root.menuRequested(root, Qt.rect(mouse.x, mouse.y, 0, 0));
            else if (!area.hasPassedDragDistance)
                root.switchToWindow();
        }
    }
    Item {
        id: cardItem

        // Degrees that nobody sees. Without a graphics device, round corners show seams when scaled,
        // unless they are turned as well: then each rectangle is painted in one piece. A layer would
        // be, too, but stays empty on screens of two pixels per point.
        readonly property real tilt: GraphicsInfo.api === GraphicsInfo.Software
                                     && cardItem.scale !== 1 ? 1e-5 : 0
        readonly property color ground: root.isSelected ? Qt.tint(Theme.card, Theme.accepting)
                                                        : Theme.card

        anchors.fill: parent
        scale: area.pressed ? 0.985 : root.isRaised ? 1.012 : 1
        opacity: area.pressed ? 0.82 : 1

        Behavior on scale {
            NumberAnimation {
                duration: Theme.shortTime
                easing.type: Easing.OutCubic
            }
        }

        CardGround {
            isRaised: root.isRaised
            isSelected: root.isSelected
            color: cardItem.ground
            tilt: cardItem.tilt
        }
        CardFace {
            id: face

            anchors.fill: parent
            windows: root.windows
            windowID: root.windowID
            ownerName: root.ownerName
            title: root.title
            applicationID: root.applicationID
            iconRevision: root.iconRevision
            previewRevision: root.previewRevision
            previewMessage: root.previewMessage
            formerGoals: root.formerGoals
            virtualDesktop: root.virtualDesktop
            isMinimized: root.isMinimized
            isOnScreen: root.isOnScreen
            isAwaitingAnswer: root.isAwaitingAnswer
            ground: cardItem.ground
            tilt: cardItem.tilt
            onMenuRequested: place => root.menuRequested(root, place)
        }
        OptionalItem {
            isWanted: !ViewSettings.isStarting
            onItemChanged: root.buttons = item as CardButtons

            CardButtons {
                anchors.fill: cardItem
                windows: root.windows
                isPointedAt: root.isPointedAt
                tilt: cardItem.tilt
                onRevealed: revelation.restart()
                onMenuRequested: place => root.menuRequested(root, place)
                onCloseRequested: root.windows.closeWindowProcess(root.windowID)
            }
        }
    }

    FocusRing {
        radius: Theme.cardRadius + 2
        isShown: root.isSelected || root.activeFocus
    }
    HoverTip {
        id: tip

        text: [...(face.isElided ? [root.title, root.ownerName] : []),
            ...(face.isMessageCut ? [root.previewMessage] : []), ...face.marks, root.help].join("\n")
        isHovered: hover.hovered && root.hasRested && !(root.buttons?.isHovered ?? false)
                   && !root.dragSource.isDragging
    }
}
