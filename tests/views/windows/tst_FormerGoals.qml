import QtQuick
import QtTest
import Kelpa.Appearance
import Kelpa.Windows
import Kelpa.Board
import "../cases"

Item {
    id: root

    width: 1100
    height: 700

    GoalBoard {
        id: board

        anchors.fill: parent
        board: world.board
    }

    WindowCase {
        id: testCase

        /// Of the window that may have been in a goal.
        property int windowID: 40
        property string title: "Loading"

        name: "FormerGoals"
        goalBoard: board

        function initTestCase() {
            world.board.goals.createGoal("First");
        }
        /// A window of each goal goes, and one comes that may be any of them.
        function replaceWindows(titles) {
            world.pass(121000);
            const last = ++testCase.windowID;
            titles.forEach((title, i) => {
                const closed = last + 1 + i;
                world.addWindow(closed, "Ledger");
                world.board.windows.moveWindow(closed, world.columnOfGoal(title));
            });
            world.pass(1000);
            for (let i = 0; i < titles.length; ++i)
                world.removeWindow(last + 1 + i);
            testCase.windowID = last + titles.length + 1;
            // Of several alike, it may be any.
            testCase.title = titles.length > 1 ? "Ledger" : "Loading";
            world.addWindow(testCase.windowID, testCase.title);
            world.pass(2000);
            tryVerify(() => card(testCase.title) !== null && line() !== null);
        }
        function line() {
            return only(all(root, item => item instanceof FormerGoalLine && item.visible));
        }
        function lineButton(text) {
            return only(all(line(), item => item.isButton === true && item.text === text));
        }
        function cleanup() {
            world.removeWindow(testCase.windowID);
            tryVerify(() => card(testCase.title) === null);
            if (world.columnOfGoal("Second") !== "")
                world.board.goals.deleteGoal(world.columnOfGoal("Second"));
            tryVerify(() => column("Second") === null);
            // What the goals had is forgotten.
            world.board.windows.memory.toggleRemembering();
            world.board.windows.memory.toggleRemembering();
        }
        function test_a_click_puts_the_window_back() {
            replaceWindows(["First"]);
            compare(card("Loading").Accessible.description,
                    ViewSettings.copy.text(CopyKey.WindowCardHelp) + "\nWas in: First");
            mouseClick(lineButton("Was in: First"));
            compare(world.goalOfWindow(testCase.windowID), "First");
            tryVerify(() => line() === null);
        }
        function test_a_long_title_takes_two_lines() {
            const title = "A goal whose title is longer than a card is wide";
            replaceWindows(["First"]);
            const height = line().height;
            cleanup();
            world.board.goals.createGoal(title);
            replaceWindows([title]);
            const heightOfLong = line().height;
            const place = line().y;
            world.board.goals.deleteGoal(world.columnOfGoal(title));
            verify(heightOfLong > height + 8, heightOfLong + " against " + height);
            // It stays on the picture.
            verify(place >= 0);
        }
        function test_the_line_ends_where_the_picture_does() {
            replaceWindows(["First"]);
            const preview = only(all(card("Loading"), item => item instanceof CardPreview));
            verify(preview.width > Theme.previewSize.width);
            // Without a picture, its ground is as wide as the card allows.
            compare(line().width, preview.width);
            for (let i = 0; i < 20 && preview.revision === 0; ++i) {
                world.capture();
                world.pass(1000);
            }
            tryVerify(() => line().width === Theme.previewSize.width);
            const corner = line().mapToItem(preview, 0, 0);
            compare(2 * corner.x + line().width, preview.width);
            compare(corner.y + line().height, preview.height);
        }
        function test_the_cross_says_that_it_is_another_window() {
            replaceWindows(["First"]);
            mouseClick(lineButton("This is another window"));
            tryVerify(() => line() === null);
            compare(world.goalOfWindow(testCase.windowID), "");
        }
        function test_tab_reaches_both_and_return_presses() {
            replaceWindows(["First"]);
            const loading = card("Loading");
            loading.forceActiveFocus(Qt.TabFocusReason);
            keyClick(Qt.Key_Tab);
            verify(lineButton("Was in: First").activeFocus);
            verify(loading.hasKeyboard);
            compare(lineButton("Was in: First").Accessible.description,
                    "Put the window back into its goal");
            keyClick(Qt.Key_Tab);
            verify(lineButton("This is another window").activeFocus);
            keyClick(Qt.Key_Return);
            tryVerify(() => line() === null);
            verify(!loading.isAnswering);
            compare(world.goalOfWindow(testCase.windowID), "");
        }
        function test_an_assistive_program_puts_the_window_back() {
            replaceWindows(["First"]);
            lineButton("Was in: First").Accessible.pressAction();
            compare(world.goalOfWindow(testCase.windowID), "First");
        }
        function test_control_and_b_puts_the_selected_window_back() {
            replaceWindows(["First"]);
            world.board.windows.selectWindow(testCase.windowID);
            keyClick(Qt.Key_B, Qt.ControlModifier);
            compare(world.goalOfWindow(testCase.windowID), "First");
            // There is nothing more to put back.
            keyClick(Qt.Key_B, Qt.ControlModifier);
            compare(menuItems().length, 0);
        }
        function test_control_shift_and_b_says_that_the_selected_window_is_another() {
            replaceWindows(["First"]);
            // Of no window nothing is said.
            keyClick(Qt.Key_B, Qt.ControlModifier | Qt.ShiftModifier);
            verify(line() !== null);
            world.board.windows.selectWindow(testCase.windowID);
            keyClick(Qt.Key_B, Qt.ControlModifier | Qt.ShiftModifier);
            tryVerify(() => line() === null);
            compare(world.goalOfWindow(testCase.windowID), "");
            // There is nothing left to put back.
            keyClick(Qt.Key_B, Qt.ControlModifier);
            compare(world.goalOfWindow(testCase.windowID), "");
            compare(menuItems().length, 0);
        }
        function test_the_menu_of_the_card_answers_as_well() {
            replaceWindows(["First"]);
            card("Loading").forceActiveFocus();
            keyClick(Qt.Key_Menu);
            tryVerify(() => menuItems().length > 1);
            compare(menuItems().map(item => item.text).sort(),
                    ["First", "New goal", "This is another window", "Unsorted", "Was in: First"]);
            chooseAndClose("This is another window");
            tryVerify(() => line() === null);
            // The next window has nothing to answer.
            card("Loading").forceActiveFocus();
            keyClick(Qt.Key_Menu);
            tryVerify(() => menuItems().length === 3);
            keyClick(Qt.Key_Escape);
            tryVerify(() => menuItems().length === 0);
        }
        function test_of_several_goals_a_person_chooses_in_the_menu() {
            world.board.goals.createGoal("Second");
            replaceWindows(["First", "Second"]);
            const goals = Array.from(line().goals);
            compare(Array.from(goals).sort(), ["First", "Second"]);
            mouseClick(lineButton("Was in: " + goals.join(", ")));
            chooseAndClose("Was in: Second");
            compare(world.goalOfWindow(testCase.windowID), "Second");
        }
        function test_control_and_b_opens_the_menu_where_there_are_several() {
            world.board.goals.createGoal("Second");
            replaceWindows(["First", "Second"]);
            world.board.windows.selectWindow(testCase.windowID);
            keyClick(Qt.Key_B, Qt.ControlModifier);
            chooseAndClose("Was in: First");
            compare(world.goalOfWindow(testCase.windowID), "First");
        }
        function test_the_menu_of_the_board_switches_the_memory_off() {
            replaceWindows(["First"]);
            board.openMenu();
            tryVerify(() => menuItems().length > 1);
            const item = () => menuItems().find(
                             each => each.text === "Remember the windows of goals");
            verify(item().Accessible.checked);
            chooseAndClose("Remember the windows of goals");
            tryVerify(() => line() === null);
            compare(world.board.toastMessage,
                    "All windows are forgotten and no longer remembered");
            board.openMenu();
            tryVerify(() => menuItems().length > 1);
            verify(!item().Accessible.checked);
            keyClick(Qt.Key_Escape);
            tryVerify(() => menuItems().length === 0);
            world.board.takeToastOffer();
            tryVerify(() => line() !== null);
        }
    }
}
