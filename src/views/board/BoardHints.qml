pragma ComponentBehavior: Bound

import QtQuick
import Kelpa.Appearance
import Kelpa.Controls
import Kelpa.Board

/// Which keys drive the board, and how to bring Kelpa forward: beside each other where there is room
/// for both, otherwise one above the other. Where the desktop tells of no double tap, a key of the
/// desktop's own takes its place: one that the desktop asks for in its own dialog where it has one,
/// otherwise the command for it can be copied.
Item {
    id: root

    required property bool isDoubleTapOffered
    required property DesktopNotice notice
    /// Whether the board teaches the double tap elsewhere at present.
    property bool isDoubleTapTaught: false
    /// Whether the desktop has a dialog in which a key is chosen, and has not been asked.
    property bool isShortcutOffered: false
    /// The key that was chosen there; empty for none that is known.
    property string shortcutKey

    readonly property bool isKeyWanted: root.notice.lacksDoubleTap && !root.isDoubleTapOffered
                                        && root.shortcutKey.length === 0
    readonly property bool isKeyOffered: root.isKeyWanted && root.isShortcutOffered
    /// Null while no key is wanted.
    property Item copyButton: null
    readonly property real roomForButton: root.copyButton === null
                                          ? 0 : root.copyButton.implicitWidth + Theme.small
    readonly property bool isOneLine: !doubleTapHint.visible
        || keyboardHint.implicitWidth + doubleTapHint.implicitWidth + root.roomForButton
           <= root.width - Theme.huge

    /// The person wants to choose a key in the dialog.
    signal shortcutsRequested()

    component Hint: AppText {
        width: Math.min(implicitWidth, parent.width - root.roomForButton)
        font: Theme.caption
        color: Theme.secondaryText
        Accessible.ignored: !visible
        Accessible.role: Accessible.StaticText
        Accessible.name: text
    }

    height: 24 + Theme.captionGrowth + (root.isOneLine ? 0 : doubleTapHint.height)

    Hint {
        id: keyboardHint

        text: ViewSettings.copy.text(CopyKey.KeyboardHint)
    }
    Hint {
        id: doubleTapHint

        x: root.isOneLine ? root.width - width - root.roomForButton : 0
        y: root.isOneLine ? 0 : keyboardHint.height
        text: ViewSettings.copy.text(root.isKeyOffered ? CopyKey.ShortcutsOffered
                                     : root.isKeyWanted ? CopyKey.DoubleTapNotHeard
                                                        : CopyKey.DoubleTapHint)
        visible: root.isDoubleTapOffered && !root.isDoubleTapTaught || root.isKeyWanted
    }
    Repeater {
        model: root.isKeyWanted ? 1 : 0
        delegate: LinkButton {
            anchors.left: doubleTapHint.right
            anchors.leftMargin: Theme.small
            anchors.verticalCenter: doubleTapHint.verticalCenter
            text: ViewSettings.copy.text(root.isKeyOffered ? CopyKey.ChooseKeys
                                                           : CopyKey.CopyCommand)
            onClicked: root.isKeyOffered ? root.shortcutsRequested() : root.notice.copyCommand()
        }
        onItemAdded: (index, item) => root.copyButton = item
        onItemRemoved: root.copyButton = null
    }
}
