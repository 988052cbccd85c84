pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Window
import Kelpa.Appearance
import Kelpa.Scene
import Kelpa.Board

/// Scrolls the board once, after the last letter of a search, to its first match if that is out of
/// view. Whatever a person does meanwhile ends that. A card whose fade would cover the match expands
/// until the search ends. Selection and focus stay where they are. It lies over the view and notices
/// presses in it.
Item {
    id: root

    required property BoardController board
    required property WaterfallView targets
    required property BoardView view
    required property BoardDragSource dragSource

    /// Whether a button is held, or something is dragged: then everything stays where it is.
    readonly property bool isHeld: presses.active || root.dragSource.isDragging
    readonly property bool isWaiting: pause.running || correction.running
    /// Milliseconds after the last letter, so that the board does not scroll at each of a word.
    readonly property int typingPause: 150
    /// The column that expands for the match; empty for none.
    property string grownColumnID

    /// The board stays where it is.
    function giveUp(): void {
        pause.stop();
        if (!correction.running)
            return;
        correction.stop();
        root.view.halt();
    }
    /// The match in the coordinates of its column; of no height while that has no item.
    function partOf(match: var, item: Item): rect {
        const column = item as GoalColumn;
        return column === null ? Qt.rect(0, 0, 0, 0)
             : match.window >= 0 ? column.windowRect(match.window)
             : match.todoID ? column.todoRect(match.todoID)
             : Qt.rect(0, 0, column.width, Theme.columnListY);
    }
    /// Whether the match's column begins to expand. One that has expanded stays so while the match is
    /// within it.
    function grow(match: var): bool {
        if (match.columnID === root.grownColumnID || root.isHeld)
            return false;
        root.grownColumnID = "";
        if (match.columnID === undefined)
            return false;
        root.targets.layOut();
        const row = root.board.targets.rowOfColumn(match.columnID);
        const column = root.targets.itemAtRow(row) as GoalColumn;
        if (column === null)
            return false;
        const part = root.partOf(match, column);
        const shown = Math.max(column.collapsedHeight, column.grantedHeight);
        if (column.naturalHeight <= shown || part.y + part.height <= shown - Theme.fadeHeight)
            return false;
        root.grownColumnID = match.columnID;
        return true;
    }
    /// The place of the match in the view's content, and that of its card if all of that fits.
    function placesOf(match: var): var {
        const row = root.board.targets.rowOfColumn(match.columnID);
        const target = root.targets.rowRect(row);
        const part = root.partOf(match, root.targets.itemAtRow(row) as GoalColumn);
        // Without an item, or below what its card shows, it is as near as the card.
        const isSeen = part.height > 0 && part.y + part.height <= target.height;
        const top = root.targets.y + target.y;
        const found = isSeen ? { "top": top + part.y, "length": part.height }
                             : { "top": top, "length": target.height };
        const around = target.height <= root.view.height - 2 * Theme.large
                ? { "top": top, "length": target.height } : found;
        return { "found": found, "around": around };
    }
    /// Whether the view scrolls to the match, which may be none.
    function show(match: var): bool {
        if (match.columnID === undefined || root.isHeld)
            return false;
        root.targets.layOut();
        const { found, around } = root.placesOf(match);
        const top = root.view.contentY;
        const isInView = found.top >= top && found.top + found.length <= top + root.view.height;
        return !isInView && root.view.glide(root.view.revealing(around.top, around.length));
    }

    Connections {
        target: root.board.search

        function onTextChanged(): void {
            root.giveUp();
            if (root.board.search.isSearching)
                pause.start();
            else
                root.grownColumnID = "";
        }
    }
    Connections {
        target: root.board

        function onSelectionChanged(): void {
            root.giveUp();
        }
        function onSelectionRequested(): void {
            root.giveUp();
        }
        function onChangeRestored(): void {
            root.giveUp();
        }
    }
    Connections {
        target: root.board.todos

        function onTodoRequested(): void {
            root.giveUp();
        }
    }
    Connections {
        target: root.view

        function onSteered(): void {
            root.giveUp();
        }
    }
    Connections {
        target: root.Window.window
        ignoreUnknownSignals: true

        function onActiveFocusItemChanged(): void {
            if (root.targets.rowOf(root.Window.activeFocusItem) >= 0)
                root.giveUp();
        }
    }
    PointHandler {
        id: presses

        // The release that ends a drag may not arrive.
        enabled: !root.dragSource.isDragging
        acceptedButtons: Qt.AllButtons
        onActiveChanged: if (presses.active)
            root.giveUp()
    }
    Timer {
        id: pause

        interval: root.typingPause
        onTriggered: {
            const match = root.board.search.firstMatch();
            const isGrowing = root.grow(match);
            if (root.show(match) || isGrowing)
                correction.start();
        }
    }
    // The card may turn out to be of another height once it is in view.
    Timer {
        id: correction

        interval: Theme.mediumTime + 50
        onTriggered: {
            const match = root.board.search.firstMatch();
            // At most once: it has expanded then.
            if (root.grow(match))
                correction.start();
            root.show(match);
        }
    }
}
