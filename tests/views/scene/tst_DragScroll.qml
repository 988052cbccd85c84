import QtQuick
import QtTest
import Kelpa.Scene

Item {
    id: root

    width: 300
    height: 400

    property real position: 0
    property string droppedOn

    // Each stripe accepts drops.
    Item {
        y: 50 - root.position
        width: parent.width

        Repeater {
            model: 20
            delegate: DropArea {
                required property int index

                y: index * 100
                width: root.width
                height: 100
                onDropped: root.droppedOn = index
            }
        }
    }
    DragScroll {
        id: scroll

        y: 50
        width: parent.width
        height: 300
        reach: 40
        speed: 1000
        onScrolled: step => root.position += step
    }

    // As often as it would scroll.
    Timer {
        id: ticker

        property int count: 0

        interval: 20
        repeat: true
        running: true
        onTriggered: ++ticker.count
    }

    TestCase {
        name: "DragScroll"
        when: windowShown

        function init() {
            root.position = 500;
            root.droppedOn = "";
        }
        function cleanup() {
            world.dropAt(root, Qt.point(150, 20));
            scroll.isActive = true;
        }

        function test_a_drag_that_rests_at_the_lower_edge_scrolls_on() {
            world.dragTo(root, Qt.point(150, 345));
            tryVerify(() => root.position > 700);
        }
        function test_a_drag_at_the_upper_edge_scrolls_back() {
            world.dragTo(root, Qt.point(150, 55));
            tryVerify(() => root.position < 400);
        }
        function test_a_drag_in_the_middle_stops_it() {
            world.dragTo(root, Qt.point(150, 345));
            tryVerify(() => root.position > 500);
            world.dragTo(root, Qt.point(150, 200));
            const before = root.position;
            const ticks = ticker.count;
            tryVerify(() => ticker.count > ticks + 5);
            compare(root.position, before);
        }
        function test_a_drop_falls_on_what_has_come_under_the_pointer() {
            world.dragTo(root, Qt.point(150, 345));
            const first = Math.floor((root.position + 295) / 100);
            tryVerify(() => root.position + 295 > (first + 2) * 100 + 10);
            const expected = Math.floor((root.position + 295) / 100);
            world.dropAt(root, Qt.point(150, 345));
            compare(root.droppedOn, String(expected));
        }
        function test_nothing_scrolls_while_it_is_not_active() {
            scroll.isActive = false;
            world.dragTo(root, Qt.point(150, 345));
            const ticks = ticker.count;
            tryVerify(() => ticker.count > ticks + 5);
            compare(root.position, 500);
        }
    }
}
