pragma ComponentBehavior: Bound

import QtQuick
import Kelpa.Appearance
import Kelpa.Controls
import Kelpa.Windows

/// Chooses several windows and moves them into one goal. It shows while the board's window picker
/// is open.
Sheet {
    id: root

    required property WindowController windows

    readonly property WindowPicker picker: root.windows.picker
    /// Points; the sheet keeps its height while a search narrows the list.
    property real listHeight: 0

    /// Opens or closes the sheet, also for the request for which it is created.
    function followRequest(): void {
        if (!root.picker.isOpen) {
            root.close();
            return;
        }
        root.listHeight = Math.max(3, root.picker.rowCount) * list.rowHeight;
        list.begin();
        root.open();
        search.forceActiveFocus();
    }

    title: ViewSettings.copy.selectWindowsTitle(root.picker.goalTitle)
    height: Math.min(Theme.grown(560), implicitHeight, parent ? parent.height - 2 * Theme.large : 560)
    // Not for the reason of a refusal, whose room the list gives up: whoever confirms again finds the
    // button in its place.
    contentHeight: heading.height + list.anchors.topMargin + root.listHeight
                   + footer.anchors.topMargin + footer.height
                   - (refusal.visible ? refusal.height + footer.spacing : 0)
    onClosed: root.picker.close()

    Connections {
        target: root.picker

        function onRequestChanged(): void {
            root.followRequest();
        }
        // The keyboard goes on to the first match.
        function onSearchTextChanged(): void {
            list.begin();
        }
    }

    Item {
        anchors.fill: parent

        Column {
            id: heading

            width: parent.width
            spacing: Theme.small

            AppText {
                width: parent.width
                // The goal's title is cut short, not the sentence around it, whose verb comes last in
                // some languages.
                text: ViewSettings.copy.selectWindowsTitle(shortTitle.elidedText)
                font: Theme.heading
                wrapMode: Text.Wrap
                maximumLineCount: 3
                Accessible.ignored: !visible
                Accessible.role: Accessible.Heading
                Accessible.name: root.title

                TextMetrics {
                    id: shortTitle

                    text: root.picker.goalTitle
                    font: Theme.heading
                    elide: Text.ElideRight
                    elideWidth: 1.5 * heading.width
                }
            }
            AppText {
                width: parent.width
                text: ViewSettings.copy.text(CopyKey.SelectWindowsText)
                color: Theme.secondaryText
                wrapMode: Text.Wrap
                bottomPadding: Theme.tiny
                Accessible.ignored: !visible
                Accessible.role: Accessible.StaticText
                Accessible.name: text
            }
            SearchField {
                id: search

                width: parent.width
                label: ViewSettings.copy.text(CopyKey.SearchWindowsOrApps)
                placeholderText: ViewSettings.copy.text(CopyKey.SearchWindowsOrApps)
                clearLabel: ViewSettings.copy.text(CopyKey.ClearSearch)
                text: root.picker.searchText
                onTextChanged: root.picker.searchText = text
                // Return after a search leads to the matches and does not confirm.
                onCommitted: if (search.length > 0)
                    list.enter();
                else
                    root.picker.confirm()
                onDismissed: root.close()
                Keys.onDownPressed: list.enter()
            }
        }
        WindowPickerList {
            id: list

            anchors.left: parent.left
            anchors.right: parent.right
            anchors.top: heading.bottom
            anchors.topMargin: Theme.small
            anchors.bottom: footer.top
            windows: root.windows
            // Nothing is drawn for a sheet that is closed.
            isShown: root.visible
            Accessible.name: root.title
            onLeftUpwards: search.forceActiveFocus()
        }
        // Shows that the list continues below.
        Rectangle {
            anchors.left: list.left
            anchors.right: list.right
            anchors.bottom: list.bottom
            height: 1
            color: Theme.outline
            visible: !list.atYEnd
        }
        AppText {
            anchors.fill: list
            horizontalAlignment: Text.AlignHCenter
            text: ViewSettings.copy.text(CopyKey.NoMatchingWindows)
            color: Theme.secondaryText
            wrapMode: Text.Wrap
            visible: root.picker.rowCount === 0
            Accessible.ignored: !visible
            Accessible.role: Accessible.StaticText
            Accessible.name: text
        }
        Column {
            id: footer

            anchors.left: parent.left
            anchors.right: parent.right
            anchors.bottom: parent.bottom
            anchors.topMargin: Theme.medium
            topPadding: Theme.medium
            spacing: Theme.small

            AppText {
                width: parent.width
                text: ViewSettings.copy.selectedWindowCount(root.picker.chosenCount)
                color: Theme.secondaryText
                Accessible.ignored: !visible
                Accessible.role: Accessible.StaticText
                Accessible.name: text
            }
            AppText {
                id: refusal

                width: parent.width
                text: ViewSettings.copy.text(CopyKey.WindowListChanged)
                color: Theme.destructive
                wrapMode: Text.Wrap
                visible: root.picker.isRefused
                Accessible.ignored: !visible
                Accessible.role: Accessible.AlertMessage
                Accessible.name: text

                Announcement {
                    text: refusal.text
                }
            }
            Row {
                anchors.right: parent.right
                spacing: Theme.small

                AppButton {
                    text: ViewSettings.copy.text(CopyKey.Cancel)
                    onClicked: root.close()
                }
                AppButton {
                    text: ViewSettings.copy.confirmWindowSelection(root.picker.chosenCount)
                    isPrimary: true
                    Accessible.defaultButton: true
                    enabled: root.picker.canConfirm
                    onClicked: root.picker.confirm()
                }
            }
        }
    }
}
