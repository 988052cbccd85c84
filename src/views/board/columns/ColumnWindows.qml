pragma ComponentBehavior: Bound

import QtQuick
import Kelpa.Appearance
import Kelpa.Scene
import Kelpa.Windows
import Kelpa.Board

/// The windows of a column: their cards, the fold of "Unsorted" below them, or the place that says why
/// there are none.
Item {
    id: root

    required property WindowController windows
    required property BoardDragSource dragSource
    required property WindowListModel model
    required property int windowCount
    required property int foldedCount
    required property string foldedApplications
    required property bool isUnfolded
    required property bool isSearchedEmpty
    required property int pinnedRow
    required property real visibleFrom
    required property real visibleTo

    readonly property bool isRestless: cards.isRestless
    readonly property bool hasFold: root.foldedCount > 0 || root.isUnfolded

    signal menuRequested(windowID: real, card: Item, place: rect)

    function rowRect(row: int): rect {
        return cards.rowRect(row);
    }
    function layOut(): void {
        cards.layOut();
    }
    function itemAtRow(row: int): Item {
        return cards.itemAtRow(row);
    }

    implicitHeight: root.windowCount === 0 ? emptyPlace.height
                    : cards.implicitHeight + (root.hasFold ? Theme.small + Theme.controlHeight : 0)
    height: root.implicitHeight

    ColumnCards {
        id: cards

        width: root.width
        visibleFrom: root.visibleFrom
        visibleTo: root.visibleTo
        pinnedRow: root.pinnedRow
        model: root.model
        windows: root.windows
        dragSource: root.dragSource
        onMenuRequested: (windowID, card, place) => root.menuRequested(windowID, card, place)
    }
    Repeater {
        model: root.hasFold ? 1 : 0
        delegate: WindowFold {
            id: fold

            y: cards.implicitHeight + Theme.small
            width: root.width
            foldedCount: root.foldedCount
            applications: root.foldedApplications
            onClicked: {
                secondPress.awaitAt(fold.mapToItem(null, fold.pressX, fold.pressY));
                root.windows.setUnsortedUnfolded(root.foldedCount > 0);
            }
        }
    }
    // What comes below the pointer then takes no second press at the same place: it might close a window.
    MouseArea {
        id: secondPress

        function awaitAt(place: point): void {
            secondPress.x = place.x - secondPress.width / 2;
            secondPress.y = place.y - secondPress.height / 2;
            doubleClick.restart();
        }

        parent: root.Window.contentItem
        width: 2 * Application.styleHints.startDragDistance
        height: secondPress.width
        z: 1
        visible: doubleClick.running
        onPressed: doubleClick.restart()

        Timer {
            id: doubleClick

            interval: Application.styleHints.mouseDoubleClickInterval
        }
    }
    EmptyWindowPlace {
        id: emptyPlace

        width: root.width
        visible: root.windowCount === 0
        isSearchedEmpty: root.isSearchedEmpty
        areWindowsListed: root.windows.areListed
    }
}
