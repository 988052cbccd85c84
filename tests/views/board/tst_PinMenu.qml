import QtQuick
import QtTest
import Kelpa.Controls
import Kelpa.Goals
import Kelpa.Board
import "../cases"

/// Pinning a goal to a virtual desktop, from its menu, and what its header says of that.
Item {
    id: root

    width: 1100
    height: 700

    GoalBoard {
        id: board

        anchors.fill: parent
        board: world.board
    }

    BoardCase {
        name: "PinMenu"
        goalBoard: board

        readonly property string entry: "Pin to desktop"

        function texts() {
            return menuItems().map(item => item.text);
        }
        function openMenu() {
            column("First").openSelectionMenu();
            tryVerify(() => texts().includes("Rename goal"));
        }
        function closeMenu() {
            keyClick(Qt.Key_Escape);
            tryVerify(() => menuItems().length === 0);
        }
        function openPins() {
            openMenu();
            choose(entry);
            tryVerify(() => texts().includes("Not pinned"));
        }
        /// The menus close when the items of one are chosen.
        function pin(text) {
            openPins();
            choose(text);
            tryVerify(() => menuItems().length === 0);
        }
        function chosen() {
            return menuItems().filter(item => item.isChosen).map(item => item.text);
        }
        function badge() {
            return only(all(column("First"), item => item instanceof CountBadge && item.visible
                                                     && item.symbol === "pin"));
        }
        function initTestCase() {
            world.board.goals.createGoal("First");
            world.addWindow(7, "Report");
            world.board.windows.moveWindow(7, world.columnOfGoal("First"));
            tryVerify(() => column("First") !== null);
        }
        function init() {
            world.offerDesktops(["Home", "", "Mail"]);
            root.forceActiveFocus();
            tryVerify(() => !isMoving());
        }
        function cleanup() {
            world.lackNothing();
            world.board.goals.pinTo(world.columnOfGoal("First"), 0);
            tryVerify(() => badge() === null);
        }

        function test_it_is_offered_where_there_are_desktops_to_choose_from() {
            openMenu();
            verify(texts().includes(entry));
            closeMenu();
            world.lack("virtualDesktops");
            openMenu();
            verify(!texts().includes(entry));
            closeMenu();
            world.lackNothing();
            world.offerDesktops(["Home"]);
            openMenu();
            verify(!texts().includes(entry));
            closeMenu();
        }
        function test_by_keys_a_goal_is_pinned_and_its_header_says_so() {
            compare(badge(), null);
            openPins();
            compare(chosen(), ["Not pinned"]);
            for (const name of ["Home", "Desktop 2", "Mail"])
                verify(texts().includes(name), name);
            choose("Mail");
            tryVerify(() => menuItems().length === 0);
            tryVerify(() => badge() !== null);
            compare(badge().count, 3);
            compare(badge().Accessible.name, "Pinned to: Mail");
            world.runPending();
            verify(world.calls().includes("send to 3: Report"));

            openPins();
            compare(chosen(), ["Mail"]);
            verify(menuItems().find(item => item.text === "Mail").Accessible.checked);
            choose("Not pinned");
            tryVerify(() => badge() === null);
        }
        function test_undo_takes_it_back() {
            pin("Desktop 2");
            tryVerify(() => badge() !== null);
            compare(badge().Accessible.name, "Pinned to: Desktop 2");
            world.board.undo();
            tryVerify(() => badge() === null);
        }
        function test_a_desktop_that_is_gone_is_named_and_cannot_be_chosen() {
            pin("Mail");
            tryVerify(() => badge() !== null);
            world.offerDesktops(["Home"]);
            tryVerify(() => badge().Accessible.name === "Pinned to: Desktop 3 (not there now)");
            openPins();
            compare(chosen(), ["Desktop 3 (not there now)"]);
            verify(!menuItems().find(item => item.isChosen).enabled);
            choose("Not pinned");
            tryVerify(() => badge() === null);
        }
        function test_where_the_desktop_cannot_the_header_says_nothing() {
            pin("Mail");
            tryVerify(() => badge() !== null);
            world.lack("virtualDesktops");
            tryVerify(() => badge() === null);
        }
        function test_where_nothing_is_minimised_a_pinned_goal_can_be_worked_on() {
            world.lack("minimizing");
            openMenu();
            verify(!texts().includes("Work on this goal"));
            closeMenu();
            pin("Mail");
            world.runPending();
            openMenu();
            choose("Work on this goal");
            tryVerify(() => menuItems().length === 0);
            world.runPending();
            verify(world.calls().includes("show desktop 3"));
            verify(!world.board.goals.canGoBack);
        }
        function test_a_pinned_goal_without_windows_can_be_worked_on() {
            const canWork = () => menuItems().some(item => item.text === "Work on this goal"
                                                           && item.enabled);
            world.board.windows.moveWindow(7, "kelpa-unassigned");
            openMenu();
            verify(!canWork());
            closeMenu();
            pin("Mail");
            openMenu();
            verify(canWork());
            closeMenu();
            world.board.windows.moveWindow(7, world.columnOfGoal("First"));
        }
    }
}
