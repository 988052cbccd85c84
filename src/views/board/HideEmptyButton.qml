pragma ComponentBehavior: Bound

import QtQuick
import Kelpa.Appearance
import Kelpa.Controls
import Kelpa.Board

/// Hides the goals without open todos, or shows them again. It is as wide as the longer of its two
/// texts, so that its neighbours stay in place.
AppButton {
    id: root

    required property BoardController board

    readonly property bool isHiding: root.board.isHidingGoalsWithoutOpenTodos

    symbol: root.isHiding ? "list-filter-circle-filled" : "list-filter-circle"
    // The width of a text is rounded up.
    minimumTextWidth: Math.ceil(Math.max(hideEmpty.advanceWidth, showAll.advanceWidth)) + 1
    isOn: root.isHiding
    text: root.isHiding ? showAll.text : hideEmpty.text
    help: ViewSettings.copy.text(root.isHiding ? CopyKey.ShowAllHelp : CopyKey.HideEmptyHelp)
    onClicked: root.board.toggleHidingGoalsWithoutOpenTodos()

    TextMetrics {
        id: hideEmpty

        font: Theme.body
        text: ViewSettings.copy.text(CopyKey.HideEmpty)
    }
    TextMetrics {
        id: showAll

        font: Theme.body
        text: ViewSettings.copy.text(CopyKey.ShowAll)
    }
}
