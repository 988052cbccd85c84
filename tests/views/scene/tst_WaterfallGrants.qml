import QtQuick
import QtTest
import Kelpa.Scene

Item {
    id: root

    width: 300
    height: 400

    ListModel {
        id: cards

        ListElement {
            name: "a"
        }
        ListElement {
            name: "b"
        }
        ListElement {
            name: "c"
        }
    }
    WaterfallView {
        id: view

        width: 100
        height: implicitHeight
        minimumColumnWidth: 100
        spacing: 10
        assumedHeight: 50
        visibleTo: 400
        model: cards

        WaterfallDelegate {
            Item {
                required property string name
                required property int index

                WaterfallDelegate.restHeight: 50
                WaterfallDelegate.fullHeight: 90
                // Once it is higher, it never wants to be lower again.
                implicitHeight: Math.max(50, WaterfallDelegate.grantedHeight)
                height: implicitHeight
            }
        }
    }

    TestCase {
        name: "WaterfallGrants"
        when: windowShown

        function test_a_row_may_need_at_once_what_it_was_granted() {
            view.layOut();
            compare(view.implicitHeight, 170);
            view.room = 290;
            view.layOut();
            compare(view.implicitHeight, 290);
            let place = 0;
            for (let row = 0; row < cards.count; ++row) {
                const item = view.itemAtRow(row);
                compare(Qt.rect(item.x, item.y, item.width, item.height), Qt.rect(0, place, 100, 90));
                place += 100;
            }
        }
    }
}
