pragma ComponentBehavior: Bound

import QtQuick
import Kelpa.Appearance
import Kelpa.Board

/// What a person has to know before the board, one below the other: trouble with its file, what keeps it
/// from windows, and a search from before.
Column {
    id: root

    required property BoardController board

    /// Whether the board came forward with a search from before.
    property bool isSearchOld: false

    // Created on first use.
    property TroubleBanner troubleBanner: null

    readonly property bool isEmpty: !place.visible && !banner.visible && !searchNotice.active

    function showTrouble(): void {
        if (root.troubleBanner === null && root.board.trouble.isThere)
            root.troubleBanner = troubleBannerType.createObject(place) as TroubleBanner;
    }

    spacing: Theme.small
    bottomPadding: root.isEmpty ? 0 : Theme.large
    Component.onCompleted: root.showTrouble()

    Item {
        id: place

        width: root.width
        height: root.troubleBanner?.implicitHeight ?? 0
        // Not before the banner is whole: assistive programs read out what begins to show.
        visible: root.troubleBanner !== null && root.board.trouble.isThere
    }
    PermissionBanner {
        id: banner

        width: root.width
        board: root.board
    }
    Loader {
        id: searchNotice

        width: root.width
        active: root.isSearchOld
        visible: searchNotice.active
        sourceComponent: SearchNotice {
            search: root.board.search
        }
    }
    Component {
        id: troubleBannerType

        TroubleBanner {
            width: place.width
            trouble: root.board.trouble
        }
    }
    Connections {
        target: root.board.trouble

        function onTroubleChanged(): void {
            root.showTrouble();
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
