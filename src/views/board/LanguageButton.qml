pragma ComponentBehavior: Bound

import QtQuick
import Kelpa.Appearance
import Kelpa.Controls
import Kelpa.Board

/// Opens the menu of the languages, each under its own name.
AppButton {
    id: root

    required property BoardController board

    /// Created on first use.
    property AppMenu menu: null

    symbol: "globe"
    text: ViewSettings.copy.text(CopyKey.Language)
    Accessible.role: Accessible.ButtonMenu
    onClicked: {
        if (root.menu === null)
            root.menu = menuType.createObject(root) as AppMenu;
        root.menu.openBeside(root, Qt.rect(0, 0, root.width, root.height));
    }

    Component {
        id: menuType

        AppMenu {
            id: menu

            title: root.text

            Instantiator {
                model: root.board.languageNames
                delegate: AppMenuItem {
                    id: item

                    required property int index
                    required property string modelData

                    text: item.modelData
                    symbol: item.isChosen ? "check" : ""
                    isChoice: true
                    isChosen: item.index === root.board.languageIndex
                    onTriggered: root.board.setLanguageIndex(item.index)
                }
                onObjectAdded: (index, object) => menu.insertItem(index, object)
                onObjectRemoved: (index, object) => menu.removeItem(object)
            }
        }
    }
}
