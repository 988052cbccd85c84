pragma ComponentBehavior: Bound

import QtQuick
import Kelpa.Appearance
import Kelpa.Controls
import Kelpa.Board

/// What the search finds, with one step to what is hidden; without a search, how many goals are hidden.
Row {
    id: root

    required property SearchController search

    spacing: Theme.small

    AppText {
        id: counts

        text: root.search.isSearching
              ? ViewSettings.copy.foundCounts(root.search.windowCount, root.search.goalCount,
                                              root.search.todoCount)
              : ViewSettings.copy.hiddenGoals(root.search.hiddenGoalCount,
                                              root.search.hiddenGoalWithWindowsCount)
        font: Theme.caption
        color: Theme.secondaryText
        Accessible.ignored: !visible
        Accessible.role: Accessible.StaticText
        Accessible.name: text
    }
    LinkButton {
        anchors.baseline: counts.baseline
        visible: root.search.hiddenCount > 0
        text: ViewSettings.copy.moreInHiddenGoals(root.search.hiddenCount)
        onClicked: root.search.showHidden()
    }
}
