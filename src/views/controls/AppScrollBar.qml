pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Templates as T
import Kelpa.Appearance

/// A thin bar that shows while there is something to scroll.
T.ScrollBar {
    id: root

    implicitWidth: 8
    implicitHeight: 8
    padding: 1
    minimumSize: 0.08
    visible: root.size < 1
    Accessible.ignored: true

    contentItem: Rectangle {
        implicitWidth: 6
        implicitHeight: 6
        radius: 3
        color: Theme.text
        opacity: root.pressed ? Theme.pressedScrollBarOpacity
                              : root.hovered || root.active ? Theme.activeScrollBarOpacity
                                                            : Theme.scrollBarOpacity

        Behavior on opacity {
            NumberAnimation {
                duration: Theme.shortTime
            }
        }
    }
}
