pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Templates as T
import Kelpa.Appearance

/// A line between the groups of a menu.
T.MenuSeparator {
    id: root

    /// Whether the menu has it at the moment, as its group.
    property bool isOffered: true

    implicitWidth: implicitContentWidth + leftPadding + rightPadding
    implicitHeight: root.isOffered ? implicitContentHeight + topPadding + bottomPadding : 0
    visible: root.isOffered
    verticalPadding: Theme.tiny
    horizontalPadding: 10
    contentItem: Rectangle {
        implicitWidth: 40
        implicitHeight: 1
        color: Theme.outline
    }
}
