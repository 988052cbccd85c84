pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Templates as T

/// The common behaviour of all buttons: the Return key presses them too, a held key presses once,
/// and a click leaves the keyboard where it is.
T.Button {
    id: root

    /// Makes the board leave Space and Return to the button.
    readonly property bool isButton: true

    focusPolicy: root.enabled ? Qt.TabFocus : Qt.NoFocus
    Accessible.name: root.text
    // The toolkit has no other property for a button that cannot be pressed now.
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
