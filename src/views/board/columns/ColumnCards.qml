pragma ComponentBehavior: Bound

import QtQuick
import Kelpa.Appearance
import Kelpa.Scene
import Kelpa.Windows

/// The cards of a column's windows, in two columns, as the arrow keys walk them.
WaterfallView {
    id: root

    required property WindowController windows
    required property BoardDragSource dragSource

    signal menuRequested(windowID: real, card: Item, place: rect)

    height: implicitHeight
    fixedColumnCount: 2
    fixedItemHeight: Theme.windowCardHeight
    spacing: Theme.small
    motionTime: Theme.mediumTime

    WaterfallDelegate {
        WindowCard {
            id: card

            windows: root.windows
            dragSource: root.dragSource
            onMenuRequested: (item, place) => root.menuRequested(card.windowID, item, place)
        }
    }
}
