pragma ComponentBehavior: Bound

import QtQuick
import Kelpa.Appearance
import Kelpa.Controls
import Kelpa.Transfer

/// Chooses what to export and in which format, and writes it to a file. Opens when it is created.
Sheet {
    id: root

    required property ExportController exporting

    readonly property bool isEnding: root.exporting.isEnding
    readonly property bool isBusy: root.exporting.isAsking || root.exporting.isWriting
    readonly property string suggestedPath: root.exporting.suggestedPath
    readonly property string progress: root.exporting.isAsking
                                       ? ViewSettings.copy.text(CopyKey.ChooseInDialog)
                                       : root.exporting.isWriting
                                         ? ViewSettings.copy.text(CopyKey.WritingFile) : ""
    /// Whether the path is the suggested one, which changes with the choice.
    property bool isPathSuggested: true

    function start(): void {
        if (exportButton.enabled)
            root.exporting.start(field.path);
    }
    function suggestPath(): void {
        if (root.isPathSuggested)
            field.path = root.suggestedPath;
    }

    width: Math.min(Theme.grown(680), parent ? parent.width - 2 * Theme.large : 680)
    height: Math.min(Theme.grown(540), parent ? parent.height - 2 * Theme.large : 540)
    title: ViewSettings.copy.text(CopyKey.ExportTitle)
    onIsEndingChanged: if (root.isEnding)
        root.close()
    onClosed: root.exporting.close()
    onSuggestedPathChanged: root.suggestPath()
    Component.onCompleted: {
        contents.currentIndex = root.exporting.content;
        formats.currentIndex = root.exporting.format;
        root.suggestPath();
        root.open();
        formats.forceActiveFocus(Qt.TabFocusReason);
    }

    Item {
        anchors.fill: parent

        SheetHeading {
            id: heading

            width: parent.width
            title: root.title
            explanation: ViewSettings.copy.text(CopyKey.ExportText)
        }
        ChoiceList {
            id: contents

            anchors.left: parent.left
            anchors.top: heading.bottom
            anchors.topMargin: Theme.medium
            anchors.bottom: field.visible ? field.top : footer.top
            anchors.bottomMargin: field.visible ? Theme.medium : 0
            width: Math.round(parent.width * 0.44)
            label: ViewSettings.copy.text(CopyKey.ExportContents)
            // Names in another language are no other rows, which would lose the choice.
            model: root.exporting.contentNames.length
            onCurrentIndexChanged: if (root.visible)
                root.exporting.content = contents.currentIndex
            onConfirmed: root.start()

            delegate: ChoiceRow {
                required property int index

                width: contents.width - Theme.medium
                title: root.exporting.contentNames[index] ?? ""
                isChosen: ListView.isCurrentItem
                onChosen: {
                    contents.currentIndex = index;
                    contents.forceActiveFocus();
                }
                onConfirmed: root.start()
            }
        }
        ChoiceList {
            id: formats

            anchors.left: contents.right
            anchors.leftMargin: Theme.small
            anchors.right: parent.right
            anchors.top: contents.top
            anchors.bottom: contents.bottom
            label: ViewSettings.copy.text(CopyKey.FileFormat)
            model: root.exporting.formatNames
            onCurrentIndexChanged: if (root.visible)
                root.exporting.format = formats.currentIndex
            onConfirmed: root.start()

            delegate: ChoiceRow {
                required property int index
                required property string modelData

                width: formats.width - Theme.medium
                title: modelData
                details: root.exporting.formatNotes[index] ?? ""
                isChosen: ListView.isCurrentItem
                onChosen: {
                    formats.currentIndex = index;
                    formats.forceActiveFocus();
                }
                onConfirmed: root.start()
            }
        }
        PathField {
            id: field

            anchors.left: parent.left
            anchors.right: parent.right
            anchors.bottom: footer.top
            visible: root.exporting.needsPath
            onVisibleChanged: if (field.visible)
                field.focusField()
            onEdited: {
                root.isPathSuggested = false;
                root.exporting.forgetProblem();
            }
            onCommitted: root.start()
            onCancelled: root.close()
        }
        SheetFooter {
            id: footer

            anchors.left: parent.left
            anchors.right: parent.right
            anchors.bottom: parent.bottom
            problem: root.exporting.problem < 0 ? "" : ViewSettings.copy.text(root.exporting.problem)
            progress: root.progress

            AppButton {
                text: ViewSettings.copy.text(CopyKey.Cancel)
                onClicked: root.close()
            }
            AppButton {
                id: exportButton

                text: ViewSettings.copy.text(root.exporting.asksToReplace ? CopyKey.ReplaceFile
                                                                          : CopyKey.ExportTitle)
                isPrimary: true
                Accessible.defaultButton: true
                enabled: !root.isBusy && (!root.exporting.needsPath || field.path.trim().length > 0)
                onClicked: root.start()
            }
        }
    }
}
