pragma ComponentBehavior: Bound

import QtQuick
import Kelpa.Appearance
import Kelpa.Controls
import Kelpa.Windows

/// The picture of a card's window or, without one, the reason for its absence.
Item {
    id: root

    required property WindowController windows
    required property real windowID
    required property real revision
    required property string message
    /// The colour of the card below the picture.
    required property color cardGround
    /// The rotation with which round corners are drawn: see `WindowCard`.
    property real tilt: 0

    /// Whether there is more of the message than shows.
    readonly property bool isMessageCut: root.revision === 0 && reason.truncated

    /// How wide the picture is, or what stands in its place.
    readonly property real shownWidth: ground.width

    implicitHeight: Theme.previewSize.height

    Rectangle {
        id: ground

        anchors.horizontalCenter: parent.horizontalCenter
        // Not beside a picture, where it would be a sliver at each side.
        width: picture.visible ? picture.width : root.width
        height: root.height
        radius: 5
        // Looks translucent, but is opaque: a translucent ground would be blended with the card
        // below.
        color: Qt.tint(root.cardGround, Theme.previewGround)
        rotation: root.tilt
    }
    WindowPreview {
        id: picture

        anchors.horizontalCenter: parent.horizontalCenter
        width: Theme.previewSize.width
        height: Theme.previewSize.height
        radius: ground.radius
        windows: root.windows
        windowID: root.windowID
        revision: root.revision
        visible: root.revision !== 0
        Accessible.role: Accessible.Graphic
        Accessible.ignored: !visible
        Accessible.name: ViewSettings.copy.text(CopyKey.WindowPreview)
    }
    // A white window would have no edge on the card.
    Rectangle {
        anchors.fill: picture
        radius: picture.radius
        color: "transparent"
        border.width: 1
        border.color: Theme.outline
        visible: picture.visible
        rotation: root.tilt
    }
    Column {
        anchors.centerIn: parent
        width: parent.width - 2 * Theme.small
        spacing: 2
        visible: root.revision === 0

        AppIcon {
            anchors.horizontalCenter: parent.horizontalCenter
            name: "layers"
            size: 14
            // Larger texts take its place.
            visible: Theme.textGrowth === 1
                     || reason.height + parent.spacing + height <= Theme.previewSize.height
        }
        AppText {
            id: reason

            width: parent.width
            horizontalAlignment: Text.AlignHCenter
            text: root.message
            font: Theme.caption
            color: Theme.secondaryText
            wrapMode: Text.Wrap
            // The lines are close together, so that the longest message of any language fits.
            lineHeightMode: Text.FixedHeight
            lineHeight: Theme.closeLineHeight
            maximumLineCount: Math.min(4, Math.floor(Theme.previewSize.height / Theme.closeLineHeight))
            Accessible.role: Accessible.StaticText
            Accessible.ignored: !visible || text === ""
            Accessible.name: text
        }
    }
}
