pragma ComponentBehavior: Bound

import QtQuick
import Kelpa.Appearance
import Kelpa.Controls

/// Which keys drive the board, and how to bring Kelpa forward: beside each other where there is room
/// for both, otherwise one above the other.
Item {
    id: root

    required property bool isDoubleTapOffered

    readonly property bool isOneLine: !root.isDoubleTapOffered
        || keyboardHint.implicitWidth + doubleTapHint.implicitWidth <= root.width - Theme.huge

    component Hint: AppText {
        width: Math.min(implicitWidth, parent.width)
        font: Theme.caption
        color: Theme.secondaryText
        Accessible.ignored: !visible
        Accessible.role: Accessible.StaticText
        Accessible.name: text
    }

    height: root.isOneLine ? 24 : 24 + doubleTapHint.height

    Hint {
        id: keyboardHint

        text: ViewSettings.copy.text(CopyKey.KeyboardHint)
    }
    Hint {
        id: doubleTapHint

        x: root.isOneLine ? root.width - width : 0
        y: root.isOneLine ? 0 : keyboardHint.height
        text: ViewSettings.copy.text(CopyKey.DoubleTapHint)
        visible: root.isDoubleTapOffered
    }
}
