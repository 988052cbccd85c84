pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Templates as T
import Kelpa.Appearance

/// A short explanation below the item in which it is placed.
T.ToolTip {
    id: root

    /// Points. The toolkit measures several lines as if they were one.
    readonly property real wantedWidth: /\n/.test(root.text)
            ? Math.max(...root.text.split(/\n/).map(line => Math.ceil(metrics.advanceWidth(line)) + 1))
            : root.implicitContentWidth

    delay: Theme.tipDelay
    x: parent ? Math.round((parent.width - width) / 2) : 0
    y: parent ? parent.height + Theme.tiny : 0
    margins: Theme.small
    horizontalPadding: 10
    verticalPadding: 6
    implicitWidth: Math.min(Theme.grown(360), root.wantedWidth + leftPadding + rightPadding)
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

    FontMetrics {
        id: metrics

        font: Theme.caption
    }
}
