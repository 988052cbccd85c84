import QtQuick
import QtTest
import Kelpa.Goals
import Kelpa.Board
import "../cases"

/// What the menu of a goal offers, and what it says of it.
Item {
    id: root

    width: 1300
    height: 700

    GoalBoard {
        id: board

        anchors.fill: parent
        board: world.board
    }

    MenuCase {
        name: "GoalMenu"
        goalBoard: board

        /// What the menu says of keys, sorted.
        function keysOf(title) {
            openMenuOf(title);
            const keys = menuItems().filter(item => item.visible && item.keys)
                .map(item => item.text + ": " + item.keys).sort();
            closeMenu();
            return keys;
        }
        function cleanup() {
            world.clearSelection();
        }

        function test_the_menu_of_a_goal_says_which_keys_do_the_same() {
            world.board.goals.goToColumn(world.columnOfGoal("First"));
            tryVerify(() => root.Window.activeFocusItem === column("First"));
            compare(keysOf("First"),
                    ["Move goal left: Alt+←", "Move goal right: Alt+→", "Rename goal: F2",
                     "Work on this goal: Ctrl+G"]);
        }
        function test_the_menu_of_a_goal_on_which_no_key_acts_names_none() {
            world.clearSelection();
            board.forceActiveFocus();
            compare(keysOf("First"), []);
            // Those of another goal.
            world.board.goals.goToColumn(world.columnOfGoal("Second"));
            tryVerify(() => root.Window.activeFocusItem === column("Second"));
            compare(keysOf("First"), []);
            // They still act on that one.
            keyClick(Qt.Key_Left, Qt.AltModifier);
            compare(world.goalTitles(), ["Second", "First"]);
            keyClick(Qt.Key_Right, Qt.AltModifier);
            compare(world.goalTitles(), ["First", "Second"]);
        }
        function test_the_menu_of_a_goal_with_the_keyboard_names_the_keys_that_move_it() {
            world.board.goals.goToColumn(world.columnOfGoal("Second"));
            button(column("First"), "lightbulb-plus").forceActiveFocus(Qt.TabFocusReason);
            compare(keysOf("First"), ["Move goal left: Alt+←", "Move goal right: Alt+→"]);
        }
        function test_what_the_desktop_cannot_do_is_not_in_the_menu_of_a_goal() {
            world.lack("windows");
            world.lack("actions");
            const head = only(all(column("First"), item => item instanceof ColumnHeader));
            mouseClick(button(head, "ellipsis"));
            tryVerify(() => menuItems().filter(item => item.visible).length === 7);
            compare(menuItems().find(item => item.visible).text, "Rename goal");
            closeMenu();
            world.lackNothing();
        }
        function test_the_menu_of_a_goal_says_why_a_sorted_goal_stays() {
            world.board.toggleAutoSortingGoals();
            for (const text of ["Move goal right", "Move to the end"]) {
                openGoalMenu();
                verify(!menuItems().find(item => item.text === "Move goal left").enabled);
                const entry = menuItems().find(item => item.text === text);
                const other = menuItems().find(item => item.text === "Rename goal");
                verify(entry.enabled && entry.opacity < other.opacity);
                compare(entry.Accessible.description,
                        "Goals are sorted automatically and cannot be moved");
                compare(other.Accessible.description, "");
                choose(text);
                tryVerify(() => menuItems().length === 0);
                compare(world.board.toastMessage,
                        "Goals are sorted automatically and cannot be moved");
                compare(world.board.toastActionText, "Stop sorting");
                compare(world.goalTitles(), ["First", "Second"]);
            }
            world.board.takeToastOffer();
            verify(!world.board.isAutoSortingGoals);
            openGoalMenu();
            compare(menuItems().find(item => item.text === "Move goal right").opacity, 1);
            choose("Move goal right");
            tryVerify(() => menuItems().length === 0);
            compare(world.goalTitles(), ["Second", "First"]);
            world.board.undo();
            tryVerify(() => !isMoving());
        }
        function test_every_entry_has_a_symbol_or_can_be_switched_on_and_off() {
            const bare = () => menuItems().filter(item => item.symbol === "" && !item.isChoice)
                                          .map(item => item.text);
            openGoalMenu();
            compare(bare(), []);
            closeMenu();
            board.openMenu();
            tryVerify(() => menuItems().length > 0);
            compare(bare(), []);
            const keys = text => menuItems().find(item => item.text === text).keys;
            compare([keys("New goal"), keys("Undo"), keys("Redo")], ["Ctrl+N", "Ctrl+Z", "Ctrl+Y"]);
            closeMenu();
        }
        function test_a_button_of_a_goal_has_the_menu_of_the_goal() {
            const second = column("Second");
            button(second, "lightbulb-plus").forceActiveFocus(Qt.TabFocusReason);
            keyClick(Qt.Key_Menu);
            tryVerify(() => menuItems().length === 12);
            choose("Delete goal");
            tryVerify(() => column("Second") === null);
            world.board.undo();
            tryVerify(() => column("Second") !== null);
        }
    }
}
