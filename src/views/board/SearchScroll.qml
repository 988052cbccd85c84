pragma ComponentBehavior: Bound

import QtQuick
import Kelpa.Appearance
import Kelpa.Scene
import Kelpa.Board

/// Scrolls the board to the first match of a search that is out of view, and back where it was when the
/// search ends, unless it has been scrolled or something has been selected meanwhile. The keyboard
/// selection stays where it is.
Item {
    id: root

    required property BoardController board
    required property WaterfallView targets
    required property BoardView view

    readonly property bool isWaiting: pause.running || root.isShowing || root.isReturning
    /// Milliseconds after the last letter, so that the board does not scroll at each of a word.
    readonly property int typingPause: 150

    /// Where the view goes back to; -1 for nowhere.
    property real origin: -1
    property bool isSearching: false
    /// Whether the match is still to be brought into view, or the view back to its origin.
    property bool isShowing: false
    property bool isReturning: false

    /// The view stays where it is.
    function giveUp(): void {
        pause.stop();
        growth.stop();
        root.isShowing = false;
        root.isReturning = false;
        root.origin = -1;
    }
    /// The place of the match in the view's content, and what of its surroundings fits with it.
    function placesOf(match: var): var {
        const row = root.board.targets.rowOfColumn(match.columnID);
        const target = root.targets.rowRect(row);
        const column = root.targets.itemAtRow(row) as GoalColumn;
        const part = column === null ? Qt.rect(0, 0, 0, 0)
                   : match.window >= 0 ? column.windowRect(match.window)
                   : match.todoID ? column.todoRect(match.todoID)
                   : Qt.rect(0, 0, target.width, Theme.columnListY);
        // Without an item, or below what its card shows, it is as near as the card.
        const isSeen = part.height > 0 && part.y + part.height <= target.height;
        const top = root.targets.y + target.y;
        const found = isSeen ? { "top": top + part.y, "length": part.height }
                             : { "top": top, "length": target.height };
        const around = target.height <= root.view.height - 2 * Theme.large
                ? { "top": top, "length": target.height } : found;
        return { "found": found, "around": around };
    }
    function show(): void {
        root.targets.layOut();
        // Cards that come into view may turn out to be of another height.
        root.isShowing = root.showMatch(root.board.search.firstMatch());
    }
    /// Whether the view scrolls to the match.
    function showMatch(match: var): bool {
        if (match.columnID === undefined)
            return false;
        const { found, around } = root.placesOf(match);
        const top = root.view.destination;
        const isInView = found.top >= top && found.top + found.length <= top + root.view.height;
        return !isInView && root.view.glide(root.view.revealing(around.top, around.length));
    }
    function goBack(): void {
        root.isReturning = root.origin >= 0;
        if (!root.isReturning)
            return;
        root.targets.layOut();
        // What the search has narrowed may have to grow again first.
        if (!root.view.glide(root.origin) && root.view.contentY === root.origin)
            root.giveUp();
    }
    function goOn(): void {
        if (root.view.isScrolling)
            return;
        if (root.isReturning)
            root.goBack();
        else if (root.isShowing)
            root.show();
    }

    Connections {
        target: root.board.search

        function onTextChanged(): void {
            const wasSearching = root.isSearching;
            root.isSearching = root.board.search.isSearching;
            root.isShowing = false;
            if (!root.isSearching) {
                pause.stop();
                root.goBack();
                growth.restart();
                return;
            }
            growth.stop();
            // On its way back it has not yet left the place of the search before.
            if (!wasSearching && root.origin < 0)
                root.origin = root.view.destination;
            root.isReturning = false;
            pause.restart();
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
    }
    Connections {
        target: root.view

        function onIsScrollingChanged(): void {
            next.start();
        }
        function onEndChanged(): void {
            next.start();
        }
        function onSteered(): void {
            root.giveUp();
        }
    }
    Timer {
        id: pause

        interval: root.typingPause
        onTriggered: root.show()
    }
    // Runs after what has just ended.
    Timer {
        id: next

        interval: 0
        onTriggered: root.goOn()
    }
    // What has not grown by then is shorter than it was.
    Timer {
        id: growth

        interval: 3 * Theme.mediumTime + 100
        onTriggered: root.giveUp()
    }
}
