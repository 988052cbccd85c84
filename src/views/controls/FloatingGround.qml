pragma ComponentBehavior: Bound

import QtQuick
import Kelpa.Appearance
import Kelpa.Scene

/// The ground of an item that floats over the board, with a soft shadow around it.
Rectangle {
    id: root

    color: Theme.popup
    border.width: 1
    border.color: Theme.outline

    FloatingShadow {
        z: -1
        anchors.fill: parent
        radius: root.radius
        reach: Theme.large
        drop: Theme.tiny
        color: Theme.floatingShadow
    }
}
