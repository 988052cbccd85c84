import QtQuick
import QtTest
import Kelpa

Item {
    id: root

    width: 900
    height: 300

    PermissionBanner {
        id: banner

        width: parent.width
        board: world.board
    }

    Loader {
        id: later

        y: banner.height
        width: parent.width
        active: false
        sourceComponent: PermissionBanner {
            board: world.board
        }
    }

    TestCase {
        name: "PermissionBanner"
        when: windowShown

        function test_shows_only_while_a_permission_is_missing() {
            verify(!banner.visible);
            world.denyPermissions();
            verify(banner.visible);
            tryVerify(() => banner.implicitHeight > 80);
        }
        function test_the_button_asks_for_what_is_missing() {
            world.denyPermissions();
            const button = Array.from(banner.children).find(item => item instanceof AppButton);
            compare(button.Accessible.name, "Open System Settings");
            verify(button.visible);
            mouseClick(button);
            compare(world.openedUrlCount(), 1);
        }
        function test_without_settings_to_open_there_is_no_button_and_the_text_has_its_place() {
            world.denyPermissions();
            const button = Array.from(banner.children).find(item => item instanceof AppButton);
            const rows = Array.from(banner.children).find(item => item instanceof Column);
            tryVerify(() => rows.width > 0 && rows.x + rows.width <= button.x);
            const widthBesideButton = rows.width;
            world.takePermissionSettings();
            later.active = true;
            const other = later.item as PermissionBanner;
            const none = Array.from(other.children).find(item => item instanceof AppButton);
            const wider = Array.from(other.children).find(item => item instanceof Column);
            verify(!none.visible);
            tryCompare(wider, "width", widthBesideButton + none.width + Theme.large);
        }
    }
}
