pragma ComponentBehavior: Bound

import QtQuick
import Kelpa.Appearance
import Kelpa.Controls
import Kelpa.Transfer

/// Shows what a file would bring, and adds it to the board or replaces the board by it. Opens when it
/// is created.
Sheet {
    id: root

    required property ImportController importing

    readonly property bool isEnding: root.importing.isEnding
    readonly property bool isReady: root.importing.isRead && !root.importing.isImporting
    readonly property bool needsTyping: root.importing.needsPath && !root.importing.isRead
                                        && !root.importing.isReading
    readonly property string progress: root.importing.isAsking
                                       ? ViewSettings.copy.text(CopyKey.ChooseInDialog)
                                       : root.importing.isReading
                                         ? ViewSettings.copy.text(CopyKey.ReadingFile)
                                         : root.importing.isSaving
                                         ? ViewSettings.copy.text(CopyKey.SavingFirst)
                                         : root.importing.isImporting
                                           ? ViewSettings.copy.text(CopyKey.ImportingFile) : ""

    /// The keyboard goes to what comes next.
    function takeKeyboard(): void {
        if (root.needsTyping)
            field.focusField();
        else if (root.isReady)
            addButton.forceActiveFocus(Qt.TabFocusReason);
        else if (root.importing.problem >= 0 && !root.importing.isRead)
            otherButton.forceActiveFocus(Qt.TabFocusReason);
        else
            cancelButton.forceActiveFocus(Qt.TabFocusReason);
    }

    width: Math.min(Theme.grown(680), parent ? parent.width - 2 * Theme.large : 680)
    height: Math.min(Theme.grown(root.importing.isRead ? 540 : 260),
                     parent ? parent.height - 2 * Theme.large : 540)
    title: ViewSettings.copy.text(CopyKey.ImportTitle)
    onIsEndingChanged: if (root.isEnding)
        root.close()
    // Showing the sheet takes the ring off what has the keyboard.
    onOpened: focusing.restart()
    onClosed: root.importing.close()
    onNeedsTypingChanged: focusing.restart()
    onIsReadyChanged: focusing.restart()
    Component.onCompleted: {
        root.open();
        root.takeKeyboard();
    }

    // Runs when what the keyboard goes to shows.
    Timer {
        id: focusing

        interval: 0
        onTriggered: root.takeKeyboard()
    }
    Connections {
        target: root.importing

        property int problem: -1

        function onChanged(): void {
            const isNew = problem !== root.importing.problem;
            problem = root.importing.problem;
            if (isNew)
                focusing.restart();
        }
    }
    Item {
        anchors.fill: parent

        SheetHeading {
            id: heading

            width: parent.width
            title: root.title
            explanation: root.importing.isRead ? ViewSettings.copy.text(CopyKey.ImportText) : ""
        }
        ImportPreview {
            anchors.left: parent.left
            anchors.right: parent.right
            anchors.top: heading.bottom
            anchors.topMargin: Theme.medium
            anchors.bottom: footer.top
            importing: root.importing
            visible: root.importing.isRead
        }
        PathField {
            id: field

            anchors.top: heading.bottom
            anchors.topMargin: Theme.medium
            width: parent.width
            visible: root.needsTyping
            onCommitted: root.importing.readPath(field.path)
            onCancelled: root.close()
        }
        SheetFooter {
            id: footer

            anchors.left: parent.left
            anchors.right: parent.right
            anchors.bottom: parent.bottom
            problem: root.importing.problem < 0 ? "" : ViewSettings.copy.text(root.importing.problem)
            progress: root.progress

            AppButton {
                id: cancelButton

                text: ViewSettings.copy.text(CopyKey.Cancel)
                onClicked: root.close()
            }
            AppButton {
                id: otherButton

                text: ViewSettings.copy.text(CopyKey.ChooseOtherFile)
                visible: !root.needsTyping && !root.importing.isAsking && !root.importing.isReading
                enabled: !root.importing.isImporting
                onClicked: root.importing.choose()
            }
            AppButton {
                text: ViewSettings.copy.text(CopyKey.ReplaceBoard)
                visible: root.importing.isRead
                enabled: root.isReady
                onClicked: root.importing.replaceBoard()
            }
            AppButton {
                id: addButton

                text: ViewSettings.copy.text(CopyKey.AddToBoard)
                isPrimary: true
                visible: root.importing.isRead
                enabled: root.isReady
                Accessible.defaultButton: true
                onClicked: root.importing.addToBoard()
            }
            AppButton {
                text: ViewSettings.copy.text(CopyKey.ReadFile)
                isPrimary: true
                visible: root.needsTyping
                enabled: field.path.trim().length > 0
                Accessible.defaultButton: true
                onClicked: root.importing.readPath(field.path)
            }
        }
    }
}
