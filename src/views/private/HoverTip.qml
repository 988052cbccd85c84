pragma ComponentBehavior: Bound

import QtQuick
import Kelpa

/// Explains the control in which it is placed while the pointer rests there. Made only then.
Loader {
    id: root

    required property string text
    required property bool isHovered

    anchors.fill: parent
    active: root.isHovered && root.text.length > 0
    source: Qt.resolvedUrl("AppToolTip.qml")
    onLoaded: {
        const tip = root.item as AppToolTip;
        tip.text = root.text;
        tip.visible = true;
    }
}
