pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Window
import Kelpa

/// A symbol of the interface in one colour.
Image {
    id: root

    required property string name
    property color color: Theme.secondaryText
    property int size: Theme.symbolSize

    width: root.size
    height: root.size
    source: root.name.length > 0
            ? "image://symbol/" + root.name + "/" + String(root.color).slice(1) : ""
    sourceSize.width: root.size * Screen.devicePixelRatio
    sourceSize.height: root.size * Screen.devicePixelRatio
    Accessible.ignored: true
}
