import QtQuick
import QtTest
import Kelpa.Controls
import Kelpa.Windows
import "../cases"

/// What the keys do in the sheet.
Item {
    id: root

    width: 900
    height: 620

    WindowSelectionSheet {
        id: sheet

        windows: world.board.windows
    }

    SheetCase {
        name: "WindowSelectionKeys"
        sheet: sheet

        function test_it_starts_in_the_search_field_with_nothing_chosen() {
            verify(focusItem() instanceof SearchField);
            verify(texts().includes("0 windows selected"));
            verify(!button("Add 0 windows").enabled);
        }
        function test_arrows_Space_and_Return_choose_and_move() {
            keyClick(Qt.Key_Down);
            tryCompare(row("Alpha"), "activeFocus", true);
            keyClick(Qt.Key_Space);
            keyClick(Qt.Key_Down);
            keyClick(Qt.Key_Down);
            tryCompare(row("Gamma"), "activeFocus", true);
            keyClick(Qt.Key_Space);
            compare(picker.chosenCount, 2);
            keyClick(Qt.Key_Space);
            compare(picker.chosenCount, 1);
            keyClick(Qt.Key_Return);
            tryCompare(sheet, "visible", false);
            compare(world.goalOfWindow(1), "Proposal");
            compare(world.goalOfWindow(3), "");
        }
        function test_Tab_goes_from_the_search_to_the_list_and_the_buttons() {
            picker.toggle(1);
            keyClick(Qt.Key_Tab);
            // The button that clears the search shows only while there is one.
            tryCompare(row("Alpha"), "activeFocus", true);
            keyClick(Qt.Key_Tab);
            compare(focusItem(), button("Cancel"));
            keyClick(Qt.Key_Tab);
            compare(focusItem(), button("Add 1 windows"));
        }
        function test_up_from_the_first_window_leads_back_to_the_search() {
            keyClick(Qt.Key_Down);
            tryCompare(row("Alpha"), "activeFocus", true);
            keyClick(Qt.Key_Up);
            verify(focusItem() instanceof SearchField);
        }
        function test_Return_without_a_choice_does_nothing() {
            keyClick(Qt.Key_Return);
            keyClick(Qt.Key_Down);
            keyClick(Qt.Key_Return);
            verify(sheet.opened);
            verify(picker.isOpen);
        }
        function test_Return_while_composing_does_not_confirm() {
            picker.toggle(1);
            world.compose("か");
            keyClick(Qt.Key_Return);
            verify(sheet.opened);
            world.compose("");
        }
        function test_Return_after_a_search_leads_to_what_was_found_and_confirms_there() {
            mouseClick(row("Alpha"));
            search().forceActiveFocus();
            for (const letter of "be")
                keyClick(letter);
            tryVerify(() => rows().length === 1);
            keyClick(Qt.Key_Return);
            verify(picker.isOpen);
            tryCompare(row("Beta"), "activeFocus", true);
            keyClick(Qt.Key_Space);
            keyClick(Qt.Key_Return);
            tryCompare(sheet, "visible", false);
            compare(world.goalOfWindow(1), "Proposal");
            compare(world.goalOfWindow(2), "Proposal");
            compare(world.goalOfWindow(3), "");
        }
        function test_Space_that_is_held_chooses_once() {
            keyClick(Qt.Key_Down);
            keyPress(Qt.Key_Space);
            for (let i = 0; i < 5; ++i)
                world.repeatKey(root, Qt.Key_Space);
            keyRelease(Qt.Key_Space);
            compare(picker.chosenCount, 1);
        }
        function test_a_search_leads_to_the_first_that_is_found_wherever_one_was_in_the_list() {
            keyClick(Qt.Key_Down);
            keyClick(Qt.Key_End);
            tryCompare(row("Gamma"), "activeFocus", true);
            search().forceActiveFocus();
            keyClick("a");
            tryVerify(() => rows().length === 3);
            keyClick(Qt.Key_Return);
            tryCompare(row("Alpha"), "activeFocus", true);
        }
        function test_Return_after_a_search_that_found_nothing_stays_in_the_search() {
            picker.toggle(1);
            for (const letter of "xx")
                keyClick(letter);
            tryVerify(() => rows().length === 0);
            keyClick(Qt.Key_Return);
            verify(picker.isOpen);
            verify(search().activeFocus);
            keyClick(Qt.Key_Escape);
            // Without a search it is the last word.
            keyClick(Qt.Key_Return);
            tryCompare(sheet, "visible", false);
            compare(world.goalOfWindow(1), "Proposal");
        }
        function test_the_search_narrows_the_list_and_Escape_clears_it_and_then_closes() {
            for (const letter of "be")
                keyClick(letter);
            tryVerify(() => rows().length === 1);
            compare(rows()[0].title, "Beta");
            keyClick("x");
            tryVerify(() => texts().includes("No matching windows"));
            keyClick(Qt.Key_Escape);
            tryVerify(() => rows().length === 3);
            verify(sheet.opened);
            keyClick(Qt.Key_Escape);
            tryCompare(picker, "isOpen", false);
            tryCompare(sheet, "visible", false);
        }
    }
}
