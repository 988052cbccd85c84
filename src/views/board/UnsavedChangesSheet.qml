pragma ComponentBehavior: Bound

import QtQuick
import Kelpa.Appearance
import Kelpa.Controls
import Kelpa.Board

/// Asks whether to close the board although changes cannot be saved. Once they are saved, closing
/// goes on by itself.
Sheet {
    id: root

    required property TroubleController trouble

    /// From when it opens until it begins to close.
    property bool isAsking: false

    signal closingConfirmed

    function ask(): void {
        root.isAsking = true;
        root.open();
        // The button that loses nothing, and shows that it has the keyboard.
        retryButton.forceActiveFocus(Qt.TabFocusReason);
    }

    // Its three buttons beside each other in every language.
    width: Math.min(460, parent ? parent.width - 2 * Theme.large : 460)
    title: ViewSettings.copy.text(CopyKey.ChangesUnsaved)
    contentHeight: content.implicitHeight
    onAboutToHide: root.isAsking = false
    // Otherwise it would have the keyboard the next time without showing it.
    onClosed: retryButton.focus = false

    Connections {
        target: root.trouble

        function onTroubleChanged(): void {
            if (!root.isAsking || root.trouble.hasUnsavedChanges)
                return;
            root.close();
            root.closingConfirmed();
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
            model: [root.trouble.happened, CopyKey.CloseLosesChanges]

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
                text: ViewSettings.copy.text(CopyKey.Cancel)
                onClicked: root.close()
            }
            AppButton {
                id: retryButton

                text: ViewSettings.copy.text(CopyKey.TryAgain)
                isPrimary: true
                Accessible.defaultButton: true
                onClicked: root.trouble.retry()
            }
        }
    }
}
