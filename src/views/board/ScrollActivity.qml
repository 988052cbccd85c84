pragma ComponentBehavior: Bound

import QtQuick
import Kelpa.Board

/// Tells the board that a view of it moves, so that nothing else takes the time it needs.
Connections {
    id: root

    required property BoardController board
    required property Flickable view

    target: root.view

    function onContentXChanged(): void {
        root.board.noteScrollActivity();
    }
    function onContentYChanged(): void {
        root.board.noteScrollActivity();
    }
}
