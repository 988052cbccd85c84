pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Layouts
import Kelpa.Appearance
import Kelpa.Controls
import Kelpa.Board

/// The name of the program, the search, and the controls of the board as a whole.
Item {
    id: root

    required property BoardController board

    /// The width in points at which the controls show all of their texts beside a short search
    /// field.
    readonly property real wantedWidth: 2 * Theme.boardMargin + name.implicitWidth + Theme.small
                                        + search.Layout.minimumWidth + 2 * Theme.controlHeight
                                        + filterButton.fullWidth + languageButton.fullWidth
                                        + addButton.fullWidth + 6 * controls.spacing

    signal newGoalRequested

    /// Moves the keyboard from the field to the first window found.
    function goToFound(): void {
        if (search.isSearching && !search.isComposing && root.board.selectFirstWindow())
            search.focus = false;
    }

    Shortcut {
        sequence: "Ctrl+F"
        onActivated: {
            search.forceActiveFocus(Qt.ShortcutFocusReason);
            search.selectAll();
        }
    }

    implicitHeight: subtitle.y + subtitle.height + hints.height

    RowLayout {
        id: controls

        anchors.left: parent.left
        anchors.right: parent.right
        anchors.leftMargin: Theme.boardMargin
        anchors.rightMargin: Theme.boardMargin
        y: Theme.medium
        height: 36
        spacing: Theme.small

        AppText {
            id: name

            Layout.fillWidth: true
            Layout.minimumWidth: implicitWidth
            Layout.rightMargin: Theme.small
            text: ViewSettings.copy.text(CopyKey.ProductName)
            font: Theme.title
            Accessible.ignored: !visible
            Accessible.role: Accessible.Heading
            Accessible.name: text
        }
        SearchField {
            id: search

            Layout.fillWidth: true
            Layout.preferredWidth: 280
            Layout.minimumWidth: 150
            Layout.maximumWidth: 280
            label: ViewSettings.copy.text(CopyKey.SearchWindowsOrApps)
            placeholderText: ViewSettings.copy.text(CopyKey.SearchWindowsOrApps)
            clearLabel: ViewSettings.copy.text(CopyKey.ClearSearch)
            text: root.board.searchText
            onTextChanged: root.board.searchText = text
            // The keys go to the board again.
            onDismissed: search.focus = false
            onCommitted: root.goToFound()
            Keys.onDownPressed: root.goToFound()
        }
        IconButton {
            symbol: "rotate-cw"
            text: ViewSettings.copy.text(CopyKey.RefreshWindows)
            onClicked: root.board.refresh()
        }
        IconButton {
            symbol: root.board.isAutoSortingGoals ? "arrow-up-down-circle-filled" : "arrow-up-down-circle"
            text: ViewSettings.copy.text(CopyKey.AutoSortGoals)
            checkable: true
            checked: root.board.isAutoSortingGoals
            onClicked: root.board.toggleAutoSortingGoals()
        }
        HideEmptyButton {
            id: filterButton

            board: root.board
            isCompact: root.wantedWidth - languageButton.fullWidth + Theme.controlHeight > root.width
        }
        LanguageButton {
            id: languageButton

            board: root.board
            isCompact: root.wantedWidth > root.width
        }
        AppButton {
            id: addButton

            symbol: "plus"
            text: ViewSettings.copy.text(CopyKey.NewGoal)
            isPrimary: true
            onClicked: root.newGoalRequested()
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
        height: implicitHeight + Theme.tiny
        text: ViewSettings.copy.text(CopyKey.Subtitle)
        color: Theme.secondaryText
        Accessible.ignored: !visible
        Accessible.role: Accessible.StaticText
        Accessible.name: text
    }
    BoardHints {
        id: hints

        anchors.left: parent.left
        anchors.right: parent.right
        anchors.top: subtitle.bottom
        anchors.leftMargin: Theme.boardMargin
        anchors.rightMargin: Theme.boardMargin
        isDoubleTapOffered: root.board.isDoubleTapOffered
    }
}
