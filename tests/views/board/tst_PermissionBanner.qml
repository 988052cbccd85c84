import QtQuick
import QtTest
import Kelpa.Appearance
import Kelpa.Controls
import Kelpa.Board

Item {
    id: root

    width: 900
    height: 300

    PermissionBanner {
        id: banner

        width: parent.width
        board: world.board
    }

    TestCase {
        name: "PermissionBanner"
        when: windowShown

        function init() {
            world.setPermissionSettings(true);
            world.grantPermissions();
        }
        /// What is missing, from top to bottom.
        function rows() {
            const column = Array.from(banner.children).find(item => item instanceof Column);
            return Array.from(column.children).filter(item => item.visible)
                .sort((a, b) => a.y - b.y);
        }
        function headings() {
            return rows().map(row => row.Accessible.name);
        }

        function test_shows_only_while_a_permission_is_missing() {
            verify(!banner.visible);
            world.denyPermissions();
            verify(banner.visible);
            world.grantPermissions();
            verify(!banner.visible);
        }
        function test_says_nothing_while_it_is_not_known_what_is_missing() {
            world.leavePermissionsUnknown();
            verify(!world.board.isScreenCaptureTrusted);
            verify(!banner.visible);
        }
        function test_tells_of_the_previews_first_and_6_points_below_of_the_windows() {
            world.denyPermissions();
            compare(headings(), ["Screen Recording permission is needed for live previews",
                                 "Accessibility permission is needed to focus and open windows"]);
            tryVerify(() => rows()[1].y > 0);
            const [first, second] = rows();
            compare(first.y, 0);
            compare(second.y - (first.y + first.height), 6);
            verify(banner.implicitHeight >= second.y + second.height);
        }
        function test_one_that_is_missing_alone_stands_without_a_gap_data() {
            return [
                {
                    tag: "screen recording",
                    isAccessibilityGranted: true,
                    heading: "Screen Recording permission is needed for live previews"
                },
                {
                    tag: "accessibility",
                    isAccessibilityGranted: false,
                    heading: "Accessibility permission is needed to focus and open windows"
                }
            ];
        }
        function test_one_that_is_missing_alone_stands_without_a_gap(data) {
            world.denyPermissions();
            world.setPermissions(data.isAccessibilityGranted, !data.isAccessibilityGranted);
            compare(headings(), [data.heading]);
            tryVerify(() => rows()[0].y === 0);
            tryCompare(rows()[0].parent, "implicitHeight", rows()[0].height);
        }
        function test_the_button_asks_for_what_is_missing() {
            world.denyPermissions();
            const button = Array.from(banner.children).find(item => item instanceof AppButton);
            compare(button.Accessible.name, "Open System Settings");
            verify(button.visible);
            mouseClick(button);
            const settings = "x-apple.systempreferences:com.apple.preference.security?";
            compare(world.openedUrls(), [settings + "Privacy_ScreenCapture"]);
            world.setPermissions(false, true);
            mouseClick(button);
            compare(world.openedUrls()[1], settings + "Privacy_Accessibility");
        }
        function test_without_settings_to_open_there_is_no_button_and_the_text_has_its_place() {
            world.denyPermissions();
            const button = Array.from(banner.children).find(item => item instanceof AppButton);
            const rows = Array.from(banner.children).find(item => item instanceof Column);
            tryVerify(() => rows.width > 0 && rows.x + rows.width <= button.x);
            const widthBesideButton = rows.width;
            world.grantPermissions();
            world.setPermissionSettings(false);
            world.denyPermissions();
            verify(!button.visible);
            tryCompare(rows, "width", widthBesideButton + button.width + Theme.large);
        }
        function test_what_is_missing_besides_permissions_is_named_with_what_helps() {
            world.takeWindowManager();
            compare(headings(), ["No window manager is running"]);
            compare(rows()[0].Accessible.description,
                    "Kelpa lists and opens windows through it. Start one, and they appear here.");
            world.takeComposite();
            compare(headings(), ["The X server lacks the Composite extension"]);
            compare(rows()[0].Accessible.description,
                    "Without it, no window can be shown. Enable it in the configuration of the "
                    + "X server and log in again.");
        }
    }
}
