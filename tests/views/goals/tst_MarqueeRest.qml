import QtQuick
import QtQuick.Window
import QtTest
import Kelpa.Appearance
import Kelpa.Goals

/// When a title stays still.
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
        name: "MarqueeRest"
        when: windowShown

        readonly property string wide: "A title that is a good deal wider than its place"

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

        function test_a_title_of_which_only_a_part_is_seen_at_a_time_says_so() {
            verify(title.isMoving && title.isPartlySeen);
            title.isAllowedToMove = false;
            verify(title.isPartlySeen);
            title.width = 600;
            tryVerify(() => !title.isPartlySeen);
        }
        function test_a_title_that_fits_stays_still() {
            title.width = 290;
            title.text = "Short";
            verify(!title.isMoving);
            compare(title.measure.passTime, 0);
        }
        function test_with_reduced_motion_no_title_moves() {
            ViewSettings.isReducingMotion = true;
            verify(!title.isMoving);
            verify(title.isTruncated);
            ViewSettings.isReducingMotion = false;
            verify(title.isMoving);
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
    }
}
