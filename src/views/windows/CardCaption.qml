pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Window
import Kelpa.Appearance
import Kelpa.Controls
import Kelpa.Windows

/// The application and the title of a card's window.
Item {
    id: root

    required property WindowController windows
    required property real windowID
    required property string ownerName
    required property string title
    /// Empty while it is not known.
    required property string applicationID
    /// Differs for each icon of the window.
    required property real iconRevision
    required property real previewRevision
    /// Whether the window itself is not on the screen.
    required property bool isAway
    required property bool isMinimized
    required property string virtualDesktop
    required property bool isAwaitingAnswer

    /// Whether one of its texts is cut short.
    readonly property bool isElided: titleText.truncated || ownerText.truncated
                                     || titleText.implicitWidth > titleText.width

    implicitHeight: 32 + 2 * Theme.captionGrowth
    onPreviewRevisionChanged: icon.lookAgain()

    Item {
        id: iconPlace

        width: 20
        height: 20
        anchors.verticalCenter: parent.verticalCenter
        opacity: root.isAway ? 0.6 : 1

        Image {
            id: icon

            // Without an icon, the image is a single empty pixel.
            readonly property bool isThere: status === Image.Ready && implicitWidth > 1
            /// Whether an icon has loaded: until then the symbol replaces it; the next icon shows
            /// at once.
            property bool wasThere: false
            readonly property bool isAbsent: status === Image.Ready && implicitWidth <= 1
            /// The picture of the window for which its icon was requested again.
            property real lookedAgainFor: 0

            // Some programs set their icon only after they have opened their window.
            function lookAgain(): void {
                if (icon.isAbsent)
                    icon.lookedAgainFor = root.previewRevision;
            }

            Component.onCompleted: icon.lookAgain()
            onStatusChanged: if (status === Image.Ready)
                icon.wasThere = icon.isThere

            anchors.fill: parent
            asynchronous: true
            fillMode: Image.PreserveAspectFit
            // An application that becomes known may have another icon than its window.
            source: "image://appicon/" + root.windowID + "/"
                    + encodeURIComponent(root.applicationID) + "/" + root.iconRevision + "/"
                    + icon.lookedAgainFor
            sourceSize.width: 20 * Screen.devicePixelRatio
            sourceSize.height: 20 * Screen.devicePixelRatio
            visible: isThere
        }
        AppIcon {
            anchors.fill: parent
            size: 20
            name: "app-window"
            visible: !icon.isThere && !icon.wasThere
        }
    }
    Column {
        anchors.left: iconPlace.right
        anchors.leftMargin: Theme.small
        anchors.right: parent.right
        anchors.verticalCenter: parent.verticalCenter
        spacing: 1

        AppText {
            id: titleText

            width: parent.width
            text: root.windows.titleLengths(root.title)
            font: Theme.captionStrong
            color: root.isAway ? Theme.secondaryText : Theme.text
        }
        // Placed beside the shorter of the two texts.
        Item {
            width: parent.width
            height: ownerText.height

            AppText {
                id: ownerText

                width: marks.x - Theme.tiny
                text: root.ownerName
                font: Theme.caption
                color: Theme.secondaryText
            }
            CardMarks {
                id: marks

                anchors.right: parent.right
                anchors.verticalCenter: parent.verticalCenter
                virtualDesktop: root.virtualDesktop
                isMinimized: root.isMinimized
                isAwaitingAnswer: root.isAwaitingAnswer
                // The name of an application gives way to that of a virtual desktop.
                room: Math.max(parent.width * 2 / 3, parent.width - ownerText.implicitWidth - Theme.tiny)
            }
        }
    }
}
