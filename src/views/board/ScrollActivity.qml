pragma ComponentBehavior: Bound

import QtQuick
import Kelpa.Board

/// Reports to the board that a view of it scrolls, so that background work pauses meanwhile.
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
