pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Templates as T
import Kelpa.Appearance

/// A line between the groups of a menu.
T.MenuSeparator {
    id: root

    implicitWidth: implicitContentWidth + leftPadding + rightPadding
    implicitHeight: implicitContentHeight + topPadding + bottomPadding
    verticalPadding: Theme.tiny
    horizontalPadding: 10
    contentItem: Rectangle {
        implicitWidth: 40
        implicitHeight: 1
        color: Theme.outline
    }
}
