pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Templates as T
import Kelpa

/// A menu as wide as its widest item, within limits.
T.Menu {
    id: root

    implicitWidth: Math.min(360, Math.max(180, contentItem.implicitWidth + leftPadding
                                               + rightPadding))
    implicitHeight: Math.min(contentItem.implicitHeight + topPadding + bottomPadding,
                             parent && root.contentItem.Window.window
                             ? root.contentItem.Window.window.height - 2 * Theme.small : 600)
    margins: Theme.small
    padding: Theme.tiny
    overlap: 1
    cascade: true
    // The item that opens a menu within this one.
    delegate: AppMenuItem {
        symbol: "arrow-right"
    }

    contentItem: ListView {
        implicitWidth: root.widestItem()
        implicitHeight: contentHeight
        model: root.contentModel
        interactive: contentHeight > height
        clip: true
        currentIndex: root.currentIndex
        T.ScrollBar.vertical: AppScrollBar {}
    }
    background: FloatingGround {
        radius: Theme.controlRadius + Theme.tiny
    }

    // Of the item that holds the menu, which has the focus.
    Binding {
        target: root.contentItem.parent.Accessible
        property: "name"
        value: root.title
    }

    function widestItem(): real {
        let widest = 0;
        for (let i = 0; i < root.count; ++i)
            widest = Math.max(widest, root.itemAt(i).implicitWidth);
        return widest;
    }
}
