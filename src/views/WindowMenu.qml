pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Templates as T
import Kelpa

/// Moves a window to another column.
AppMenu {
    id: root

    required property BoardController board

    property int windowID
    property string columnID

    title: root.board.copy.text(CopyKey.MoveToGoal)

    T.MenuItem {
        id: heading

        implicitWidth: implicitContentWidth + leftPadding + rightPadding
        implicitHeight: 28
        leftPadding: 10
        rightPadding: 14
        enabled: false
        text: root.title
        contentItem: AppText {
            text: heading.text
            font: Theme.bodyStrong
        }
    }
    Instantiator {
        model: root.board.moveTargets
        delegate: AppMenuItem {
            id: item

            required property string columnID
            required property string title
            required property string accent
            required property bool isUnassigned

            readonly property bool isCurrent: item.columnID === root.columnID

            text: item.title
            symbol: item.isCurrent ? "check" : "circle"
            symbolColor: item.isUnassigned ? Theme.secondaryText : Theme.accentColor(item.accent)
            Accessible.checkable: true
            Accessible.checked: item.isCurrent
            onTriggered: root.board.moveWindow(root.windowID, item.columnID)
        }
        // Below the heading.
        onObjectAdded: (index, object) => root.insertItem(index + 1, object)
        onObjectRemoved: (index, object) => root.removeItem(object)
    }
}
