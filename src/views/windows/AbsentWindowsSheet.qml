pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Templates as T
import Kelpa.Appearance
import Kelpa.Controls
import Kelpa.Windows

/// The windows that a goal had and that are not there. The arrow keys go through them, Return opens one
/// again, and Delete forgets it.
Sheet {
    id: root

    required property WindowMemoryController memory

    readonly property int rowHeight: 60 + Theme.bodyGrowth + 2 * Theme.captionGrowth

    /// Opens or closes the sheet, also for the request for which it is created.
    function followRequest(): void {
        if (!root.memory.isListOpen) {
            root.close();
        } else if (!root.opened) {
            goalTitle.text = root.memory.listTitle;
            root.open();
            list.currentIndex = 0;
            list.forceActiveFocus(Qt.PopupFocusReason);
        }
    }

    title: root.memory.isListFromLastTime ? ViewSettings.copy.windowsFromLastTime(root.memory.listCount)
                                          : ViewSettings.copy.closedWindows(root.memory.listCount)
    // Its buttons stand beside each other in every language.
    width: Math.min(Math.max(Theme.sheetWidth, forgetAll.implicitWidth + buttons.implicitWidth
                                               + Theme.small + leftPadding + rightPadding),
                    parent ? parent.width - 2 * Theme.large : Theme.sheetWidth)
    height: Math.min(Theme.grown(560), implicitHeight, parent ? parent.height - 2 * Theme.large : 560)
    contentHeight: heading.height + Theme.small + root.memory.listCount * root.rowHeight
                   + footer.height
    onClosed: root.memory.closeList()

    Connections {
        target: root.memory

        function onListChanged(): void {
            root.followRequest();
        }
    }

    Item {
        anchors.fill: parent

        Column {
            id: heading

            width: parent.width
            spacing: Theme.tiny

            AppText {
                width: parent.width
                text: root.title
                font: Theme.heading
                Accessible.ignored: !visible
                Accessible.role: Accessible.Heading
                Accessible.name: text
            }
            AppText {
                id: goalTitle

                width: parent.width
                color: Theme.secondaryText
                Accessible.ignored: !visible
                Accessible.role: Accessible.StaticText
                Accessible.name: text
            }
        }
        ListView {
            id: list

            anchors.left: parent.left
            anchors.right: parent.right
            anchors.top: heading.bottom
            anchors.topMargin: Theme.small
            anchors.bottom: footer.top
            boundsBehavior: Flickable.StopAtBounds
            clip: true
            activeFocusOnTab: true
            highlightMoveDuration: 0
            // Nothing is drawn for a sheet that is closed.
            model: root.visible ? root.memory.list : null
            T.ScrollBar.vertical: AppScrollBar {}
            Accessible.role: Accessible.List
            Accessible.name: root.title
            Keys.onPressed: event => {
                const row = list.currentItem as AbsentWindowRow;
                const isOpening = event.key === Qt.Key_Return || event.key === Qt.Key_Enter
                                  || event.key === Qt.Key_Space;
                event.accepted = row !== null && (isOpening || event.key === Qt.Key_Delete);
                if (!event.accepted || event.isAutoRepeat)
                    return;
                if (isOpening)
                    root.memory.reopen(row.windowID);
                else
                    root.memory.forget(row.windowID);
            }

            delegate: AbsentWindowRow {
                width: list.width - (list.count * root.rowHeight > list.height ? Theme.medium : 0)
                height: root.rowHeight
                memory: root.memory
                isCurrent: ListView.isCurrentItem && list.activeFocus
            }
        }
        Item {
            id: footer

            anchors.left: parent.left
            anchors.right: parent.right
            anchors.bottom: parent.bottom
            height: Theme.controlHeight + Theme.medium

            AppButton {
                id: forgetAll

                anchors.left: parent.left
                anchors.bottom: parent.bottom
                text: ViewSettings.copy.text(CopyKey.ForgetAllWindows)
                onClicked: root.memory.forgetAll()
            }
            Row {
                id: buttons

                anchors.right: parent.right
                anchors.bottom: parent.bottom
                spacing: Theme.small

                AppButton {
                    text: ViewSettings.copy.text(CopyKey.Close)
                    onClicked: root.close()
                }
                AppButton {
                    text: ViewSettings.copy.text(CopyKey.OpenAllAgain)
                    isPrimary: true
                    onClicked: root.memory.reopenAll()
                }
            }
        }
    }
}
