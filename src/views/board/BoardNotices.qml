pragma ComponentBehavior: Bound

import QtQuick
import Kelpa.Appearance
import Kelpa.Board

/// What a person has to know about the board, one below the other above its cards.
Column {
    id: root

    required property BoardController board

    /// Whether the board came forward with a search from before.
    property bool isSearchOld: false

    readonly property bool isEmpty: !banner.visible && !searchNotice.active

    spacing: Theme.small
    bottomPadding: root.isEmpty ? 0 : Theme.large

    PermissionBanner {
        id: banner

        width: parent.width
        board: root.board
    }
    Loader {
        id: searchNotice

        width: parent.width
        active: root.isSearchOld
        visible: searchNotice.active
        sourceComponent: SearchNotice {
            search: root.board.search
        }
    }
    Connections {
        target: root.Window.window
        ignoreUnknownSignals: true

        function onActiveChanged(): void {
            if (root.Window.active)
                root.isSearchOld = root.board.search.isSearching;
        }
    }
    Connections {
        target: root.board.search

        function onTextChanged(): void {
            root.isSearchOld = false;
        }
    }
}
