import QtQuick
import QtTest
import Kelpa.Appearance
import Kelpa.Controls
import Kelpa.Backups
import Kelpa.Board
import "../cases/Search.js" as Search

/// Choosing a backup by the keyboard and the pointer, and what happens to the board.
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
            id: test

            readonly property string notKept: "The present board could not be kept as a backup first, "
                                              + "so nothing was restored."

            name: "BackupSheet"
            when: windowShown

            function initTestCase() {
                world.offerBackups(["Proposal", "Taxes"]);
            }
            function init() {
                world.setBoardKept(true);
                world.board.goals.createGoal("Garden");
                main.requestActivate();
                tryVerify(() => main.active);
                world.board.backups.open();
                world.runPending();
                tryVerify(() => list()?.activeFocus ?? false);
                compare(list().count, 3);
            }
            function cleanup() {
                if (world.board.backups.isOpen)
                    keyClick(Qt.Key_Escape);
                tryVerify(() => list() === undefined);
                for (const title of world.goalTitles())
                    world.board.goals.deleteGoal(world.columnOfGoal(title));
                compare(world.goalTitles(), []);
            }
            function shown(accepts) {
                return Search.all(main.overlay, item => item.visible && accepts(item));
            }
            function list() {
                return shown(item => item instanceof BackupList)[0];
            }
            function button(text) {
                return shown(item => item instanceof AppButton && item.text === text)[0];
            }
            function preview() {
                const [view] = shown(item => item instanceof GoalCountList);
                return Search.all(view, item => item.Accessible.role === Accessible.ListItem)
                    .map(item => item.Accessible.name + ": " + item.Accessible.description);
            }
            function alerts() {
                return shown(item => item.Accessible.role === Accessible.AlertMessage
                                     && !item.Accessible.ignored);
            }
            function choose(row) {
                keyClick(Qt.Key_Home);
                for (let i = 0; i < row; ++i)
                    keyClick(Qt.Key_Down);
                compare(list().currentIndex, row);
            }

            function test_the_arrow_keys_choose_and_show_what_a_backup_holds() {
                choose(1);
                compare(preview(), ["Proposal: 1 unfinished todo"]);
                keyClick(Qt.Key_End);
                compare(preview(), ["Taxes: 1 unfinished todo"]);
                const chosen = shown(item => item instanceof BackupListRow
                                             && world.states(item).includes("selected"));
                compare(chosen.map(row => row.Accessible.description), [list().chosenRow.counts]);
                compare(list().chosenRow.goalTitles, ["Taxes"]);
                compare(world.goalTitles(), ["Garden"], "nothing happens before it is restored");
            }
            function test_return_restores_the_chosen_one_and_undo_takes_it_back() {
                choose(2);
                keyClick(Qt.Key_Return);
                compare(world.goalTitles(), ["Garden"]);
                world.runPending();
                compare(world.goalTitles(), ["Taxes"]);
                tryVerify(() => list() === undefined);
                world.board.takeToastOffer();
                compare(world.goalTitles(), ["Garden"]);
            }
            function test_the_button_restores_as_well() {
                choose(1);
                mouseClick(button("Restore"));
                world.runPending();
                compare(world.goalTitles(), ["Proposal"]);
            }
            function test_one_that_cannot_be_read_says_so_and_cannot_be_restored() {
                choose(0);
                const [row] = shown(item => item instanceof BackupListRow);
                compare(row.Accessible.description,
                        "This backup cannot be read\nBefore a backup was restored");
                compare(preview(), []);
                verify(!button("Restore").enabled);
                keyClick(Qt.Key_Return);
                world.runPending();
                compare(world.goalTitles(), ["Garden"]);
                verify(list().activeFocus);
            }
            function test_escape_and_the_button_leave_the_board_as_it_is() {
                choose(1);
                keyClick(Qt.Key_Escape);
                tryVerify(() => list() === undefined);
                compare(world.goalTitles(), ["Garden"]);
                world.board.backups.open();
                world.runPending();
                tryVerify(() => button("Cancel") !== undefined);
                mouseClick(button("Cancel"));
                tryVerify(() => list() === undefined);
                compare(world.goalTitles(), ["Garden"]);
            }
            function test_closing_calls_off_what_is_being_restored() {
                choose(1);
                keyClick(Qt.Key_Return);
                verify(!button("Restore").enabled);
                keyClick(Qt.Key_Escape);
                world.runPending();
                compare(world.goalTitles(), ["Garden"]);
            }
            function test_a_refusal_is_shown_and_announced_and_goes_with_the_next_attempt() {
                world.setBoardKept(false);
                compare(alerts(), []);
                const announcement = Search.all(main.overlay, item => item instanceof Announcement)[0];
                let announced = 0;
                announcement.announced.connect(() => ++announced);
                choose(1);
                keyClick(Qt.Key_Return);
                world.runPending();
                compare(alerts().map(item => item.Accessible.name), [test.notKept]);
                tryVerify(() => announced === 2, 5000, "what is under way, and the refusal");
                compare(world.goalTitles(), ["Garden"]);
                verify(list().activeFocus);
                world.setBoardKept(true);
                keyClick(Qt.Key_Return);
                compare(alerts().map(item => item.Accessible.name), ["Restoring…"]);
                world.runPending();
                compare(world.goalTitles(), ["Proposal"]);
            }
            function test_on_a_slow_disk_it_says_that_it_saves_first() {
                choose(1);
                world.slowDisk();
                world.board.goals.createGoal("Typed before");
                keyClick(Qt.Key_Return);
                world.runPending();
                compare(alerts().map(item => item.Accessible.name),
                        ["Saving the board’s changes first…"]);
                compare(world.goalTitles().length, 2);
                world.recoverDisk();
                world.pass(0);
                world.runPending();
                compare(world.goalTitles(), ["Proposal"]);
            }
        }
    }
}
