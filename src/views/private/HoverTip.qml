pragma ComponentBehavior: Bound

import QtQuick
import Kelpa

/// Explains the control in which it is placed while the pointer rests there. Made only then.
Loader {
    id: root

    required property string text
    required property bool isHovered

    property bool isDismissed: false

    /// Who presses a control needs no explanation, nor one over the menu that it opens: until the
    /// pointer comes again.
    function dismiss(): void {
        root.isDismissed = true;
    }

    onIsHoveredChanged: if (!root.isHovered)
        root.isDismissed = false
    anchors.fill: parent
    active: root.isHovered && !root.isDismissed && root.text.length > 0
    source: Qt.resolvedUrl("AppToolTip.qml")
    onLoaded: {
        const tip = root.item as AppToolTip;
        tip.text = Qt.binding(() => root.text);
        tip.visible = true;
    }
}
