pragma ComponentBehavior: Bound

import QtQuick
import Kelpa.Appearance
import Kelpa.Controls

/// The actions on the text of a field.
AppMenu {
    id: root

    required property TextInput field

    readonly property bool hasSelection: root.field.selectedText.length > 0

    title: root.field.Accessible.name
    // While the window is active, the keyboard returns to the field.
    onAboutToHide: if (root.field.Window.active)
        root.field.forceActiveFocus(Qt.PopupFocusReason)

    AppMenuItem {
        text: ViewSettings.copy.text(CopyKey.Undo)
        symbol: "undo-2"
        enabled: root.field.canUndo
        onTriggered: root.field.undo()
    }
    AppMenuItem {
        text: ViewSettings.copy.text(CopyKey.Redo)
        symbol: "redo-2"
        enabled: root.field.canRedo
        onTriggered: root.field.redo()
    }
    AppMenuSeparator {}
    AppMenuItem {
        text: ViewSettings.copy.text(CopyKey.Cut)
        symbol: "scissors"
        enabled: root.hasSelection
        onTriggered: root.field.cut()
    }
    AppMenuItem {
        text: ViewSettings.copy.text(CopyKey.CopyText)
        symbol: "copy"
        enabled: root.hasSelection
        onTriggered: root.field.copy()
    }
    AppMenuItem {
        text: ViewSettings.copy.text(CopyKey.Paste)
        symbol: "clipboard-paste"
        // Only the program that owns the clipboard knows whether there is anything to paste, and
        // its answer is not awaited before a person pastes.
        onTriggered: TextComposition.paste(root.field)
    }
    AppMenuSeparator {}
    AppMenuItem {
        text: ViewSettings.copy.text(CopyKey.SelectAll)
        symbol: "text-select"
        enabled: root.field.length > 0 && root.field.selectedText.length < root.field.length
        onTriggered: root.field.selectAll()
    }
}
