pragma ComponentBehavior: Bound

import QtQuick
import Kelpa.Appearance
import Kelpa.Controls

/// The button of a todo's menu. It covers the end of the title with the colour of the row, so that
/// the title keeps its width when the button appears.
IconButton {
    id: root

    /// The opaque colour of the row.
    required property color ground

    symbol: "ellipsis"
    size: Theme.todoButtonSize
    symbolSize: Theme.smallSymbolSize
    Accessible.role: Accessible.ButtonMenu

    Rectangle {
        z: -1
        anchors.fill: parent
        anchors.leftMargin: -Theme.medium
        visible: root.isShown
        gradient: Gradient {
            orientation: Gradient.Horizontal

            GradientStop {
                position: 0
                color: Qt.alpha(root.ground, 0)
            }
            GradientStop {
                position: 0.3
                color: root.ground
            }
        }
    }
}
