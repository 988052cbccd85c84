pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Templates as T
import Kelpa.Appearance
import Kelpa.Controls

/// A single-line text field. Emits `committed` on Return and `cancelled` on Escape, but neither for
/// the key that ends the composition of an input method.
T.TextField {
    id: root

    required property string label

    /// Whether its menu is open, which has the keyboard without ending the editing of the text.
    property bool isMenuOpen: false
    property FieldMenu menu: null
    /// Told beside the field until the text changes; empty for nothing.
    property string notice

    // Depends on the visible text: for the toolkit, an input method that still reports a cursor
    // position composes, even when it has nothing left.
    readonly property bool isComposing: root.preeditText.length > 0

    signal committed
    signal cancelled

    implicitWidth: 200
    implicitHeight: Theme.controlHeight
    leftPadding: 10
    rightPadding: 10
    font: Theme.body
    color: Theme.text
    placeholderTextColor: Theme.secondaryText
    selectionColor: Theme.accent
    selectedTextColor: Theme.textOnAccent
    // The text is aligned as it is outside a field, whatever its reading direction.
    horizontalAlignment: TextInput.AlignLeft
    verticalAlignment: TextInput.AlignVCenter
    // The toolkit would cut a text that is pasted; `TextComposition` refuses it.
    maximumLength: 2147483647
    selectByMouse: true
    Accessible.name: root.label
    // Assistive programs have no Return key.
    Accessible.onPressAction: root.commit()
    Keys.onReturnPressed: event => event.accepted = root.takeReturn(event)
    Keys.onEnterPressed: event => event.accepted = root.takeReturn(event)
    Keys.onEscapePressed: if (root.isComposing)
        TextComposition.cancel(root)
    else if (!composed.running)
        root.cancelled()
    Component.onCompleted: TextComposition.follow(root)
    Keys.onMenuPressed: root.openMenuByKeyboard()
    Keys.onPressed: event => {
        event.accepted = event.key === Qt.Key_F10 && (event.modifiers & Qt.ShiftModifier);
        if (event.accepted)
            root.openMenuByKeyboard();
    }
    onTextChanged: root.notice = ""
    onIsComposingChanged: if (!root.isComposing)
        composed.restart()

    background: Rectangle {
        radius: Theme.controlRadius
        color: Theme.field
        // The width is in whole pixels: a fraction of one more would show on some sides only.
        border.width: Math.floor(Screen.devicePixelRatio) / Screen.devicePixelRatio
        border.color: Theme.fieldOutline

        AppText {
            anchors.fill: parent
            anchors.leftMargin: root.leftPadding
            // Nothing is placed at the end of an empty field.
            anchors.rightMargin: Theme.small
            text: root.placeholderText
            color: Theme.secondaryText
            visible: root.length === 0 && !root.isComposing
        }
    }

    function commit(): bool {
        if (root.isComposing)
            return false;
        root.committed();
        return true;
    }
    /// What a person wanted to write does not fit.
    function refuseText(): void {
        root.notice = ViewSettings.copy.textTooLong(TextComposition.longestText);
    }
    function takeReturn(event: KeyEvent): bool {
        // A held Return key was meant for whatever had the keyboard when it was pressed; a Return
        // key that comes with the end of a composition was meant for the input method.
        return event.isAutoRepeat || composed.running || root.commit();
    }

    function openMenu(place: rect): void {
        if (root.isComposing)
            return;
        if (root.menu === null)
            root.menu = menuType.createObject(root) as FieldMenu;
        root.isMenuOpen = true;
        root.menu.openBeside(root, place);
    }
    function openMenuByKeyboard(): void {
        root.openMenu(root.positionToRectangle(root.cursorPosition));
    }

    Component {
        id: menuType

        FieldMenu {
            field: root
            onClosed: root.isMenuOpen = false
        }
    }
    Instantiator {
        active: root.notice.length > 0
        delegate: FieldNotice {
            parent: root
            text: root.notice
            visible: root.activeFocus
        }
    }
    // A press of the second button leaves the selection alone.
    MouseArea {
        anchors.fill: parent
        acceptedButtons: Qt.RightButton
        onPressed: root.forceActiveFocus(Qt.MouseFocusReason)
        onClicked: mouse => root.openMenu(Qt.rect(mouse.x, mouse.y, 0, 0))
    }
    // Some input methods end the composition first and pass the key on then. No person presses
    // another key within this time.
    Timer {
        id: composed

        interval: 60
    }

    FocusRing {}
}
