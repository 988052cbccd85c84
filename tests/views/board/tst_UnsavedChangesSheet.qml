import QtQuick
import QtQuick.Templates as T
import QtTest
import Kelpa.Appearance
import Kelpa.Controls
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
            name: "UnsavedChangesSheet"
            when: windowShown

            function init() {
                main.show();
                main.requestActivate();
                tryVerify(() => main.active);
            }
            function cleanup() {
                world.repairDisk();
                world.pass(5000);
                tryVerify(() => buttons().length === 0);
            }
            function breakDisk() {
                world.breakDisk("full");
                world.board.goals.createGoal("Taxes");
            }
            function shown(accepts) {
                return Search.all(main.contentItem.parent, item => item.visible && accepts(item));
            }
            /// Of the sheet.
            function buttons() {
                return shown(item => item instanceof AppButton && main.overlay.visible
                             && isBelow(item, main.overlay));
            }
            function isBelow(item, above) {
                for (let each = item; each; each = each.parent)
                    if (each === above)
                        return true;
                return false;
            }
            function button(text) {
                return buttons().find(each => each.text === text);
            }
            function openSheet() {
                main.close();
                tryVerify(() => button("Try again")?.visualFocus ?? false);
                verify(main.visible);
            }

            function test_a_saved_board_closes_at_once() {
                world.board.goals.createGoal("Taxes");
                main.close();
                verify(!main.visible);
            }
            function test_quitting_asks_too() {
                keyClick(Qt.Key_Q, Qt.ControlModifier);
                verify(!main.visible);
                init();
                breakDisk();
                keyClick(Qt.Key_Q, Qt.ControlModifier);
                tryVerify(() => button("Cancel") !== undefined);
                verify(main.visible);
                keyClick(Qt.Key_Escape);
            }
            function test_changes_that_can_be_saved_now_do_not_ask() {
                breakDisk();
                world.repairDisk();
                main.close();
                verify(!main.visible);
                verify(world.isSaved());
            }
            function test_trouble_without_changes_does_not_ask() {
                world.breakDisk("read-only");
                verify(world.board.trouble.isThere);
                main.close();
                verify(!main.visible);
            }
            function test_asks_and_says_why() {
                breakDisk();
                openSheet();
                const texts = shown(item => item instanceof AppText && isBelow(item, main.overlay))
                    .map(item => item.text);
                for (const text of ["Your changes are not saved", "The disk is full",
                                    "If you close Kelpa now, your changes are lost."])
                    verify(texts.includes(text), text);
                compare(buttons().map(each => each.text), ["Close anyway", "Cancel", "Try again"]);
                keyClick(Qt.Key_Escape);
                tryVerify(() => buttons().length === 0);
                verify(main.visible);
                verify(!world.isSaved());
            }
            function test_cancel_keeps_the_board_open() {
                breakDisk();
                openSheet();
                mouseClick(button("Cancel"));
                tryVerify(() => buttons().length === 0);
                verify(main.visible);
                openSheet();
                keyClick(Qt.Key_Escape);
            }
            function test_trying_again_closes_once_everything_is_saved() {
                breakDisk();
                openSheet();
                keyClick(Qt.Key_Return);
                verify(main.visible);
                world.repairDisk();
                keyClick(Qt.Key_Return);
                verify(!main.visible);
                verify(world.isSaved());
            }
            function test_closing_goes_on_by_itself_when_the_disk_is_back() {
                breakDisk();
                openSheet();
                world.repairDisk();
                world.pass(5000);
                verify(!main.visible);
            }
            function test_what_is_being_typed_counts_as_a_change() {
                world.addTodo("Read", "");
                world.board.todos.setDraft("kelpa-unassigned", "Half a todo");
                world.breakDisk("full");
                main.close();
                tryVerify(() => button("Cancel") !== undefined);
                verify(main.visible);
                verify(!world.isSaved());
                keyClick(Qt.Key_Escape);
            }
            function test_a_disk_that_hangs_asks_until_it_has_everything() {
                world.hangDisk();
                world.board.goals.createGoal("Taxes");
                main.close();
                world.pass(1000);
                tryVerify(() => button("Cancel")?.visualFocus ?? false);
                verify(main.visible);
                const texts = () => shown(item => item instanceof AppText
                                          && isBelow(item, main.overlay)).map(item => item.text);
                for (const text of ["Your changes are still being saved",
                                    "The disk is slow or does not reply",
                                    "If you close Kelpa now, your changes may be lost."])
                    verify(texts().includes(text), text);
                compare(buttons().map(each => each.text), ["Close anyway", "Cancel"]);
                world.recoverDisk();
                verify(!main.visible);
                verify(world.isSaved());
            }
            function test_a_disk_that_hangs_and_then_fails_goes_on_asking() {
                world.hangDisk();
                world.board.goals.createGoal("Taxes");
                main.close();
                world.pass(1000);
                tryVerify(() => button("Cancel")?.visualFocus ?? false);
                world.failDisk("full");
                verify(main.visible);
                compare(buttons().map(each => each.text), ["Close anyway", "Cancel", "Try again"]);
                // What is tried again may hang as well. The button finds its place with the next frame.
                world.hangDisk();
                waitForRendering(main.contentItem);
                mouseClick(button("Try again"));
                compare(buttons().map(each => each.text), ["Close anyway", "Cancel", "Try again"]);
                world.recoverDisk();
                verify(!main.visible);
            }
            function test_its_buttons_have_room_in_every_language() {
                breakDisk();
                openSheet();
                for (let i = 0; i < world.board.languageNames.length; ++i) {
                    world.board.setLanguageIndex(i);
                    waitForRendering(main.contentItem);
                    const [first] = buttons();
                    verify(first.mapToItem(null, 0, 0).x
                           >= (main.width - Math.min(460, main.width)) / 2 + Theme.huge);
                }
                world.board.setLanguageIndex(1);
                keyClick(Qt.Key_Escape);
            }
            // The last, since nothing is asked from then on.
            function test_z_closing_anyway_closes() {
                breakDisk();
                openSheet();
                mouseClick(button("Close anyway"));
                verify(!main.visible);
                verify(!world.isSaved());
            }
        }
    }
}
