pragma ComponentBehavior: Bound

import QtQuick
import Kelpa.Appearance
import Kelpa.Controls

/// The visible part of a `FocusRing`, created when the ring first shows.
Rectangle {
    id: root

    required property FocusRing ring

    x: -root.ring.margin
    y: -root.ring.margin
    width: (root.ring.parent?.width ?? 0) + 2 * root.ring.margin
    height: (root.ring.parent?.height ?? 0) + 2 * root.ring.margin
    radius: root.ring.radius < 0 ? Theme.controlRadius + root.ring.margin
                                 : root.ring.radius
    color: "transparent"
    border.width: 2
    border.color: root.ring.color.a > 0 ? root.ring.color : Theme.focus
    visible: root.ring.isShown
}
