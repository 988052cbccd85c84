pragma ComponentBehavior: Bound

import QtQuick
import Kelpa.Appearance
import Kelpa.Controls
import Kelpa.Board

/// The name of the program, the search, and the controls of the board as a whole.
Item {
    id: root

    required property BoardController board

    /// Null while there is nothing to say.
    property SearchStatus status: null

    /// The width in points at which the controls show all of their texts beside a short search
    /// field.
    readonly property real wantedWidth: 2 * Theme.boardMargin + Math.ceil(name.implicitWidth)
                                        + Theme.small + search.minimumWidth
                                        + 2 * Theme.controlHeight
                                        + Math.ceil(filterButton.fullWidth)
                                        + Math.ceil(languageButton.fullWidth)
                                        + Math.ceil(addButton.fullWidth) + 6 * buttons.spacing

    signal newGoalRequested
    /// The keyboard goes on to the board, where a match is selected.
    signal matchSelected

    /// Moves the keyboard from the field to the first match.
    function goToFound(): void {
        if (search.isSearching && !search.isComposing && root.board.search.selectFirst())
            root.leaveSearch();
    }
    /// The same, and brings a window forward.
    function openFound(): void {
        if (search.isSearching && !search.isComposing && root.board.search.openFirst())
            root.leaveSearch();
    }
    function leaveSearch(): void {
        search.focus = false;
        root.matchSelected();
    }
    function enterSearch(): void {
        search.forceActiveFocus(Qt.ShortcutFocusReason);
        search.selectAll();
    }

    Shortcut {
        sequence: "Ctrl+F"
        onActivated: root.enterSearch()
    }
    Shortcut {
        sequences: ["Ctrl+Return", "Ctrl+Enter"]
        enabled: search.activeFocus
        autoRepeat: false
        onActivated: root.openFound()
    }
    Connections {
        target: root.board.search

        function onTypingStarted(): void {
            root.enterSearch();
        }
    }

    implicitHeight: subtitle.y + subtitle.height + hints.height

    Item {
        id: controls

        anchors.left: parent.left
        anchors.right: parent.right
        anchors.leftMargin: Theme.boardMargin
        anchors.rightMargin: Theme.boardMargin
        y: Theme.medium
        height: 36 + Theme.titleGrowth

        AppText {
            id: name

            anchors.verticalCenter: parent.verticalCenter
            width: Math.max(Math.ceil(implicitWidth), buttons.x - 2 * Theme.small)
            text: ViewSettings.copy.text(CopyKey.ProductName)
            font: Theme.title
            Accessible.ignored: !visible
            Accessible.role: Accessible.Heading
            Accessible.name: text
        }
        Row {
            id: buttons

            readonly property real widthOfButtons: refreshButton.width + sortButton.width
                                                   + filterButton.width + languageButton.width
                                                   + addButton.width

            x: Math.max(Math.ceil(name.implicitWidth) + 2 * Theme.small, parent.width - width)
            height: parent.height
            spacing: Theme.small

            SearchField {
                id: search

                readonly property real minimumWidth: 150
                readonly property real room: controls.width - Math.ceil(name.implicitWidth)
                                             - 2 * Theme.small - 5 * buttons.spacing
                                             - buttons.widthOfButtons

                anchors.verticalCenter: parent.verticalCenter
                width: Math.floor(Math.max(search.minimumWidth, Math.min(search.room, Theme.grown(280))))
                label: ViewSettings.copy.text(CopyKey.SearchWindowsOrApps)
                placeholderText: ViewSettings.copy.text(CopyKey.SearchWindowsOrApps)
                clearLabel: ViewSettings.copy.text(CopyKey.ClearSearch)
                text: root.board.search.text
                onTextChanged: root.board.search.text = text
                // The keys go to the board again.
                onDismissed: search.focus = false
                onCommitted: root.goToFound()
                Keys.onDownPressed: root.goToFound()
            }
            IconButton {
                id: refreshButton

                anchors.verticalCenter: parent.verticalCenter
                symbol: "rotate-cw"
                text: ViewSettings.copy.text(CopyKey.RefreshWindows)
                onClicked: root.board.refresh()
            }
            IconButton {
                id: sortButton

                anchors.verticalCenter: parent.verticalCenter
                symbol: root.board.isAutoSortingGoals ? "arrow-up-down-circle-filled" : "arrow-up-down-circle"
                text: ViewSettings.copy.text(CopyKey.AutoSortGoals)
                checkable: true
                checked: root.board.isAutoSortingGoals
                onClicked: root.board.toggleAutoSortingGoals()
            }
            HideEmptyButton {
                id: filterButton

                anchors.verticalCenter: parent.verticalCenter
                width: Math.ceil(implicitWidth)
                board: root.board
                isCompact: root.wantedWidth - languageButton.fullWidth + Theme.controlHeight > root.width
            }
            LanguageButton {
                id: languageButton

                anchors.verticalCenter: parent.verticalCenter
                width: Math.ceil(implicitWidth)
                board: root.board
                isCompact: root.wantedWidth > root.width
            }
            AppButton {
                id: addButton

                anchors.verticalCenter: parent.verticalCenter
                width: Math.ceil(implicitWidth)
                symbol: "plus"
                text: ViewSettings.copy.text(CopyKey.NewGoal)
                isPrimary: true
                onClicked: root.newGoalRequested()
            }
        }
    }
    // Placed below the controls: in no language is there room for it beside them in a narrow
    // window.
    AppText {
        id: subtitle

        anchors.left: parent.left
        anchors.right: parent.right
        anchors.top: controls.bottom
        anchors.leftMargin: Theme.boardMargin
        anchors.rightMargin: Theme.boardMargin
                             + (root.status !== null ? root.status.width + Theme.large : 0)
        height: implicitHeight + Theme.tiny
        text: ViewSettings.copy.text(CopyKey.Subtitle)
        color: Theme.secondaryText
        Accessible.ignored: !visible
        Accessible.role: Accessible.StaticText
        Accessible.name: text
    }
    // Below the field and the button that it belongs to. Most of the time there is nothing to say.
    Repeater {
        model: root.board.search.isSearching || root.board.search.hiddenGoalCount > 0 ? 1 : 0
        delegate: SearchStatus {
            anchors.right: root.right
            anchors.rightMargin: Theme.boardMargin
            anchors.verticalCenter: subtitle.verticalCenter
            search: root.board.search
        }
        onItemAdded: (index, item) => root.status = item as SearchStatus
        onItemRemoved: root.status = null
    }
    BoardHints {
        id: hints

        anchors.left: parent.left
        anchors.right: parent.right
        anchors.top: subtitle.bottom
        anchors.leftMargin: Theme.boardMargin
        anchors.rightMargin: Theme.boardMargin
        isDoubleTapOffered: root.board.isDoubleTapOffered
        isShortcutOffered: root.board.presence.shortcuts.isOffered
                           && !root.board.presence.shortcuts.isGiven
        shortcutKey: root.board.presence.shortcuts.key
        onShortcutsRequested: root.board.presence.shortcuts.choose()
        notice: root.board.desktopNotice
        isDoubleTapTaught: root.board.firstSteps.isOpen && root.board.firstSteps.isReturnOffered
    }
}
