import QtQuick
import QtTest
import Kelpa.Controls
import Kelpa.Windows

Item {
    id: root

    width: 900
    height: 620

    WindowSelectionSheet {
        id: sheet

        windows: world.board.windows
    }

    TestCase {
        name: "WindowSelectionSheet"
        when: windowShown

        readonly property WindowPicker picker: world.board.windows.picker

        function initTestCase() {
            world.board.goals.createGoal("Proposal");
            world.board.goals.createGoal("Taxes");
            world.addWindow(1, "Alpha");
            world.addWindow(2, "Beta");
            world.addWindow(3, "Gamma");
        }
        function init() {
            for (const id of [1, 2, 3])
                world.board.windows.moveWindow(id, "kelpa-unassigned");
            picker.open(world.columnOfGoal("Proposal"));
            tryVerify(() => sheet.opened && rows().length === 3);
        }
        function cleanup() {
            picker.close();
            tryVerify(() => !sheet.visible);
        }

        function all(item, accepts) {
            let found = accepts(item) ? [item] : [];
            for (let i = 0; i < item.children.length; ++i)
                found = found.concat(all(item.children[i], accepts));
            return found;
        }
        function rows() {
            return all(sheet.contentItem, item => item instanceof WindowPickerRow && item.visible)
                .sort((a, b) => a.y - b.y);
        }
        function row(title) {
            return rows().find(item => item.title === title);
        }
        function button(text) {
            return all(sheet.contentItem, item => item instanceof AppButton)
                .find(item => item.text === text);
        }
        function texts() {
            return all(sheet.contentItem, item => item instanceof AppText && item.visible)
                .map(item => item.text);
        }
        function search() {
            return all(sheet.contentItem, item => item instanceof SearchField)[0];
        }
        function focusItem() {
            return root.Window.activeFocusItem;
        }

        function test_the_tip_of_a_row_tells_the_name_of_an_application_that_is_cut_off() {
            const tip = all(row("Beta"), item => item instanceof HoverTip)[0];
            mouseMove(row("Beta"), 200, 30);
            verify(!tip.isHovered);
            const name = "An application with a name that no row of the sheet is wide enough to show "
                    + "from its beginning to its end, however short the title beside it may be";
            world.nameOwner(2, name);
            tryVerify(() => tip.isHovered);
            compare(tip.text, "Beta\n" + name + "\nCurrent: Unsorted");
            world.nameOwner(2, "App 1000");
            tryVerify(() => !tip.isHovered);
            mouseMove(root, 1, 1);
        }
        function test_it_names_the_goal() {
            verify(texts().includes("Add windows to “Proposal”"));
            // What the toolkit names the sheet by.
            compare(sheet.title, "Add windows to “Proposal”");
        }
        function test_it_starts_in_the_search_field_with_nothing_chosen() {
            verify(focusItem() instanceof SearchField);
            verify(texts().includes("0 windows selected"));
            verify(!button("Add 0 windows").enabled);
        }
        function test_a_click_chooses_a_window_and_confirming_moves_it() {
            mouseClick(row("Beta"));
            tryCompare(row("Beta"), "isChosen", true);
            verify(texts().includes("1 windows selected"));
            mouseClick(button("Add 1 windows"));
            tryCompare(sheet, "visible", false);
            compare(world.goalOfWindow(2), "Proposal");
            compare(world.goalOfWindow(1), "");
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
        function test_a_window_in_the_goal_is_last_and_cannot_be_chosen() {
            world.board.windows.moveWindow(1, world.columnOfGoal("Proposal"));
            tryVerify(() => rows().map(item => item.title).join() === "Beta,Gamma,Alpha");
            compare(row("Alpha").location, "Already in this goal");
            mouseClick(row("Alpha"));
            compare(picker.chosenCount, 0);
            compare(world.states(row("Alpha")), ["read-only", "checked"]);
            compare(world.states(row("Beta")), ["checkable"]);
            // The arrow keys still find it.
            keyClick(Qt.Key_Down);
            keyClick(Qt.Key_End);
            tryCompare(row("Alpha"), "activeFocus", true);
            keyClick(Qt.Key_Space);
            compare(picker.chosenCount, 0);
            keyClick(Qt.Key_Up);
            tryCompare(row("Gamma"), "activeFocus", true);
            keyClick(Qt.Key_Space);
            compare(world.states(row("Gamma")), ["checkable", "checked"]);
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
        function test_Cancel_closes_and_moves_nothing() {
            mouseClick(row("Alpha"));
            mouseClick(button("Cancel"));
            tryCompare(picker, "isOpen", false);
            compare(world.goalOfWindow(1), "");
        }
        function test_it_says_so_when_the_chosen_windows_have_gone() {
            world.addWindow(4, "Delta");
            tryVerify(() => rows().length === 4);
            mouseClick(row("Delta"));
            verify(button("Add 1 windows").enabled);
            world.removeWindow(4);
            // Counted are those that there are; but whoever confirms is told.
            verify(texts().includes("0 windows selected"));
            mouseClick(button("Add 0 windows"));
            tryVerify(() => texts().includes("The window list changed. Please select again."));
            verify(sheet.opened);
            verify(!button("Add 0 windows").enabled);
        }
        function test_a_row_is_a_check_box_that_an_assistive_program_toggles() {
            const alpha = row("Alpha");
            compare(alpha.Accessible.role, Accessible.CheckBox);
            compare(alpha.Accessible.name, "App 1000: Alpha");
            compare(alpha.Accessible.description, "Current: Unsorted");
            verify(!alpha.Accessible.checked);
            alpha.Accessible.toggleAction();
            verify(alpha.Accessible.checked);
        }
        function test_many_windows_make_only_the_rows_that_show() {
            for (let id = 100; id < 300; ++id)
                world.addWindow(id, "Window " + id);
            tryVerify(() => picker.rowCount > 3);
            picker.close();
            tryVerify(() => !sheet.visible);
            picker.open(world.columnOfGoal("Taxes"));
            tryVerify(() => sheet.opened);
            verify(sheet.height <= 560);
            verify(rows().length < 20);
            for (let id = 100; id < 300; ++id)
                world.removeWindow(id);
        }
    }
}
