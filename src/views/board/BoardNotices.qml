pragma ComponentBehavior: Bound

import QtQuick
import Kelpa.Appearance
import Kelpa.Scene
import Kelpa.Board

/// What a person has to know before the board, one below the other: trouble with its file, a language that
/// may be wanted, what keeps the board from windows, and a search from before.
Column {
    id: root

    required property BoardController board

    // Created on first use.
    property TroubleBanner troubleBanner: null

    readonly property bool isMissingPermission: root.board.needsScreenCapture
            || root.board.needsAccessibility || root.board.needsWindowManager || root.board.needsComposite
    readonly property bool isEmpty: !place.visible && !root.board.languageOffer.isOpen
                                    && !root.isMissingPermission && !root.board.desktopNotice.isOpen
                                    && !root.board.search.isOld

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
    Repeater {
        model: root.board.languageOffer.isOpen ? 1 : 0
        delegate: LanguageOfferLine {
            width: root.width
            offer: root.board.languageOffer
        }
    }
    OptionalItem {
        isWanted: root.isMissingPermission

        PermissionBanner {
            width: root.width
            board: root.board
        }
    }
    Repeater {
        model: root.board.desktopNotice.isOpen ? 1 : 0
        delegate: DesktopBanner {
            width: root.width
            notice: root.board.desktopNotice
        }
    }
    Repeater {
        model: root.board.search.isOld ? 1 : 0
        delegate: SearchNotice {
            width: root.width
            search: root.board.search
        }
    }
    Component {
        id: troubleBannerType

        TroubleBanner {
            width: place.width
            trouble: root.board.trouble
            backups: root.board.backups
        }
    }
    Connections {
        target: root.board.trouble

        function onTroubleChanged(): void {
            root.showTrouble();
        }
    }
}
