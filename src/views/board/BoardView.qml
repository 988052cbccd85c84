pragma ComponentBehavior: Bound

import QtQuick
import Kelpa.Appearance
import Kelpa.Board

/// The visible part of the board. `reveal` scrolls it to a part of the content.
Flickable {
    id: root

    required property BoardController board
    /// The end of the content with the room below it, in points of the content's coordinates.
    required property real end

    // Room that is no longer needed stays until nothing moves in it.
    property real easedEnd: root.end
    /// The distance above and below the visible part, so that the Tab key finds the next items.
    readonly property real reach: ViewSettings.isStarting ? 0 : 100
    /// Whether it is scrolling to a revealed part.
    readonly property bool isScrolling: scrolling.running

    /// Asks for the menu of the board beside a place in the item.
    signal menuRequested(item: Item, place: rect)
    /// It is scrolled by a person.
    signal steered

    function openMenu(): void {
        root.menuRequested(root, Qt.rect(Theme.large, Theme.large, 0, 0));
    }
    /// In the content's coordinates; scrolls as little as needed, and to the upper end of a part
    /// that does not fit.
    function reveal(top: real, length: real): void {
        root.glide(root.revealing(top, length));
    }
    function revealing(top: real, length: real): real {
        const first = top - Theme.large;
        const last = top + length + Theme.large - root.height;
        return Math.min(first, Math.max(last, root.contentY));
    }
    /// Whether nothing but that part is in view.
    function isFilledBy(top: real, length: real): bool {
        return top <= root.contentY && top + length >= root.contentY + root.height;
    }
    function scrollTo(place: real): void {
        root.steered();
        root.glide(place);
    }
    /// Scrolls for somebody who did not ask for it. Whether that takes it anywhere.
    function glide(place: real): bool {
        scrolling.stop();
        scrolling.to = root.within(place);
        const isElsewhere = scrolling.to !== root.contentY;
        if (isElsewhere)
            scrolling.start();
        return isElsewhere;
    }
    /// It stays where it is.
    function halt(): void {
        scrolling.stop();
    }
    /// Scrolls by a number of screens; the content at the edge stays visible.
    function turn(screens: int): void {
        const place = scrolling.running ? scrolling.to : root.contentY;
        root.scrollTo(place + screens * (root.height - 2 * Theme.huge));
    }
    /// Scrolls at once by a number of points.
    function scrollBy(step: real): void {
        root.steered();
        scrolling.stop();
        root.contentY = root.within(root.contentY + step);
    }
    function within(place: real): real {
        return Math.max(0, Math.min(place, root.end - root.height));
    }

    contentHeight: Math.max(root.end, root.easedEnd)
    boundsBehavior: Flickable.StopAtBounds
    clip: true
    onMovementStarted: {
        root.steered();
        scrolling.stop();
    }
    Accessible.role: Accessible.Pane
    Accessible.name: ViewSettings.copy.text(CopyKey.Board)
    Accessible.onPressAction: root.openMenu()

    Behavior on easedEnd {
        NumberAnimation {
            duration: Theme.mediumTime
            easing.type: Easing.OutCubic
        }
    }
    NumberAnimation {
        id: scrolling

        target: root
        property: "contentY"
        duration: Theme.mediumTime
        easing.type: Easing.OutCubic
    }

    // Receives presses beside all cards.
    MouseArea {
        id: ground

        width: root.width
        height: Math.max(root.height, root.contentHeight)
        acceptedButtons: Qt.LeftButton | Qt.RightButton
        onClicked: mouse => {
            if (mouse.button === Qt.RightButton)
                root.menuRequested(ground, Qt.rect(mouse.x, mouse.y, 0, 0));
            else
                root.board.clearSelection();
        }
    }
}
