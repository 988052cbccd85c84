pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Templates as T

/// What all buttons have in common: the Return key presses them too, a key that is held presses once,
/// and a click leaves the keyboard where it is.
T.Button {
    id: root

    /// So that the board leaves Space and Return to it.
    readonly property bool isButton: true

    focusPolicy: root.enabled ? Qt.TabFocus : Qt.NoFocus
    Accessible.name: root.text
    // The toolkit has no other word for one that cannot be pressed now.
    Accessible.focusable: root.enabled
    Accessible.ignored: !root.visible
    Accessible.onPressAction: if (root.enabled)
        root.clicked()
    Keys.onReturnPressed: event => {
        if (!event.isAutoRepeat)
            root.clicked();
    }
    Keys.onEnterPressed: event => {
        if (!event.isAutoRepeat)
            root.clicked();
    }
    Keys.onReleased: event => event.accepted = event.isAutoRepeat
}
