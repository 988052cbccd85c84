import QtQuick
import QtQuick.Templates as T
import QtTest
import Kelpa.Appearance
import Kelpa.Controls
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
        name: "WindowMenu"
        goalBoard: board

        /// What the open menu shows, from top to bottom: every text with its symbol.
        function menuEntries() {
            return all(root.parent, item => item instanceof T.MenuItem && item.visible)
                .sort((a, b) => a.y - b.y)
                .map(item => item instanceof AppMenuItem ? item.text + " (" + item.symbol + ")"
                                                         : item.text);
        }
        /// Items have their places one frame after the menu opens.
        function verifyMenu(entries) {
            tryVerify(() => menuEntries().join() === entries.join(), 1000, menuEntries().join());
        }
        function openMenuOf(title) {
            tryVerify(() => card(title) !== null);
            card(title).forceActiveFocus();
            keyClick(Qt.Key_Menu);
            tryVerify(() => menuItems().length > 1);
        }
        function closeMenu() {
            keyClick(Qt.Key_Escape);
            tryVerify(() => menuItems().length === 0);
        }
        function test_a_second_click_on_the_button_of_the_menu_chooses_nothing() {
            const at = item => item.mapToItem(null, item.width / 2, item.height / 2);
            // Nothing scrolls the board.
            world.clearSelection();
            // From the upper edge of the window to the lower one, below which there is no room.
            for (const top of [0, 430, 470, 520]) {
                board.anchors.topMargin = top;
                tryVerify(() => card("Report") !== null);
                const opener = cardButton("Report", "ellipsis");
                mouseMove(opener);
                mouseClick(opener);
                tryVerify(() => menuItems().length > 1);
                for (const item of menuItems())
                    verify(!item.contains(item.mapFromItem(null, at(opener))), item.text);
                mouseClick(opener);
                tryVerify(() => menuItems().length === 0);
                compare(world.goalOfWindow(4294967295), "");
            }
            board.anchors.topMargin = 0;
        }
        function test_a_window_number_keeps_all_its_bits() {
            tryVerify(() => card("Report") !== null);
            const report = card("Report");
            compare(report.windowID, 4294967295);
            compare(world.board.windows.windowDragText(report.windowID), "4294967295");
            compare(all(report, item => item instanceof WindowPreview)[0].windowID, 4294967295);
            // The icon is asked for by that number too.
            compare(all(report, item => item.source?.toString()
                                        .startsWith("image://appicon/4294967295/")).length, 1);
            report.forceActiveFocus();
            keyClick(Qt.Key_Menu);
            chooseAndClose("First");
            tryVerify(() => world.goalOfWindow(4294967295) === "First");
            moveBack(4294967295, "Report");
        }
        function test_the_menu_of_a_card_moves_it() {
            tryVerify(() => card("Letter") !== null);
            const letter = card("Letter");
            mouseClick(letter, 20, 20, Qt.RightButton);
            tryVerify(() => menuItems().length === 3);
            chooseAndClose("First");
            tryVerify(() => world.goalOfWindow(8) === "First");
            moveBack(8, "Letter");
        }
        function test_the_menu_of_a_card_shows_where_the_window_is_and_where_it_can_go() {
            openMenuOf("Letter");
            verifyMenu(["Move to goal", "First (circle)", "Unsorted (check)",
                        "New goal (plus)"]);
            const item = text => menuItems().find(each => each.text === text);
            verify(item("Unsorted").Accessible.checked);
            verify(!item("First").Accessible.checked);
            chooseAndClose("First");
            tryVerify(() => world.goalOfWindow(8) === "First");
            openMenuOf("Letter");
            verifyMenu(["Move to goal", "First (check)", "Unsorted (circle)",
                        "New goal (plus)"]);
            // Where it is already.
            chooseAndClose("First");
            compare(world.goalOfWindow(8), "First");
            moveBack(8, "Letter");
        }
        function test_the_menu_of_a_card_follows_the_order_of_the_goals() {
            world.board.goals.createGoal("Second");
            world.board.goals.createGoal("Third");
            openMenuOf("Letter");
            verifyMenu(["Move to goal", "First (circle)", "Second (circle)",
                        "Third (circle)", "Unsorted (check)", "New goal (plus)"]);
            closeMenu();
            verify(world.board.goals.moveColumn(world.columnOfGoal("First"), 1));
            verify(world.board.goals.moveColumn(world.columnOfGoal("Third"), -1));
            openMenuOf("Letter");
            verifyMenu(["Move to goal", "Second (circle)", "Third (circle)",
                        "First (circle)", "Unsorted (check)", "New goal (plus)"]);
            closeMenu();
            world.board.goals.deleteGoal(world.columnOfGoal("Third"));
            world.board.goals.createGoal("Fourth");
            openMenuOf("Letter");
            verifyMenu(["Move to goal", "Second (circle)", "First (circle)",
                        "Fourth (circle)", "Unsorted (check)", "New goal (plus)"]);
            chooseAndClose("Fourth");
            tryVerify(() => world.goalOfWindow(8) === "Fourth");
            world.board.goals.deleteGoal(world.columnOfGoal("Second"));
            world.board.goals.deleteGoal(world.columnOfGoal("Fourth"));
            tryVerify(() => card("Letter") !== null);
        }
        function test_the_menu_of_a_card_stays_where_it_opened() {
            openMenuOf("Letter");
            const place = () => menuItems()[0].mapToItem(root, 0, 0);
            const before = place();
            // In a goal it has another place, and its card of now goes.
            world.board.windows.moveWindow(8, world.columnOfGoal("First"));
            tryVerify(() => card("Letter") !== null);
            verify(menuItems().length > 1);
            compare(place(), before);
            closeMenu();
            moveBack(8, "Letter");
        }
        function test_the_menu_key_opens_the_menu_of_the_card_with_focus() {
            tryVerify(() => card("Letter") !== null);
            card("Letter").forceActiveFocus();
            keyClick(Qt.Key_Menu);
            chooseAndClose("First");
            tryVerify(() => world.goalOfWindow(8) === "First");
            moveBack(8, "Letter");
        }
        function test_a_finger_moves_a_window_by_the_button_of_its_card() {
            tryVerify(() => card("Letter") !== null);
            const button = cardButton("Letter", "ellipsis");
            compare(button.Accessible.role, Accessible.ButtonMenu);
            compare(button.Accessible.name, "Move to goal");
            // The first tap reveals it.
            for (let taps = 0; taps < 2; ++taps) {
                touchEvent(button).press(0, button, 11, 11).commit();
                touchEvent(button).release(0, button, 11, 11).commit();
            }
            chooseAndClose("First");
            tryVerify(() => world.goalOfWindow(8) === "First");
            moveBack(8, "Letter");
        }
        function test_an_assistive_program_takes_a_window_out_of_its_goal() {
            world.board.windows.moveWindow(8, world.columnOfGoal("First"));
            tryVerify(() => card("Letter") !== null);
            cardButton("Letter", "ellipsis").Accessible.pressAction();
            tryVerify(() => menuItems().some(item => item.text === "Unsorted"));
            menuItems().find(item => item.text === "Unsorted").Accessible.pressAction();
            tryVerify(() => world.goalOfWindow(8) === "");
            tryVerify(() => menuItems().length === 0 && card("Letter") !== null);
        }
        function test_the_menu_of_a_card_makes_a_goal_for_it() {
            tryVerify(() => card("Letter") !== null);
            card("Letter").forceActiveFocus();
            keyClick(Qt.Key_Menu);
            chooseAndClose(ViewSettings.copy.text(CopyKey.NewGoal));
            tryVerify(() => root.Window.activeFocusItem instanceof TextInputField);
            for (const letter of "new")
                keyClick(letter);
            keyClick(Qt.Key_Return);
            tryVerify(() => world.goalOfWindow(8) === "new");
            tryVerify(() => all(root.parent, item => item instanceof TextInputField
                                                     && item.visible).length === 0);
            world.board.goals.deleteGoal(world.columnOfGoal("new"));
            tryVerify(() => world.goalOfWindow(8) === "");
        }
    }
}
