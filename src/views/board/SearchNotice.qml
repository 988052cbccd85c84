pragma ComponentBehavior: Bound

import QtQuick
import Kelpa.Appearance
import Kelpa.Controls
import Kelpa.Board

/// Says in large that a search narrows the windows of the board, to a person who comes back to it.
Rectangle {
    id: root

    required property SearchController search

    readonly property string text: ViewSettings.copy.onlyMatchesShown(root.search.text)

    implicitHeight: Theme.controlHeight + 2 * Theme.medium
    radius: Theme.cardRadius
    color: Theme.warningGround
    Accessible.role: Accessible.AlertMessage
    Accessible.ignored: !visible
    Accessible.name: root.text

    Announcement {
        text: root.text
    }

    AppIcon {
        x: Theme.large
        anchors.verticalCenter: parent.verticalCenter
        name: "search"
        size: 22
        color: Theme.warning
    }
    AppText {
        anchors.left: parent.left
        anchors.leftMargin: Theme.large + 22 + Theme.medium
        anchors.right: clearButton.left
        anchors.rightMargin: Theme.large
        anchors.verticalCenter: parent.verticalCenter
        text: root.text
        font: Theme.heading
    }
    AppButton {
        id: clearButton

        anchors.right: parent.right
        anchors.rightMargin: Theme.large
        anchors.verticalCenter: parent.verticalCenter
        text: ViewSettings.copy.text(CopyKey.ClearSearch)
        onClicked: root.search.text = ""
    }
}
