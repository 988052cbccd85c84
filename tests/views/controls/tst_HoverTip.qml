import QtQuick
import QtTest
import Kelpa.Appearance
import Kelpa.Controls

Item {
    id: root

    width: 300
    height: 100

    Item {
        id: row

        property bool hovered: false

        width: 100
        height: 30

        HoverTip {
            id: tip

            text: "What it does"
            isHovered: row.hovered
        }
    }

    TestCase {
        name: "HoverTip"
        when: windowShown

        function test_an_item_that_leaves_the_window_under_the_pointer_has_no_tip() {
            failOnWarning(/cannot find any window/);
            row.hovered = true;
            verify(tip.active);
            row.parent = null;
            verify(!tip.active);
            wait(Theme.tipDelay + 50);
            row.parent = root;
            verify(tip.active);
            row.hovered = false;
            verify(!tip.active);
        }
    }
}
