pragma ComponentBehavior: Bound

import QtQuick
import QtTest
import Kelpa.Scene

Item {
    id: root

    width: 300
    height: 100

    property bool isWanted: false
    property int changes: 0

    Item {
        id: first

        width: 10
    }
    OptionalItem {
        id: optional

        isWanted: root.isWanted
        onItemChanged: root.changes += 1

        Item {
            anchors.left: first.right
            objectName: root.width === 300 ? "wanted" : ""

            Timer {
                running: true
                interval: 0
            }
        }
    }
    Item {
        id: last
    }
    Column {
        id: column

        spacing: 5

        Item {
            width: 10
            height: 10
        }
        OptionalItem {
            isWanted: root.isWanted

            Item {
                width: 10
                height: 20
            }
        }
        Item {
            width: 10
            height: 10
        }
    }

    TestCase {
        name: "OptionalItem"
        when: windowShown

        function init() {
            root.isWanted = false;
            root.changes = 0;
        }
        function test_the_item_is_there_while_it_is_wanted() {
            compare(optional.item, null);
            root.isWanted = true;
            compare(optional.item.objectName, "wanted");
            compare(optional.item.parent, root);
            compare(optional.item.x, 10);
            compare(root.changes, 1);
            root.isWanted = false;
            compare(optional.item, null);
            compare(root.changes, 2);
        }
        function test_it_stands_between_the_items_declared_before_and_after_it() {
            root.isWanted = true;
            const places = [first, optional.item, last].map(item => Array.from(root.children).indexOf(item));
            verify(places[0] < places[1] && places[1] < places[2], places.join());
        }
        function test_a_column_has_no_gap_where_nothing_is_wanted() {
            tryCompare(column, "implicitHeight", 25);
            root.isWanted = true;
            tryCompare(column, "implicitHeight", 50);
        }
        function test_an_item_that_ends_the_need_for_itself_is_gone_afterwards() {
            root.isWanted = true;
            const item = optional.item;
            item.objectNameChanged.connect(() => {
                root.isWanted = false;
                compare(item.parent, null);
            });
            item.objectName = "done";
            compare(optional.item, null);
        }
    }
}
