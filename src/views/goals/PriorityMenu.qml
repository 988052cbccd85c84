pragma ComponentBehavior: Bound

import QtQuick
import Kelpa.Appearance
import Kelpa.Controls
import Kelpa.Goals

/// Sets how urgent a goal is.
AppMenu {
    id: root

    required property GoalController goals

    property string columnID
    property string priority

    title: ViewSettings.copy.text(CopyKey.Priority)

    Instantiator {
        model: root.goals.priorities
        delegate: AppMenuItem {
            id: item

            required property string modelData

            text: ViewSettings.copy.priorityName(item.modelData)
            symbol: root.goals.prioritySymbol(item.modelData)
            symbolColor: Theme.priorityColor(item.modelData)
            isChoice: true
            hasMarkPlace: true
            isChosen: item.modelData === root.priority
            onTriggered: root.goals.setPriority(root.columnID, item.modelData)
        }
        onObjectAdded: (index, object) => root.insertItem(index, object)
        onObjectRemoved: (index, object) => root.removeItem(object)
    }
}
