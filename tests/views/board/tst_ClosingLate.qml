import QtQuick
import QtTest
import Kelpa.Controls
import Kelpa.Board
import "../cases/Search.js" as Search

/// Closing while the disk is a little late: the board waits without a question, and goes on.
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
            name: "ClosingLate"
            when: windowShown

            function init() {
                main.show();
                main.requestActivate();
                tryVerify(() => main.active);
            }
            function cleanup() {
                for (const title of world.goalTitles())
                    world.board.goals.deleteGoal(world.columnOfGoal(title));
            }
            function isAsked() {
                return Search.all(main.overlay, item => item.visible && item instanceof AppButton).length > 0;
            }

            function test_a_disk_that_is_a_little_late_closes_without_a_question() {
                world.hangDisk();
                world.board.goals.createGoal("Taxes");
                main.close();
                verify(main.visible);
                verify(!isAsked());
                world.pass(999);
                verify(!isAsked());
                world.recoverDisk();
                world.pass(0);
                verify(!main.visible);
                verify(world.isSaved());
            }
            function test_quitting_waits_for_a_late_disk_too() {
                let quits = 0;
                const count = () => ++quits;
                world.board.presence.quitConfirmed.connect(count);
                world.hangDisk();
                world.board.goals.createGoal("Taxes");
                keyClick(Qt.Key_Q, Qt.ControlModifier);
                compare(quits, 0);
                world.recoverDisk();
                world.pass(0);
                compare(quits, 1);
                world.board.presence.quitConfirmed.disconnect(count);
            }
            function test_who_goes_on_typing_while_closing_waits_loses_nothing() {
                world.hangDisk();
                world.board.goals.createGoal("Taxes");
                main.close();
                world.board.goals.createGoal("Typed meanwhile");
                world.recoverDisk();
                world.pass(0);
                verify(!main.visible);
                verify(world.isSaved());
                verify(world.goalTitles().includes("Typed meanwhile"));
            }
        }
    }
}
