import QtQuick
import QtTest
import Kelpa.Board
import "../cases/Search.js" as Search

Item {
    width: 10
    height: 10

    Main {
        id: main

        width: 1000
        height: 700
        visible: true
        board: world.board

        TestCase {
            name: "SavingNotice"
            when: windowShown

            function shown(type) {
                return Search.all(main.contentItem, item => item.visible && item instanceof type);
            }
            function cleanup() {
                world.recoverDisk();
            }

            function test_shows_from_the_second_on_that_a_change_waits_for_the_disk() {
                world.slowDisk();
                world.board.goals.createGoal("Taxes");
                world.pass(999);
                compare(shown(SavingNotice).length, 0);
                world.pass(1);
                compare(shown(SavingNotice).length, 1);
                const notice = shown(SavingNotice)[0];
                compare(notice.Accessible.name, "Changes are still being saved; the disk is slow");
                compare(notice.Accessible.role, Accessible.AlertMessage);
                verify(!notice.Accessible.ignored);
                world.recoverDisk();
                tryVerify(() => shown(SavingNotice).length === 0);
            }
            function test_shows_above_a_toast_and_lets_presses_through() {
                world.board.goals.createGoal("Garden");
                world.slowDisk();
                world.board.goals.deleteGoal(world.columnOfGoal("Garden"));
                world.pass(1000);
                const notice = shown(SavingNotice)[0];
                tryVerify(() => shown(Toast).length === 1);
                const toast = shown(Toast)[0];
                const bottom = notice.mapToItem(main.contentItem, 0, notice.height).y;
                verify(bottom <= toast.mapToItem(main.contentItem, 0, 0).y);
                verify(Search.all(notice, item => item instanceof MouseArea).length === 0);
            }
        }
    }
}
