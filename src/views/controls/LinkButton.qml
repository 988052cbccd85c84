pragma ComponentBehavior: Bound

import QtQuick
import Kelpa.Appearance
import Kelpa.Controls

/// A button within a line of text, which leads on from what the line says.
PressButton {
    id: root

    implicitWidth: implicitContentWidth
    implicitHeight: implicitContentHeight
    font: Theme.captionStrong

    contentItem: AppText {
        text: root.text
        font.family: root.font.family
        font.pixelSize: root.font.pixelSize
        font.weight: root.font.weight
        font.underline: root.hovered || root.visualFocus
        color: Theme.accentText
    }

    FocusRing {
        radius: 4
        margin: 2
    }
}
