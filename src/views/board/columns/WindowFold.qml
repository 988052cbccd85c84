pragma ComponentBehavior: Bound

import QtQuick
import Kelpa.Appearance
import Kelpa.Controls

/// The line below the cards of "Unsorted" that shows the windows that are folded away, or folds them. It
/// says whose they are.
PressButton {
    id: root

    required property int foldedCount
    required property string applications

    readonly property bool isFolded: root.foldedCount > 0
    /// Points; where the button's own text ends.
    property real labelEnd: 0

    implicitHeight: Theme.controlHeight
    text: root.isFolded ? ViewSettings.copy.showMoreWindows(root.foldedCount)
                        : ViewSettings.copy.text(CopyKey.ShowFewerWindows)
    Accessible.description: root.applications

    contentItem: Item {
        AppIcon {
            x: Theme.small
            anchors.verticalCenter: parent.verticalCenter
            name: root.isFolded ? "chevron-down" : "chevron-up"
            size: 14
            color: Theme.accentText
        }
        AppText {
            x: 2 * Theme.small + 14
            anchors.verticalCenter: parent.verticalCenter
            text: root.text
            font: Theme.captionEmphasized
            color: Theme.accentText
            onImplicitWidthChanged: root.labelEnd = x + implicitWidth
            Component.onCompleted: root.labelEnd = x + implicitWidth
        }
        AppText {
            x: root.labelEnd + Theme.medium
            width: root.width - Theme.small - x
            anchors.verticalCenter: parent.verticalCenter
            horizontalAlignment: Text.AlignRight
            text: root.applications
            font: Theme.caption
            color: Theme.secondaryText
        }
    }
    background: Rectangle {
        radius: Theme.controlRadius
        color: root.down ? Theme.press : root.hovered ? Theme.hover : "transparent"
        border.width: 1
        border.color: Theme.outline
    }

    FocusRing {}
}
