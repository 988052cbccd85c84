import QtQuick
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
            name: "TroubleBanner"
            when: windowShown

            function initTestCase() {
                main.requestActivate();
                tryVerify(() => main.active);
            }
            function cleanup() {
                world.setFileManager(true);
                world.repairDisk();
                world.pass(5000);
                world.board.trouble.dismiss();
                verify(!world.board.trouble.isThere);
                world.board.setLanguageIndex(1);
            }
            function banner() {
                return Search.all(main.contentItem, item => item.visible
                                  && item instanceof TroubleBanner)[0];
            }
            function header() {
                return Search.all(main.contentItem, item => item instanceof BoardHeader)[0];
            }
            function divider() {
                return Search.all(main.contentItem, item => item.height === 1
                                  && item.width === main.width)[0];
            }
            function lines() {
                return Search.all(banner(), item => item instanceof Text && item.visible
                                  && !(item.parent instanceof SymbolLabel)).map(item => item.text);
            }
            function buttons() {
                return Search.all(banner(), item => item instanceof AppButton && item.visible);
            }
            function press(text) {
                // Buttons find their places with the next frame.
                waitForRendering(main.contentItem);
                mouseClick(buttons().find(button => button.text === text));
            }

            function test_says_what_happened_what_is_safe_and_what_helps_until_it_is_over() {
                compare(banner(), undefined);
                // The banner of an earlier test makes room with the next frame.
                tryVerify(() => divider().y === header().height);
                world.breakDisk("full");
                world.board.goals.createGoal("Taxes");
                compare(lines(), ["The disk is full",
                                  "Your changes are kept while Kelpa is open, and saved as soon as "
                                  + "possible.", "Free some space on the disk."]);
                tryVerify(() => divider().y >= header().height + banner().height);
                world.repairDisk();
                world.pass(5000);
                compare(banner(), undefined);
                tryVerify(() => divider().y === header().height);
            }
            function test_is_an_alert_with_a_name_and_all_that_it_says() {
                world.breakDisk("folder");
                compare(banner().Accessible.role, Accessible.AlertMessage);
                verify(!banner().Accessible.ignored);
                compare(banner().Accessible.name, "A folder is in the place of the board’s file");
                compare(banner().Accessible.description,
                        "Your changes are kept while Kelpa is open, and saved as soon as possible."
                        + "\nMove or rename the folder.");
            }
            function test_begins_to_show_only_when_it_is_whole() {
                world.breakDisk("full");
                const first = banner();
                world.repairDisk();
                world.pass(5000);
                verify(!first.visible);
                world.breakDisk("newer");
                compare(banner(), first);
            }
            function test_its_buttons_try_again_and_show_the_folder() {
                world.breakDisk("full");
                compare(buttons().map(button => button.text), ["Show the folder", "Try again"]);
                press("Show the folder");
                compare(world.openedUrls().slice(-1), ["file:///boards"]);
                press("Try again");
                verify(banner() !== undefined);
                world.repairDisk();
                press("Try again");
                compare(banner(), undefined);
            }
            function test_without_a_file_manager_there_is_no_button_for_it() {
                world.setFileManager(false);
                world.breakDisk("full");
                compare(buttons().map(button => button.text), ["Try again"]);
            }
            function test_a_file_that_was_moved_aside_is_named_until_the_person_has_read_it() {
                world.moveFileAside("kelpa.sqlite.damaged-1", true);
                compare(lines(), ["The board’s file was damaged or not Kelpa’s",
                                  "Nothing on the board is lost: Kelpa has written all of it to a "
                                  + "new file.",
                                  "The old file is in the same folder: kelpa.sqlite.damaged-1"]);
                compare(buttons().map(button => button.text), ["Show the folder", "Got it"]);
                press("Got it");
                compare(banner(), undefined);
            }
            function test_its_buttons_are_reached_by_keyboard() {
                world.breakDisk("full");
                buttons()[0].forceActiveFocus(Qt.BacktabFocusReason);
                verify(buttons()[0].visualFocus);
                keyClick(Qt.Key_Tab);
                verify(buttons()[1].visualFocus);
                world.repairDisk();
                keyClick(Qt.Key_Return);
                compare(banner(), undefined);
            }
            function test_nothing_of_it_is_cut_in_the_smallest_window_in_any_language() {
                main.width = 900;
                main.height = 620;
                for (const error of ["full", "newer", "read-only"]) {
                    world.breakDisk(error);
                    for (let i = 0; i < world.board.languageNames.length; ++i) {
                        world.board.setLanguageIndex(i);
                        waitForRendering(main.contentItem);
                        tryVerify(() => banner().height >= banner().implicitHeight);
                        const first = buttons()[0].mapToItem(banner(), 0, 0).x;
                        for (const item of Search.all(banner(), item => item instanceof AppText
                                                      && item.visible
                                                      && !(item.parent instanceof SymbolLabel))) {
                            const end = item.mapToItem(banner(), item.contentWidth, item.contentHeight);
                            verify(!item.truncated && item.lineCount <= 4, item.text);
                            verify(item.contentWidth <= item.width + 1, item.text);
                            verify(end.x <= first || item.mapToItem(banner(), 0, 0).x >= first, item.text);
                            verify(end.y <= banner().height, item.text);
                        }
                        // The board keeps most of the window.
                        verify(banner().height <= main.height / 4, banner().height);
                    }
                }
            }
        }
    }
}
