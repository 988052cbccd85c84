pragma ComponentBehavior: Bound

import QtQuick
import Kelpa

/// The ground of what floats over the board, with a soft shadow around it.
Rectangle {
    id: root

    color: Theme.popup
    border.width: 1
    border.color: Theme.outline

    Repeater {
        // Points around the ground; a blur would need a graphics device.
        model: [1, 3, 6, 10]
        delegate: Rectangle {
            required property int modelData

            z: -1
            anchors.fill: root
            anchors.margins: -modelData
            anchors.topMargin: 3 - modelData
            anchors.bottomMargin: -3 - modelData
            radius: root.radius + modelData
            color: Theme.floatingShadow
        }
    }
}
