pragma ComponentBehavior: Bound

import QtQuick
import Kelpa.Appearance
import Kelpa.Controls

/// One step of a first day: its number, which becomes a check mark, and what to do.
Item {
    id: root

    required property int number
    required property string text
    required property bool isDone
    /// Whether it is the first one that is left.
    required property bool isNext

    readonly property string status: root.isDone ? "completed" : ""
    /// The left edge of the text, in points of the step.
    readonly property alias textLeft: words.x
    default property alias content: extra.data

    implicitHeight: Math.max(disc.height, words.implicitHeight)
    Accessible.role: Accessible.StaticText
    Accessible.ignored: !visible
    Accessible.name: root.text
    Accessible.description: ViewSettings.copy.statusName(root.status)

    Rectangle {
        id: disc

        // A single line of the text has its middle at that of the disc, whichever is higher.
        y: Math.max(0, Math.floor((lineHeightOfFont.height - disc.height) / 2))
        width: 24
        height: 24
        radius: 12
        color: root.isDone ? "transparent" : root.isNext ? Theme.accent : "transparent"
        border.width: root.isNext && !root.isDone ? 0 : 1
        border.color: root.isDone ? Theme.done : Theme.fieldOutline

        AppText {
            anchors.centerIn: parent
            text: String(root.number)
            font: Theme.captionEmphasized
            color: root.isNext ? Theme.textOnAccent : Theme.secondaryText
            visible: !root.isDone
        }
        AppIcon {
            anchors.centerIn: parent
            name: "check"
            size: 14
            color: Theme.done
            visible: root.isDone
        }
    }
    Column {
        id: words

        anchors.left: disc.right
        anchors.leftMargin: Theme.medium
        anchors.right: parent.right
        spacing: Theme.small

        AppText {
            width: parent.width
            topPadding: Math.max(0, Math.floor((disc.height - lineHeightOfFont.height) / 2))
            text: root.text
            font: root.isNext ? Theme.bodyStrong : Theme.body
            color: root.isDone ? Theme.secondaryText : Theme.text
            wrapMode: Text.Wrap
            maximumLineCount: Math.ceil(3 * Theme.textGrowth)
            // A step that becomes the next one keeps its height.
            height: Math.max(implicitHeight, emphasized.implicitHeight)
            verticalAlignment: Text.AlignTop

            AppText {
                id: emphasized

                width: parent.width
                topPadding: parent.topPadding
                text: root.text
                font: Theme.bodyStrong
                wrapMode: Text.Wrap
                maximumLineCount: Math.ceil(3 * Theme.textGrowth)
                visible: false
            }
        }
        Item {
            id: extra

            width: parent.width
            height: childrenRect.height
            visible: !root.isDone && children.length > 0
        }
    }
    FontMetrics {
        id: lineHeightOfFont

        font: Theme.body
    }
}
