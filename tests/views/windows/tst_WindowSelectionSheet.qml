import QtQuick
import QtTest
import Kelpa.Controls
import Kelpa.Windows
import "../cases"

/// What the sheet shows, and what the pointer does in it.
Item {
    id: root

    width: 900
    height: 620

    WindowSelectionSheet {
        id: sheet

        windows: world.board.windows
    }

    SheetCase {
        name: "WindowSelectionSheet"
        sheet: sheet

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
        function test_a_long_title_of_a_goal_never_cuts_the_end_of_the_sentence_off() {
            const goal = world.columnOfGoal("Proposal");
            const title = "Alles was vor der Sitzung des Ausschusses am Freitag noch zu bedenken und "
                    + "mit den anderen Abteilungen zu besprechen ist, bevor es zu spät dafür ist";
            const language = world.board.languageIndex;
            world.board.setLanguageIndex(5);
            world.board.goals.renameGoal(goal, title);
            compare(sheet.title, "Fenster zu „" + title + "“ hinzufügen");
            const heading = () => all(sheet.contentItem, item => item instanceof AppText
                                                                 && item.text.startsWith("Fenster zu „"))[0];
            tryVerify(() => heading().text.endsWith("…“ hinzufügen"));
            verify(!heading().truncated);
            compare(heading().Accessible.name, sheet.title);
            world.board.goals.renameGoal(goal, "Proposal");
            world.board.setLanguageIndex(language);
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
        function test_a_choice_that_is_refused_leaves_the_sheet_in_its_place() {
            world.addWindow(4, "Delta");
            tryVerify(() => rows().length === 4);
            mouseClick(row("Delta"));
            world.removeWindow(4);
            const place = item => item.mapToItem(null, Qt.rect(0, 0, item.width, item.height));
            const confirm = button("Add 0 windows");
            const before = [sheet.y, sheet.height, place(confirm)];
            const reason = "The window list changed. Please select again.";
            mouseClick(confirm);
            tryVerify(() => texts().includes(reason));
            waitForRendering(sheet.contentItem);
            compare([sheet.y, sheet.height, place(confirm)], before);
            const text = content => all(sheet.contentItem, item => item instanceof AppText
                                                                   && item.text === content)[0];
            const count = place(text("0 windows selected"));
            const refusal = place(text(reason));
            verify(count.bottom <= refusal.top);
            verify(refusal.bottom <= place(confirm).top);
            // The list gives up the room.
            verify(place(list()).bottom <= count.top);
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
