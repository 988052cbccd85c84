pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Templates as T
import Kelpa

/// Explains the control in which it is placed while the pointer rests there. Made only then.
Item {
    id: root

    required property string text
    required property bool isHovered

    anchors.fill: parent

    Component {
        id: tip

        T.ToolTip {
            text: root.text
            visible: true
            delay: Theme.tipDelay
            x: Math.round((root.width - width) / 2)
            y: root.height + Theme.tiny
            margins: Theme.small
            horizontalPadding: 10
            verticalPadding: 6
            implicitWidth: Math.min(360, implicitContentWidth + leftPadding + rightPadding)
            implicitHeight: implicitContentHeight + topPadding + bottomPadding
            closePolicy: T.Popup.CloseOnEscape

            contentItem: Text {
                text: root.text
                textFormat: Text.PlainText
                font: Theme.caption
                color: Theme.window
                wrapMode: Text.Wrap
            }
            background: Rectangle {
                radius: Theme.smallRadius
                color: Theme.text
            }
        }
    }
    Loader {
        anchors.fill: parent
        active: root.isHovered && root.text.length > 0
        sourceComponent: tip
    }
}
