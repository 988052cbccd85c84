import QtQuick
import QtTest
import Kelpa.Scene
import Kelpa.Controls

Item {
    id: root

    width: 400
    height: 300

    // The place of a drop, which the chip must not cover wherever the pointer is in it.
    Item {
        id: place

        width: 90
        height: 18
    }
    BoardDragSource {
        id: source
    }
    DragChip {
        id: chip

        dragSource: source
    }

    TestCase {
        name: "DragChip"
        when: windowShown

        function test_nothing_is_named_without_a_drag() {
            source.nameDestination(place, "→ Taxes");
            verify(!chip.visible);
            source.leaveDestination(place);
        }
        function test_it_stays_in_view_and_beside_the_pointer_data() {
            return [
                { tag: "in the middle", pointer: Qt.point(100, 100) },
                { tag: "at the right edge", pointer: Qt.point(399, 100) },
                { tag: "at the lower edge", pointer: Qt.point(100, 299) },
                { tag: "in a corner", pointer: Qt.point(399, 299) },
            ];
        }
        function test_it_stays_in_view_and_beside_the_pointer(row) {
            source.nameDestination(place, "→ The long title of a goal that is to be named");
            const at = chip.placeBeside(row.pointer);
            verify(at.x >= 0 && at.x + chip.width <= root.width, at);
            verify(at.y >= 0 && at.y + chip.height <= root.height, at);
            // Further from the pointer than an entry of the rail is high, or above it.
            verify(at.y >= row.pointer.y + 18 || at.y + chip.height <= row.pointer.y - 9, at);
            source.leaveDestination(place);
        }
    }
}
