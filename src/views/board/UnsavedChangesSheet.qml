pragma ComponentBehavior: Bound

import QtQuick
import Kelpa.Appearance
import Kelpa.Controls
import Kelpa.Board

/// Asks whether to close the board although changes are not saved. Once they are, closing goes on by
/// itself.
Sheet {
    id: root

    required property TroubleController trouble

    /// From when it opens until it begins to close.
    property bool isAsking: false

    /// All changes are saved.
    signal saved
    /// They may be lost.
    signal closingConfirmed
    signal givenUp

    function ask(): void {
        root.isAsking = true;
        root.open();
        root.offerSafety();
    }
    /// The button that loses nothing has the keyboard, and shows it.
    function offerSafety(): void {
        (root.trouble.canRetryUnsaved ? retryButton : cancelButton).forceActiveFocus(Qt.TabFocusReason);
    }

    // Its three buttons beside each other in every language.
    width: Math.min(Theme.grown(460), parent ? parent.width - 2 * Theme.large : 460)
    title: ViewSettings.copy.text(root.trouble.unsavedSummary)
    contentHeight: content.implicitHeight
    onAboutToHide: root.isAsking = false
    // Otherwise they would have the keyboard the next time without showing it.
    onClosed: {
        root.givenUp();
        retryButton.focus = false;
        cancelButton.focus = false;
    }

    Connections {
        target: root.trouble

        function onUnsavedChanged(): void {
            if (!root.isAsking)
                return;
            if (root.trouble.hasUnsavedChanges) {
                // The button with the keyboard may be gone.
                if (retryButton.focus && !root.trouble.canRetryUnsaved)
                    root.offerSafety();
                return;
            }
            root.close();
            root.saved();
        }
    }
    Column {
        id: content

        width: parent ? parent.width : 0
        spacing: Theme.medium

        AppText {
            width: parent.width
            text: root.title
            font: Theme.heading
            wrapMode: Text.Wrap
            Accessible.ignored: !visible
            Accessible.role: Accessible.Heading
            Accessible.name: text
        }
        Repeater {
            model: [root.trouble.unsavedReason, root.trouble.unsavedWarning]

            AppText {
                required property int modelData

                width: content.width
                text: ViewSettings.copy.text(modelData)
                color: Theme.secondaryText
                wrapMode: Text.Wrap
                Accessible.ignored: !visible
                Accessible.role: Accessible.StaticText
                Accessible.name: text
            }
        }
        Row {
            anchors.right: parent.right
            topPadding: Theme.small
            spacing: Theme.small

            AppButton {
                text: ViewSettings.copy.text(CopyKey.CloseAnyway)
                onClicked: {
                    root.trouble.closeWithoutAsking();
                    root.closingConfirmed();
                }
            }
            AppButton {
                id: cancelButton

                text: ViewSettings.copy.text(CopyKey.Cancel)
                onClicked: root.close()
            }
            AppButton {
                id: retryButton

                text: ViewSettings.copy.text(CopyKey.TryAgain)
                visible: root.trouble.canRetryUnsaved
                isPrimary: true
                Accessible.defaultButton: true
                onClicked: root.trouble.retry()
            }
        }
    }
}
