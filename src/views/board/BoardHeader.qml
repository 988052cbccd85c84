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

    /// Created on first use.
    property AppMenu languageMenu: null

    /// The width in points at which the controls show all of their texts beside a short search
    /// field.
    readonly property real wantedWidth: 2 * Theme.boardMargin + name.implicitWidth + Theme.small
                                        + search.Layout.minimumWidth + 2 * Theme.controlHeight
                                        + filterButton.fullWidth + languageButton.fullWidth
                                        + addButton.fullWidth + 6 * controls.spacing

    signal newGoalRequested

    function openLanguageMenu(button: Item): void {
        if (root.languageMenu === null)
            root.languageMenu = languageMenuType.createObject(root) as AppMenu;
        root.languageMenu.popup(button, 0, button.height + Theme.tiny);
    }

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

    Component {
        id: languageMenuType

        AppMenu {
            id: menu

            title: ViewSettings.copy.text(CopyKey.Language)

            Instantiator {
                model: root.board.languageNames
                delegate: AppMenuItem {
                    id: item

                    required property int index
                    required property string modelData

                    text: item.modelData
                    symbol: item.isChosen ? "check" : ""
                    isChoice: true
                    isChosen: item.index === root.board.languageIndex
                    onTriggered: root.board.setLanguageIndex(item.index)
                }
                onObjectAdded: (index, object) => menu.insertItem(index, object)
                onObjectRemoved: (index, object) => menu.removeItem(object)
            }
        }
    }
    TextMetrics {
        id: hideEmpty

        font: Theme.body
        text: ViewSettings.copy.text(CopyKey.HideEmpty)
    }
    TextMetrics {
        id: showAll

        font: Theme.body
        text: ViewSettings.copy.text(CopyKey.ShowAll)
    }
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
        AppButton {
            id: filterButton

            symbol: root.board.isHidingGoalsWithoutOpenTodos ? "list-filter-circle-filled"
                                                             : "list-filter-circle"
            // The button has two texts, and its neighbours stay in place; the width of a text is
            // rounded up.
            minimumTextWidth: Math.ceil(Math.max(hideEmpty.advanceWidth, showAll.advanceWidth)) + 1
            isCompact: root.wantedWidth - languageButton.fullWidth + Theme.controlHeight > root.width
            isOn: root.board.isHidingGoalsWithoutOpenTodos
            text: ViewSettings.copy.text(root.board.isHidingGoalsWithoutOpenTodos
                                       ? CopyKey.ShowAll : CopyKey.HideEmpty)
            help: ViewSettings.copy.text(root.board.isHidingGoalsWithoutOpenTodos
                                       ? CopyKey.ShowAllHelp : CopyKey.HideEmptyHelp)
            onClicked: root.board.toggleHidingGoalsWithoutOpenTodos()
        }
        AppButton {
            id: languageButton

            symbol: "globe"
            isCompact: root.wantedWidth > root.width
            text: ViewSettings.copy.text(CopyKey.Language)
            Accessible.role: Accessible.ButtonMenu
            onClicked: root.openLanguageMenu(languageButton)
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
    Item {
        id: hints

        /// Whether both hints fit beside each other.
        readonly property bool isOneLine: !doubleTapHint.visible
            || keyboardHint.implicitWidth + doubleTapHint.implicitWidth <= width - Theme.huge

        anchors.left: parent.left
        anchors.right: parent.right
        anchors.top: subtitle.bottom
        anchors.leftMargin: Theme.boardMargin
        anchors.rightMargin: Theme.boardMargin
        height: hints.isOneLine ? 24 : 24 + doubleTapHint.height

        AppText {
            id: keyboardHint

            width: Math.min(implicitWidth, parent.width)
            text: ViewSettings.copy.text(CopyKey.KeyboardHint)
            font: Theme.caption
            color: Theme.secondaryText
            Accessible.ignored: !visible
            Accessible.role: Accessible.StaticText
            Accessible.name: text
        }
        AppText {
            id: doubleTapHint

            x: hints.isOneLine ? parent.width - width : 0
            y: hints.isOneLine ? 0 : keyboardHint.height
            width: Math.min(implicitWidth, parent.width)
            text: ViewSettings.copy.text(CopyKey.DoubleTapHint)
            font: Theme.caption
            color: Theme.secondaryText
            visible: root.board.isDoubleTapOffered
            Accessible.ignored: !visible
            Accessible.role: Accessible.StaticText
            Accessible.name: text
        }
    }
}
