import QtQuick
import QtQuick.Window
import QtTest
import Kelpa

Item {
    id: root

    width: 300
    height: 100

    MarqueeGoalTitle {
        id: title

        width: 80
        text: "A title that is a good deal wider than its place"
    }

    Window {
        id: elsewhere

        readonly property MarqueeGoalTitle title: MarqueeGoalTitle {
            parent: elsewhere.contentItem
            width: 80
            text: "A title that is a good deal wider than its place"
        }

        width: 200
        height: 100
        visible: false
    }

    TestCase {
        name: "MarqueeGoalTitle"
        when: windowShown

        readonly property string wide: "A title that is a good deal wider than its place"

        function init() {
            ViewSettings.isReducingMotion = false;
            ViewSettings.isSeen = true;
            title.visible = true;
            title.isOnScreen = true;
            title.isAllowedToMove = true;
            title.text = wide;
            title.width = 80;
        }

        function test_a_title_that_is_too_wide_moves_to_the_left() {
            verify(title.isMoving);
            tryVerify(() => title.offset < -1);
        }
        function test_its_repeated_start_ends_the_pass_where_it_began() {
            const measure = title.measure;
            compare(measure.travel, measure.textWidth + 15);
            compare(measure.textWidth, Math.ceil(measure.textWidth));
            compare(measure.passTime, Math.round(Math.max(measure.travel / 14, 4) * 1000));
        }
        function test_a_title_that_fits_stays_still() {
            title.width = 290;
            title.text = "Short";
            verify(!title.isMoving);
            compare(title.measure.passTime, 0);
        }
        function test_it_moves_at_14_points_a_second() {
            title.text = "Short";
            title.text = wide;
            verify(title.isMoving);
            tryVerify(() => title.offset < -4);
            // From the start again, and no faster than that.
            verify(title.offset > -40);
        }
        function test_with_reduced_motion_no_title_moves() {
            ViewSettings.isReducingMotion = true;
            verify(!title.isMoving);
            verify(title.isTruncated);
            ViewSettings.isReducingMotion = false;
            verify(title.isMoving);
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
        function test_behind_other_windows_no_title_moves() {
            ViewSettings.isSeen = false;
            verify(!title.isMoving);
            verify(title.isTruncated);
            ViewSettings.isSeen = true;
            verify(title.isMoving);
        }
        function test_in_a_window_that_is_minimized_or_hidden_no_title_moves() {
            elsewhere.show();
            tryVerify(() => elsewhere.title.isMoving);
            elsewhere.showMinimized();
            verify(!elsewhere.title.isMoving);
            elsewhere.showNormal();
            tryVerify(() => elsewhere.title.isMoving);
            elsewhere.hide();
            verify(!elsewhere.title.isMoving);
        }
        function test_a_title_that_nobody_sees_does_not_move() {
            title.visible = false;
            verify(!title.isMoving);
            title.visible = true;
            verify(title.isMoving);
            title.isOnScreen = false;
            verify(!title.isMoving);
            title.isOnScreen = true;
            verify(title.isMoving);
        }
        function test_a_new_text_starts_from_the_beginning() {
            tryVerify(() => title.offset < -3);
            title.text = wide + ", and wider still";
            verify(title.isMoving);
            verify(title.offset > -1);
        }
    }
}
