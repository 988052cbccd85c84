pragma ComponentBehavior: Bound

import QtQuick
import Kelpa.Appearance
import Kelpa.Controls
import Kelpa.Board

/// Offers another language by one click or one key, which the button shows: Return takes the only
/// offer, and Alt with a digit one of several.
Item {
    id: root

    required property LanguageOffer offer

    readonly property bool isOnlyOne: root.offer.texts.length === 1
    /// Whether nothing has the keyboard: the item with the focus is one around all others.
    readonly property bool isKeyFree: root.isAround(root.Window.activeFocusItem)

    function isAround(item: Item): bool {
        for (let each = root.parent; each !== null; each = each.parent)
            if (each === item)
                return true;
        return false;
    }

    implicitHeight: Theme.controlHeight

    Row {
        spacing: Theme.small

        AppIcon {
            name: "globe"
            anchors.verticalCenter: parent.verticalCenter
        }
        Repeater {
            model: root.offer.texts
            delegate: AppButton {
                id: button

                required property int index
                required property string modelData

                text: button.modelData + "  " + root.offer.keys[button.index]
                isPrimary: root.isOnlyOne
                Accessible.name: button.modelData
                onClicked: root.offer.take(button.index)

                Shortcut {
                    sequences: root.isOnlyOne ? ["Return", "Enter"] : ["Alt+" + (button.index + 1)]
                    enabled: root.isKeyFree
                    autoRepeat: false
                    onActivated: root.offer.take(button.index)
                }
            }
        }
    }
}
