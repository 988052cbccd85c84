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

    IconButton {
        id: button

        y: 40
        symbol: "circle"
        text: "Lamp"
        help: "The lamp is off"
        outcome: "A press: on"
    }

    TestCase {
        name: "HoverTip"
        when: windowShown

        function test_what_a_press_brings_is_said_below_the_help() {
            const own = Array.from(button.children).find(item => item instanceof HoverTip) as HoverTip;
            compare(own.text, "The lamp is off\nA press: on");
            compare(button.Accessible.description, "The lamp is off\nA press: on");
            own.isHovered = true;
            compare(own.item.text, "The lamp is off\nA press: on");
            const both = own.item.implicitWidth;
            compare(own.item.contentItem.lineCount, 2);
            button.outcome = "";
            fuzzyCompare(both, own.item.implicitWidth, 2);
            button.help = "The lamp is on";
            button.outcome = "A press: off";
            compare(own.item.text, "The lamp is on\nA press: off");
            own.isHovered = false;
            button.outcome = "";
            compare(own.text, "The lamp is on");
            compare(button.Accessible.description, "The lamp is on");
        }
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
