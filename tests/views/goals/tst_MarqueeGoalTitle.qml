import QtQuick
import QtTest
import Kelpa.Appearance
import Kelpa.Goals

/// How a title moves and looks.
Item {
    id: root

    width: 300
    height: 100

    MarqueeGoalTitle {
        id: title

        width: 80
        text: "A title that is a good deal wider than its place"
    }

    TextMetrics {
        id: medium

        font: ViewSettings.font(ViewSettings.fontFamilies, 11, Font.Medium)
        text: "A title that is a good deal wider than its place"
    }
    TextMetrics {
        id: semibold

        font: ViewSettings.font(ViewSettings.fontFamilies, 11, Font.DemiBold)
        text: medium.text
    }

    TestCase {
        name: "MarqueeGoalTitle"
        when: windowShown

        readonly property string wide: "A title that is a good deal wider than its place"
        readonly property string rightToLeft: "قائمة المهام الطويلة لهذا الأسبوع ولما بعده"

        /// Everything below `item` for which `accepts` holds, and of what is no item `includes`.
        function all(item, accepts, includes) {
            let found = accepts(item) ? [item] : [];
            if (includes !== undefined)
                for (let i = 0; i < item.resources.length; ++i)
                    if (includes(item.resources[i]))
                        found.push(item.resources[i]);
            for (let i = 0; i < item.children.length; ++i)
                found = found.concat(all(item.children[i], accepts, includes));
            return found;
        }
        /// The texts that are drawn, from left to right.
        function shown() {
            return all(title, item => item instanceof Text && item.visible);
        }

        function init() {
            ViewSettings.isReducingMotion = false;
            ViewSettings.isSeen = true;
            title.visible = true;
            title.isOnScreen = true;
            title.isAllowedToMove = true;
            title.isEmphasized = false;
            title.text = wide;
            title.width = 80;
        }

        function test_a_title_that_is_too_wide_moves_to_the_left() {
            verify(title.isMoving);
            tryVerify(() => title.offset < -1);
        }
        function test_a_title_from_right_to_left_moves_to_the_right_from_its_beginning() {
            title.text = rightToLeft;
            verify(title.isMoving);
            tryVerify(() => shown().length === 2 && shown()[1].x !== shown()[0].x);
            const width = title.measure.textWidth;
            const edge = copy => copy.mapToItem(title, copy.width, 0).x;
            // Where it begins, at the right, less what it has moved since.
            verify(Math.abs(edge(shown()[0]) + title.offset - title.width) < 0.01);
            verify(title.offset > -width / 2);
            // Its repeated start follows it.
            compare(shown()[0].x - shown()[1].x, width + 15);
            tryVerify(() => title.offset < -3);
            verify(edge(shown()[0]) > title.width + 2);
        }
        function test_a_title_from_right_to_left_fades_at_its_end_and_then_at_its_beginning() {
            title.text = rightToLeft;
            const fades = () => all(title, item => item instanceof Rectangle && item.visible);
            const atEnd = () => fades().find(fade => fade.x === 0);
            const atBeginning = () => fades().find(fade => fade.x > 0);
            verify(atEnd() !== undefined);
            compare(atEnd().gradient.stops[0].color.a, 1);
            compare(atEnd().gradient.stops[1].color.a, 0);
            tryVerify(() => title.offset < -1);
            compare(atBeginning().x + atBeginning().width, title.width);
            compare(atBeginning().gradient.stops[1].color.a, 1);
        }
        function test_a_title_that_moves_fades_into_its_ground_at_both_ends() {
            title.ground = "#123456";
            const fades = () => all(title, item => item instanceof Rectangle && item.visible);
            tryVerify(() => title.offset < -1);
            compare(fades().map(fade => fade.x > 0 ? fade.x + fade.width : 0).sort(), [0, 80]);
            for (const fade of fades()) {
                const stops = fade.gradient.stops;
                const outer = fade.x > 0 ? stops[1] : stops[0];
                const inner = fade.x > 0 ? stops[0] : stops[1];
                verify(Qt.colorEqual(outer.color, "#123456"));
                compare(inner.color.a, 0);
            }
            title.isAllowedToMove = false;
            compare(fades().length, 0);
        }
        function test_a_pass_ends_where_the_repeated_start_stands_at_the_beginning() {
            const width = Math.ceil(medium.advanceWidth);
            compare(title.measure.textWidth, width);
            compare(title.measure.travel, width + 15);
            compare(title.measure.passTime, Math.round((width + 15) / 14 * 1000));
            tryVerify(() => shown()[1].x > 0);
            const copies = shown();
            compare(copies.map(copy => copy.text), [wide, wide]);
            compare(copies.map(copy => copy.x), [0, width + 15]);
            compare(copies[0].parent.x, title.offset);
        }
        function test_a_short_pass_takes_4_seconds_and_is_followed_by_the_next() {
            title.width = 5;
            title.text = "Ill";
            verify(title.measure.travel > 15 && title.measure.travel < 56);
            compare(title.measure.passTime, 4000);
            const half = -title.measure.travel / 2;
            tryVerify(() => title.offset < half, 10000);
            // The next pass begins where the first did, and is no turning back: whenever the title
            // moves back, it does so from the end of a pass to the beginning of one.
            let before = title.offset;
            let passesBegun = 0;
            const turnings = [];
            const note = () => {
                if (title.offset > before + 1) {
                    ++passesBegun;
                    if (before > half || title.offset < half)
                        turnings.push([before, title.offset]);
                }
                before = title.offset;
            };
            title.offsetChanged.connect(note);
            tryVerify(() => passesBegun > 0, 10000);
            title.offsetChanged.disconnect(note);
            compare(turnings, []);
            verify(title.isMoving);
            const passes = all(title, () => false, item => item instanceof NumberAnimation);
            compare(passes.length, 1);
            compare(passes[0].loops, -1); // Endless.
        }
        function test_its_font_has_11_points_and_is_medium_or_semibold_when_emphasized() {
            compare(title.font.pixelSize, 11);
            compare(title.font.weight, 500);
            compare(shown().map(copy => copy.font.weight), [500, 500]);
            compare(shown().map(copy => copy.font.pixelSize), [11, 11]);
            title.isEmphasized = true;
            compare(title.font.pixelSize, 11);
            compare(title.font.weight, 600);
            compare(shown().map(copy => copy.font.weight), [600, 600]);
            compare(title.measure.textWidth, Math.ceil(semibold.advanceWidth));
            title.isAllowedToMove = false;
            compare(shown().map(copy => copy.font.weight), [600]);
            compare(shown().map(copy => copy.font.pixelSize), [11]);
        }
        function test_it_moves_at_14_points_a_second() {
            const passes = all(title, () => false, item => item instanceof NumberAnimation);
            compare(passes.length, 1);
            const speed = (passes[0].from - passes[0].to) / passes[0].duration * 1000;
            verify(Math.abs(speed - 14) < 0.1, speed);
            compare(passes[0].easing.type, Easing.Linear);
            tryVerify(() => title.offset < -3);
        }
        function test_a_new_text_of_the_same_width_starts_from_the_beginning_too() {
            title.text = "(2)Taxes of the year before last";
            const width = title.measure.textWidth;
            verify(title.isMoving);
            tryVerify(() => title.offset < -3);
            title.text = "(3)Taxes of the year before last";
            compare(title.measure.textWidth, width);
            verify(title.isMoving);
            verify(title.offset > -1, title.offset);
        }
        function test_a_new_text_starts_from_the_beginning() {
            tryVerify(() => title.offset < -3);
            title.text = wide + ", and wider still";
            verify(title.isMoving);
            verify(title.offset > -1);
        }
    }
}
