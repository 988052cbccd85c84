import QtQuick
import QtTest
import Kelpa.Appearance
import Kelpa.Goals

Rectangle {
    id: root

    width: 500
    height: 700
    color: Theme.window

    ExpandableGoalCard {
        id: card

        x: 20
        y: 20
        width: 320
        naturalHeight: 500

        // Without any margin, so that it reaches into every corner.
        Rectangle {
            id: filling

            y: 60
            width: parent.width
            height: 440
            color: "#ff0000"
        }
        MouseArea {
            id: area

            anchors.fill: parent
        }
    }
    SignalSpy {
        id: clicks

        target: area
        signalName: "clicked"
    }

    TestCase {
        name: "ExpandableGoalCard"
        when: windowShown

        function init() {
            ViewSettings.isReducingMotion = true;
            card.naturalHeight = 500;
            card.isExpanded = false;
            card.isAccepting = false;
            filling.visible = true;
            clicks.clear();
        }
        function fade() {
            for (let i = 0; i < card.children.length; ++i)
                if (card.children[i] instanceof Rectangle && card.children[i].y > 0)
                    return card.children[i];
            return null;
        }
        /// Of the card's own place, also outside its round corners.
        function pixel(x, y) {
            return grabImage(root).pixel(card.x + x, card.y + y).toString();
        }

        /// But for what a gradient rounds.
        function isNear(first, second) {
            const part = (color, from) => parseInt(color.slice(from, from + 2), 16);
            return [1, 3, 5].every(from => Math.abs(part(first, from) - part(second, from)) <= 2);
        }

        function test_the_fade_covers_the_lowest_48_points_in_round_corners() {
            compare(card.height, 292);
            compare(fade().height, 48);
            compare(fade().y, 244);
            compare(fade().width, 320);
            compare(fade().radius, 14);
            verify(fade().visible);
            compare(pixel(160, 240), "#ff0000");
            compare(pixel(160, 288), Theme.column.toString());
        }
        function test_the_fade_shows_only_while_the_card_is_cut() {
            card.isExpanded = true;
            tryCompare(card, "height", 500);
            verify(!fade().visible);
            card.isExpanded = false;
            tryCompare(card, "height", 292);
            verify(fade().visible);
            card.naturalHeight = 200;
            tryCompare(card, "isCut", false);
            compare(card.height, 292);
            verify(!fade().visible);
        }
        function test_the_fade_lets_clicks_through() {
            mouseClick(card, 160, 270);
            compare(clicks.count, 1);
            mouseClick(card, 160, 290);
            compare(clicks.count, 2);
        }
        function test_what_is_cut_off_ends_in_the_round_corners() {
            const ground = Theme.window.toString();
            for (const [x, y] of [[0, 291], [2, 289], [0, 286], [5, 291],
                                  [319, 291], [317, 289], [319, 286], [314, 291]])
                compare(pixel(x, y), ground, x + " " + y);
            // Within the corner, and above it at the very edge.
            compare(pixel(6, 286), Theme.column.toString());
            compare(pixel(0, 240), "#ff0000");
            compare(pixel(319, 240), "#ff0000");
        }
        function test_a_card_that_would_accept_a_drag_shows_it_down_to_its_lower_edge() {
            filling.visible = false;
            const plain = pixel(160, 150);
            compare(plain, Theme.column.toString());
            compare(pixel(160, 285), plain);
            card.isAccepting = true;
            const lit = pixel(160, 150);
            verify(isNear(pixel(160, 250), lit), pixel(160, 250) + " " + lit);
            verify(isNear(pixel(160, 285), lit), pixel(160, 285) + " " + lit);
            verify(!isNear(plain, lit));
        }
    }
}
