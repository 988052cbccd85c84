pragma ComponentBehavior: Bound

import QtQuick
import Kelpa

/// How urgent a goal is.
AppMenu {
    id: root

    required property BoardController board

    property string columnID
    property string priority

    title: root.board.copy.text(CopyKey.Priority)

    Instantiator {
        model: root.board.todos.priorities
        delegate: AppMenuItem {
            id: item

            required property string modelData

            text: root.board.copy.priorityName(item.modelData)
            symbol: root.board.todos.prioritySymbol(item.modelData)
            symbolColor: Theme.priorityColor(item.modelData)
            isChoice: true
            hasMarkPlace: true
            isChosen: item.modelData === root.priority
            onTriggered: root.board.todos.setPriority(root.columnID, item.modelData)
        }
        onObjectAdded: (index, object) => root.insertItem(index, object)
        onObjectRemoved: (index, object) => root.removeItem(object)
    }
}
