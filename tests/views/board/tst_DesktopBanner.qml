import QtQuick
import QtTest
import Kelpa.Appearance
import Kelpa.Board

Item {
    id: root

    width: 900
    height: 300

    BoardNotices {
        id: notices

        width: parent.width
        board: world.board
    }
    BoardHints {
        id: hints

        y: 200
        width: parent.width
        isDoubleTapOffered: world.board.isDoubleTapOffered
        notice: world.board.desktopNotice
    }

    SignalSpy {
        id: requests

        target: hints
        signalName: "shortcutsRequested"
    }

    TestCase {
        name: "DesktopBanner"
        when: windowShown

        function cleanup() {
            world.lackNothing();
        }
        function banner(): Item {
            return Array.from(notices.children).find(item => item instanceof DesktopBanner) ?? null;
        }
        function button(item: Item, name: string): Item {
            return Array.from(item.children).find(
                each => each.visible && each.Accessible.name === name) ?? null;
        }

        function test_says_what_the_desktop_lacks_until_it_has_been_read() {
            compare(banner(), null);
            world.lack("windows");
            tryVerify(() => banner() !== null);
            compare(banner().Accessible.name, "Windows cannot be listed on this desktop");
            verify(banner().Accessible.description.startsWith("Kelpa cannot read the windows"));
            verify(!notices.isEmpty);
            mouseClick(button(banner(), "Got it"));
            tryVerify(() => banner() === null);
        }
        function test_tells_that_Xwayland_has_some_of_the_windows() {
            world.lack("windows", true);
            tryVerify(() => banner() !== null);
            compare(banner().Accessible.name, "Only windows of X11 programs are listed");
        }
        function test_one_button_switches_the_extension_on() {
            world.lack("windows");
            verify(button(banner(), "Switch on") === null);
            world.lack("extension");
            tryVerify(() => banner() !== null && button(banner(), "Switch on") !== null);
            verify(banner().Accessible.description.includes("Shell extension"));
            const asked = world.abilityRequests();
            mouseClick(button(banner(), "Switch on"));
            compare(world.abilityRequests(), asked + 1);
            verify(banner() !== null);
            world.lackNothing();
            tryVerify(() => banner() === null);
        }
        function test_previews_and_keys_are_not_missed_above_the_board() {
            world.lack("previews");
            world.lack("quitting");
            world.lack("globalKeys");
            compare(banner(), null);
        }
        function test_a_key_of_the_desktop_takes_the_place_of_the_double_tap() {
            verify(button(hints, "Copy command") === null);
            world.lack("globalKeys");
            const copy = button(hints, "Copy command");
            verify(copy !== null);
            verify(Array.from(hints.children).some(
                each => each.visible && each.Accessible.name.includes("kelpa --show")));
            mouseClick(copy);
            compare(world.clipboard(), "kelpa --show");
            compare(world.board.toastMessage, "Command copied to clipboard");
        }
        function hint(): string {
            return Array.from(hints.children).filter(
                each => each.visible && each.Accessible.role === Accessible.StaticText)
                .map(each => each.Accessible.name).join("|");
        }
        function test_a_key_is_chosen_in_the_dialog_of_a_desktop_that_has_one() {
            world.lack("globalKeys");
            hints.isShortcutOffered = true;
            verify(hint().includes("can have a key that brings Kelpa forward"));
            verify(button(hints, "Copy command") === null);
            requests.clear();
            mouseClick(button(hints, "Choose keys…"));
            compare(requests.count, 1);
            // The desktop has given keys, and does not say which.
            hints.isShortcutOffered = false;
            verify(hint().includes("kelpa --show"));
            verify(button(hints, "Copy command") !== null);
            // The board's menu names the key.
            hints.shortcutKey = "Ctrl+Alt+K";
            verify(!hint().includes("kelpa --show"));
            verify(button(hints, "Copy command") === null);
            hints.shortcutKey = "";
        }
        function test_a_key_of_the_desktop_is_not_needed_beside_the_double_tap() {
            hints.isShortcutOffered = true;
            verify(button(hints, "Choose keys…") === null);
            hints.isShortcutOffered = false;
        }
        function test_the_hint_and_its_button_have_room_beside_each_other_data() {
            return [{tag: "narrow", width: 420}, {tag: "wide", width: 1400}];
        }
        function test_the_hint_and_its_button_have_room_beside_each_other(row) {
            hints.width = row.width;
            world.lack("globalKeys");
            const copy = button(hints, "Copy command");
            tryVerify(() => copy.x + copy.width <= hints.width);
            hints.width = Qt.binding(() => root.width);
        }
    }
}
