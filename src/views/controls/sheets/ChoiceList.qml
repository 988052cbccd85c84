pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Templates as T
import Kelpa.Controls

/// Has one of its rows chosen, by the arrow keys, Home and End, or a click; Return confirms it.
ListView {
    id: root

    required property string label

    signal confirmed

    boundsBehavior: Flickable.StopAtBounds
    clip: true
    activeFocusOnTab: true
    currentIndex: 0
    highlightMoveDuration: 0
    T.ScrollBar.vertical: AppScrollBar {}
    Accessible.role: Accessible.List
    Accessible.name: root.label
    Keys.onPressed: event => {
        event.accepted = true;
        if (event.key === Qt.Key_Return || event.key === Qt.Key_Enter)
            event.isAutoRepeat || root.confirmed();
        else if (event.key === Qt.Key_Home)
            root.currentIndex = 0;
        else if (event.key === Qt.Key_End)
            root.currentIndex = root.count - 1;
        else
            event.accepted = false;
    }
}
