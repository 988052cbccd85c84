import QtQuick
import QtTest
import Kelpa.Appearance
import Kelpa.Controls
import Kelpa.Board
import "../cases/Search.js" as Search

/// What a screen reader reads out by itself.
Item {
    id: root

    width: 10
    height: 10

    /// The names of the alerts that were announced, and the announcements that are listened to.
    property var heard: []
    property var known: []

    function listen() {
        for (const each of Search.all(main.contentItem, item => item instanceof Announcement)) {
            if (root.known.includes(each))
                continue;
            root.known.push(each);
            each.announced.connect(() => {
                if (each.parent.Accessible.role === Accessible.AlertMessage
                        && !each.parent.Accessible.ignored)
                    root.heard.push(each.parent.Accessible.name);
            });
        }
    }

    Main {
        id: main

        width: 1000
        height: 700
        board: world.board
        // Before there is a window.
        Component.onCompleted: {
            world.breakDisk("full");
            root.listen();
        }

        TestCase {
            name: "Announcements"
            when: windowShown

            function initTestCase() {
                wait(0);
                compare(root.heard, []);
                main.show();
                isAnnounced("The disk is full");
            }
            function init() {
                repair();
                root.heard = [];
            }
            function repair() {
                world.recoverDisk();
                world.repairDisk();
                world.pass(5000);
                verify(!world.board.trouble.isThere);
            }
            /// Once, and nothing else.
            function isAnnounced(name) {
                root.listen();
                tryVerify(() => root.heard.length > 0);
                wait(0);
                compare(root.heard, [name]);
                root.heard = [];
            }

            function test_trouble_that_begins_changes_and_comes_again() {
                world.breakDisk("full");
                isAnnounced("The disk is full");
                world.breakDisk("folder");
                isAnnounced("A folder is in the place of the board’s file");
                repair();
                world.breakDisk("folder");
                isAnnounced("A folder is in the place of the board’s file");
            }
            function test_a_disk_that_is_slow_each_time() {
                for (let i = 0; i < 2; ++i) {
                    world.slowDisk();
                    world.board.goals.createGoal("Goal " + i);
                    world.pass(1000);
                    isAnnounced("Changes are still being saved; the disk is slow");
                    world.recoverDisk();
                }
            }
            function test_a_toast_and_the_one_that_takes_its_place() {
                world.board.goals.createGoal("Garden");
                world.board.goals.deleteGoal(world.columnOfGoal("Garden"));
                isAnnounced("Goal deleted");
                world.board.toggleAutoSortingGoals();
                world.board.explainAutomaticOrder();
                isAnnounced(ViewSettings.copy.text(CopyKey.GoalsSortThemselves));
                world.board.toggleAutoSortingGoals();
            }
            function test_what_is_shown_when_accessibility_is_switched_on() {
                world.breakDisk("full");
                isAnnounced("The disk is full");
                world.switchAccessibilityOn();
                isAnnounced("The disk is full");
            }
        }
    }
}
