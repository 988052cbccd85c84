import QtQuick
import QtTest
import Kelpa

Item {
    id: root

    width: 900
    height: 200

    PermissionBanner {
        id: banner

        width: parent.width
        board: world.board
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
            mouseClick(button);
            compare(world.openedUrlCount(), 1);
        }
    }
}
