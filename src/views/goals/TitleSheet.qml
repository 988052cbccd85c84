pragma ComponentBehavior: Bound

import QtQuick
import Kelpa.Appearance
import Kelpa.Controls
import Kelpa.Goals

/// Asks for a goal's title, to create the goal or to rename it.
Sheet {
    id: root

    required property GoalController goals
    required property string explanation
    required property string placeholder
    required property string fieldLabel
    required property string confirmLabel

    signal confirmed(title: string)

    /// Opens the sheet with `title` in its field.
    function ask(title: string): void {
        field.text = title;
        field.selectAll();
        root.open();
        field.forceActiveFocus();
    }

    function confirm(): void {
        if (!confirmButton.enabled)
            return;
        root.confirmed(field.text);
        root.close();
        field.clear();
    }

    contentHeight: content.implicitHeight

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
        AppText {
            width: parent.width
            text: root.explanation
            color: Theme.secondaryText
            wrapMode: Text.Wrap
            visible: root.explanation.length > 0
            Accessible.ignored: !visible
            Accessible.role: Accessible.StaticText
            Accessible.name: text
        }
        TextInputField {
            id: field

            width: parent.width
            label: root.fieldLabel
            placeholderText: root.placeholder
            onCommitted: root.confirm()
            onCancelled: root.close()
        }
        Item {
            width: parent.width
            height: buttons.height + Theme.small

            Row {
                id: buttons

                anchors.right: parent.right
                anchors.bottom: parent.bottom
                spacing: Theme.small

                AppButton {
                    text: ViewSettings.copy.text(CopyKey.Cancel)
                    onClicked: root.close()
                }
                AppButton {
                    id: confirmButton

                    text: root.confirmLabel
                    isPrimary: true
                    Accessible.defaultButton: true
                    enabled: root.goals.isGoalTitle(field.text)
                    onClicked: root.confirm()
                }
            }
        }
    }
}
