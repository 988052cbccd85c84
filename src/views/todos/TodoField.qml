pragma ComponentBehavior: Bound

import QtQuick
import Kelpa.Appearance
import Kelpa.Scene
import Kelpa.Controls
import Kelpa.Todos

/// The row in which the title of a todo is typed. A blank title is not committed: the field stays
/// open. Below it may be an offer, which a click or Ctrl+Return takes and Escape declines.
FocusScope {
    id: root

    required property TodoController todos
    required property string symbol
    required property string label

    property alias text: field.text
    property alias notice: field.notice

    /// What is offered for the text; empty for nothing.
    property string offer

    readonly property bool hasOffer: root.offer.length > 0
    readonly property bool hasKeyboard: field.activeFocus || field.isMenuOpen
                                        || cancelButton.activeFocus || offerLine.hasFocus

    signal committed(title: string)
    signal cancelled
    signal offerTaken
    signal offerDeclined
    /// The focus went elsewhere within the window, or to no item.
    signal abandoned

    function focusField(): void {
        field.forceActiveFocus();
        field.cursorPosition = field.length;
    }
    /// The first letter that is typed replaces the text.
    function focusAndSelectAll(): void {
        root.focusField();
        field.selectAll();
    }
    /// Adds what an input method is still composing to the text, as it is.
    function finishComposition(): void {
        TextComposition.keep(field);
    }

    implicitHeight: Theme.todoHeight + (offerLine.item?.height ?? 0)
    Accessible.ignored: true

    AppIcon {
        x: 6
        name: root.symbol
        anchors.verticalCenter: field.verticalCenter
    }
    TextInputField {
        id: field

        anchors.left: parent.left
        // Where the title is in the row while it is not edited.
        anchors.leftMargin: 26
        anchors.right: cancelButton.left
        anchors.rightMargin: 2
        y: (Theme.todoHeight - height) / 2
        implicitHeight: 28 + Theme.bodyGrowth
        focus: true
        leftPadding: 4
        rightPadding: 4
        label: root.label
        placeholderText: ViewSettings.copy.text(CopyKey.EnterTodo)
        onCommitted: if (root.todos.isTitle(field.text))
            root.committed(field.text)
        onCancelled: if (root.hasOffer)
            root.offerDeclined()
        else
            root.cancelled()
        onActiveFocusChanged: if (!field.activeFocus)
            abandoning.start()
    }
    // A click beside the field takes its focus before the item that was clicked, maybe the button,
    // gets it.
    Timer {
        id: abandoning

        interval: 0
        onTriggered: if (root.activeFocus && root.Window.active && !root.hasKeyboard)
            root.abandoned()
    }
    IconButton {
        id: cancelButton

        anchors.right: parent.right
        anchors.verticalCenter: field.verticalCenter
        symbol: "x"
        size: 28
        symbolSize: 14
        text: ViewSettings.copy.text(CopyKey.Cancel)
        onClicked: root.cancelled()
    }
    OptionalItem {
        id: offerLine

        readonly property bool hasFocus: (offerLine.item as TodoOffer)?.hasFocus ?? false

        isWanted: root.hasOffer

        TodoOffer {
            x: field.x
            y: Theme.todoHeight
            width: root.width - field.x
            text: root.offer
            isKeyFree: root.hasKeyboard
            onTaken: root.offerTaken()
        }
    }

    // While another window is active, the field waits.
    onActiveFocusChanged: if (!root.activeFocus && root.Window.active && !field.isMenuOpen)
        root.abandoned()
}
