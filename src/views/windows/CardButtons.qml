pragma ComponentBehavior: Bound

import QtQuick
import Kelpa.Appearance
import Kelpa.Windows

/// The buttons in the upper corners of a card, for people without a second mouse button or a menu key.
Item {
    id: root

    required property WindowController windows
    /// Whether the buttons show.
    required property bool isPointedAt
    /// The rotation with which round corners are drawn: see `WindowCard`.
    required property real tilt

    readonly property bool hasKeyboard: menuButton.visualFocus || closeButton.visualFocus
    readonly property bool isHovered: menuButton.hovered || closeButton.hovered

    signal revealed
    signal menuRequested(place: rect)
    signal closeRequested

    CardButton {
        id: menuButton

        anchors.left: parent.left
        symbol: "ellipsis"
        isWanted: root.isPointedAt
        text: ViewSettings.copy.text(CopyKey.MoveToGoal)
        Accessible.role: Accessible.ButtonMenu
        tilt: root.tilt
        onRevealed: root.revealed()
        onActivated: root.menuRequested(Qt.rect(x, y, width, height))
    }
    CardButton {
        id: closeButton

        anchors.right: parent.right
        symbol: "x"
        isWanted: root.isPointedAt
        hoveredGround: Theme.closing
        hoveredColor: Theme.textOnAccent
        visible: root.windows.canAct
        text: ViewSettings.copy.text(root.windows.canQuit ? CopyKey.CloseAppProcess
                                                          : CopyKey.CloseWindow)
        tilt: root.tilt
        onRevealed: root.revealed()
        onActivated: root.closeRequested()
    }
}
