pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Templates as T
import Kelpa.Appearance
import Kelpa.Controls

/// Every key of the board that does something, and what it does.
Sheet {
    id: root

    required property bool isDoubleTapOffered
    required property bool canWorkOnGoals
    required property bool canPinGoals
    /// The desktop says which key it has given for a new todo.
    required property bool isNewTodoKeyKnown

    /// In one property, so that a row never has its keys from before a change and its meaning from after.
    readonly property var help: root.helpOf(
        ViewSettings.copy.keyHelpKeys(root.isDoubleTapOffered, root.canWorkOnGoals, root.canPinGoals),
        ViewSettings.copy.keyHelpMeanings(root.isDoubleTapOffered, root.canWorkOnGoals, root.canPinGoals))
    readonly property real roomForRows: (root.parent?.height ?? 0) - 2 * Theme.large
                                        - root.topPadding - root.bottomPadding - heading.height
                                        - closeButton.height - 2 * Theme.medium

    readonly property real keysWidth: root.widestOf(root.help, keysMetrics.font)

    /// The keys and the meaning of each row.
    function helpOf(keys: var, meanings: var): var {
        return keys.map((each, index) => ({ keys: each, meaning: meanings[index] }));
    }

    /// In points, in the font of the metrics: another one measures anew.
    function widestOf(help: var, font: font): real {
        return Math.ceil(help.reduce(
            (widest, each) => Math.max(widest, keysMetrics.advanceWidth(each.keys)), 0));
    }

    width: Math.min(Theme.grown(600), parent ? parent.width - 2 * Theme.large : 600)
    title: ViewSettings.copy.text(CopyKey.KeyboardShortcuts)
    contentHeight: heading.height + view.height + closeButton.height + 2 * Theme.medium
    // Before it has opened whole, so that it takes every key from the first on.
    onVisibleChanged: if (root.visible)
        closeButton.forceActiveFocus(Qt.PopupFocusReason)

    FontMetrics {
        id: keysMetrics

        font: Theme.bodyStrong
    }
    AppText {
        id: heading

        width: parent.width
        text: root.title
        font: Theme.heading
        Accessible.ignored: !visible
        Accessible.role: Accessible.Heading
        Accessible.name: text
    }
    // Scrolled only in a low window.
    Flickable {
        id: view

        anchors.top: heading.bottom
        anchors.topMargin: Theme.medium
        width: parent.width
        height: Math.min(contentHeight, root.roomForRows)
        contentHeight: rows.implicitHeight
        boundsBehavior: Flickable.StopAtBounds
        clip: view.contentHeight > view.height
        T.ScrollBar.vertical: AppScrollBar {}

        Column {
            id: rows

            width: view.width - Theme.small
            spacing: Theme.tiny

            Repeater {
                model: root.help
                delegate: Item {
                    id: row

                    required property var modelData

                    width: rows.width
                    height: Math.max(keys.height, meaning.height)
                    Accessible.role: Accessible.StaticText
                    Accessible.name: row.modelData.keys
                    Accessible.description: row.modelData.meaning

                    AppText {
                        id: keys

                        width: root.keysWidth
                        text: row.modelData.keys
                        font: Theme.bodyStrong
                    }
                    AppText {
                        id: meaning

                        anchors.left: keys.right
                        anchors.leftMargin: Theme.medium
                        anchors.right: row.right
                        text: row.modelData.meaning
                        wrapMode: Text.Wrap
                    }
                }
            }
            // Where a key of the desktop has to call Kelpa anyhow.
            AppText {
                width: rows.width
                topPadding: Theme.small
                text: ViewSettings.copy.text(CopyKey.NewTodoByCommand)
                visible: !root.isDoubleTapOffered && !root.isNewTodoKeyKnown
                color: Theme.secondaryText
                wrapMode: Text.Wrap
                Accessible.ignored: !visible
                Accessible.role: Accessible.StaticText
                Accessible.name: text
            }
        }
    }
    AppButton {
        id: closeButton

        anchors.top: view.bottom
        anchors.topMargin: Theme.medium
        anchors.right: parent.right
        text: ViewSettings.copy.text(CopyKey.Close)
        isPrimary: true
        onClicked: root.close()
        // The key that opened the sheet closes it.
        Keys.onPressed: event => {
            event.accepted = event.key === Qt.Key_F1 && !event.isAutoRepeat;
            if (event.accepted)
                root.close();
        }
        Keys.onUpPressed: view.contentY = Math.max(0, view.contentY - Theme.todoHeight)
        Keys.onDownPressed: view.contentY = Math.max(
            0, Math.min(view.contentY + Theme.todoHeight, view.contentHeight - view.height))
    }
}
