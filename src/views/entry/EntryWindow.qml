pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Templates as T
import Kelpa.Appearance
import Kelpa.Controls
import Kelpa.Entry

/// The field for a todo, with the goal that it is for, over whatever is in front.
T.ApplicationWindow {
    id: root

    required property EntryController entry

    readonly property int rowHeight: 30 + Theme.bodyGrowth
    readonly property int wantedHeight: column.y + column.height + Theme.medium

    readonly property int replacementCount: root.entry.replacementCount

    function focusField(): void {
        field.forceActiveFocus();
    }
    /// Adds what an input method is still composing to the text, as it is.
    function finishComposition(): void {
        TextComposition.keep(field);
    }

    onReplacementCountChanged: {
        // The field reports its own caret as soon as its text changes.
        const caret = root.entry.caret;
        field.text = root.entry.text;
        field.cursorPosition = caret;
    }
    // A window of one size floats wherever others are tiled.
    width: Math.min(Theme.grown(520), Math.max(520, root.Screen.desktopAvailableWidth - 2 * Theme.large))
    height: root.wantedHeight
    minimumWidth: root.width
    maximumWidth: root.width
    minimumHeight: root.wantedHeight
    maximumHeight: root.wantedHeight
    flags: Qt.Dialog | Qt.FramelessWindowHint | Qt.WindowStaysOnTopHint
    title: ViewSettings.copy.text(CopyKey.NewTodo)
    color: Theme.popup
    font: Theme.body

    Rectangle {
        anchors.fill: parent
        color: "transparent"
        border.width: 1
        border.color: Theme.fieldOutline
    }
    Column {
        id: column

        x: Theme.medium
        y: Theme.medium
        width: parent.width - 2 * Theme.medium
        spacing: Theme.small

        TextInputField {
            id: field

            // There is no room for the menu of the field in the window; its keys do the same.
            function openMenu(place: rect): void {
            }

            width: parent.width
            implicitHeight: 36 + Theme.bodyGrowth
            focus: true
            label: ViewSettings.copy.text(CopyKey.NewTodo)
            placeholderText: ViewSettings.copy.text(CopyKey.EnterTodo)
            Component.onCompleted: {
                field.text = root.entry.text;
                field.cursorPosition = field.length;
            }
            onTextChanged: root.entry.edit(field.text, field.cursorPosition)
            onCursorPositionChanged: root.entry.edit(field.text, field.cursorPosition)
            onCommitted: root.entry.commit()
            onCancelled: root.entry.cancel()
            Keys.onUpPressed: if (!field.isComposing)
                root.entry.moveCurrent(-1)
            Keys.onDownPressed: if (!field.isComposing)
                root.entry.moveCurrent(1)
            Keys.onTabPressed: if (!field.isComposing)
                root.entry.take(root.entry.currentRow)
        }
        Item {
            width: parent.width
            height: 20 + Theme.bodyGrowth
            visible: !root.entry.isCompleting
            Accessible.role: Accessible.StaticText
            Accessible.name: root.entry.goalTitle
            Accessible.description: hint.text

            EntryGoalLine {
                x: Theme.small
                width: Math.min(implicitWidth, hint.x - x - Theme.medium)
                height: parent.height
                title: root.entry.goalTitle
                accent: root.entry.goalAccent
            }
            AppText {
                id: hint

                anchors.right: parent.right
                anchors.rightMargin: Theme.small
                height: parent.height
                text: ViewSettings.copy.text(CopyKey.EntryHint)
                font: Theme.caption
                color: Theme.secondaryText
                Accessible.ignored: true
            }
        }
        ListView {
            id: list

            width: parent.width
            height: Math.min(root.entry.count, 6) * root.rowHeight
            visible: root.entry.isCompleting
            boundsBehavior: Flickable.StopAtBounds
            clip: true
            interactive: root.entry.count > 6
            highlightMoveDuration: 0
            model: root.entry
            currentIndex: root.entry.currentRow
            Accessible.role: Accessible.List
            Accessible.name: ViewSettings.copy.text(CopyKey.Goals)

            delegate: Item {
                id: row

                required property int index
                required property string title
                required property string accent

                readonly property bool isCurrent: row.index === root.entry.currentRow

                width: list.width
                height: root.rowHeight
                Accessible.role: Accessible.ListItem
                Accessible.name: row.title
                Accessible.focusable: true
                Accessible.selectable: true
                Accessible.selected: row.isCurrent
                Accessible.onPressAction: root.entry.take(row.index)

                Rectangle {
                    anchors.fill: parent
                    radius: Theme.controlRadius
                    color: row.isCurrent ? Theme.accepting : hover.hovered ? Theme.hover
                                                                          : "transparent"
                }
                HoverHandler {
                    id: hover
                }
                MouseArea {
                    anchors.fill: parent
                    onClicked: root.entry.take(row.index)
                }
                EntryGoalLine {
                    anchors.fill: parent
                    anchors.leftMargin: Theme.small
                    anchors.rightMargin: Theme.small
                    title: row.title
                    accent: row.accent
                }
            }
        }
    }
    // The goal that Return takes, and then the one that the todo is for: the focus stays in the
    // field meanwhile.
    Item {
        Accessible.role: Accessible.AlertMessage
        Accessible.name: announced.text

        Announcement {
            id: announced

            text: root.entry.isCompleting ? root.entry.currentTitle : root.entry.goalTitle
        }
    }
}
