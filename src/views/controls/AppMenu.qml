pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Templates as T
import Kelpa.Appearance
import Kelpa.Scene

/// A menu as wide as its widest item, within limits. While it is open, it has the pointer and the
/// keys to itself: a press beside it only closes it. It also closes when another program comes
/// forward, and when the window is resized or texts change their size, which moves the item that the
/// menu belongs to.
T.Menu {
    id: root

    /// Whether it opens within another menu, which has the pointer with it.
    property bool isWithinMenu: false

    /// Points. Not updated while the menu is closed: items may come and go by the hundred then.
    property real widestItem: 0
    property real itemsHeight: 0

    /// The item below everything that the window opens over its content; absent in a plain view.
    /// A closed menu is itself in no window.
    readonly property Item shownBelow: root.parent?.T.ApplicationWindow.contentItem ?? null

    implicitWidth: Math.min(Theme.grown(360), Math.max(Theme.grown(180), contentItem.implicitWidth + leftPadding
                                               + rightPadding))
    implicitHeight: root.heightWithin(parent ? root.contentItem.Window.window : null)
    margins: Theme.small
    padding: Theme.tiny
    overlap: 1
    cascade: true
    modal: !root.isWithinMenu
    T.Overlay.modal: MouseArea {
        acceptedButtons: Qt.AllButtons
        hoverEnabled: true
        onWheel: wheel => wheel.accepted = true
    }
    // The item that opens a menu within this one.
    delegate: AppMenuItem {
        symbol: "arrow-right"
    }

    contentItem: ListView {
        implicitWidth: root.widestItem
        implicitHeight: contentHeight
        model: root.contentModel
        interactive: contentHeight > height
        keyNavigationEnabled: false
        clip: true
        currentIndex: root.currentIndex
        Keys.onPressed: event => event.accepted = root.takeKey(event)
        T.ScrollBar.vertical: AppScrollBar {}
    }
    // The item that holds the menu has the keyboard while no item of the menu has it.
    Component.onCompleted: root.forwardKeys(root.contentItem.parent.Keys)
    onAboutToShow: root.measure()
    // The first frame shows each item in its place.
    onOpened: (root.contentItem as ListView).forceLayout()
    onCountChanged: if (root.visible)
        root.measure()
    // The toolkit returns the keyboard only when the window has it.
    onClosed: {
        const below = root.sheetAround() ?? root.shownBelow;
        if (!(root.parent?.Window.active ?? false) && below !== null)
            below.focus = true;
    }
    background: FloatingGround {
        radius: Theme.controlRadius + Theme.tiny
    }

    Connections {
        target: root.contentItem.Window.window
        enabled: root.opened

        // An assistive program may open a menu before the toolkit knows that the window has the
        // keyboard. The attached property still has the former value here.
        function onActiveChanged(): void {
            if (!root.contentItem.Window.window.active)
                root.close();
        }
        function onWidthChanged(): void {
            root.close();
        }
        function onHeightChanged(): void {
            root.close();
        }
    }
    Connections {
        target: ViewSettings
        enabled: root.opened

        function onTextScaleChanged(): void {
            root.close();
        }
    }
    // Names the item that holds the menu, which has the focus.
    Binding {
        target: root.contentItem.parent.Accessible
        property: "name"
        value: root.title
    }

    /// Opens the menu beside `place`, which it does not cover: a button, or the position of a press
    /// as a rectangle of no size. In the coordinates of `owner`.
    function openBeside(owner: Item, place: rect): void {
        root.measure();
        const window = owner.Window.window;
        const corner = MenuPlacement.position(
            owner.mapToItem(null, place), Qt.size(root.implicitWidth, root.heightWithin(window)),
            Qt.size(window.width, window.height), Theme.small, place.height > 0 ? Theme.tiny : 0);
        root.popup(owner, owner.mapFromItem(null, corner));
    }
    /// The item of the sheet in which the menu opens; null for a menu of the board.
    function sheetAround(): Item {
        const overlay = root.parent?.T.Overlay.overlay ?? null;
        for (let each = root.parent; each !== null && overlay !== null; each = each.parent)
            if (each.parent === overlay)
                return each;
        return null;
    }
    /// The height of all items, or what a window has room for; null is no window yet.
    function heightWithin(window: var): real {
        return Math.min(root.itemsHeight + root.topPadding + root.bottomPadding,
                        (window?.height ?? 600) - 2 * Theme.small);
    }
    /// Forwards keys from the item that holds the menu to its list.
    function forwardKeys(keys: var): void {
        keys.forwardTo = [root.contentItem];
    }
    function isChoosable(index: int): bool {
        const item = root.itemAt(index) as T.MenuItem;
        return item !== null && item.enabled && item.visible;
    }
    function textAt(index: int): string {
        return (root.itemAt(index) as T.MenuItem).text.toLocaleLowerCase();
    }
    /// Chooses the next item from `index` on, or before it, whose text begins with `initial`, in
    /// either case; any item where that is empty.
    function choose(index: int, step: int, initial: string): bool {
        const count = root.count;
        const wanted = initial.toLocaleLowerCase();
        for (let i = 0; i < count; ++i) {
            const place = (index + i * step + 2 * count) % count;
            if (root.isChoosable(place) && root.textAt(place).startsWith(wanted)) {
                root.currentIndex = place;
                return true;
            }
        }
        return false;
    }
    function takeKey(event: KeyEvent): bool {
        if (event.modifiers & (Qt.ControlModifier | Qt.AltModifier | Qt.MetaModifier))
            return false;
        switch (event.key) {
        case Qt.Key_Down:
            return root.choose(root.currentIndex + 1, 1, "");
        case Qt.Key_Up:
            return root.choose(Math.max(root.currentIndex, 0) - 1, -1, "");
        case Qt.Key_Home:
            return root.choose(0, 1, "");
        case Qt.Key_End:
            return root.choose(root.count - 1, -1, "");
        default:
            return event.text.trim() !== "" && root.choose(root.currentIndex + 1, 1, event.text);
        }
    }
    function measure(): void {
        let widest = 0;
        let height = 0;
        for (let i = 0; i < root.count; ++i) {
            widest = Math.max(widest, root.itemAt(i).implicitWidth);
            height += root.itemAt(i).implicitHeight;
        }
        root.widestItem = widest;
        root.itemsHeight = height;
    }
}
