import QtQuick
import QtTest
import Kelpa.Appearance
import Kelpa.Controls
import Kelpa.Goals
import Kelpa.Board
import "../cases"

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
        name: "Menus"
        goalBoard: board

        function showElsewhere() {
            // The toolkit counts a window as active while one that belongs to it is.
            elsewhere.transientParent = null;
            elsewhere.show();
        }

        function test_the_press_that_closes_a_menu_does_nothing_else() {
            const first = column("First");
            show(first, "First", ["Read"]);
            tryVerify(() => !isMoving());
            const status = button(row(first, "Read"), "circle");
            // Far from the menu that opens below its button.
            const press = button => {
                mouseClick(status, 14, 14, button);
                tryVerify(() => menuItems().length === 0);
                compare(world.todos("First"), ["Read (todo)"]);
                compare(field(first), null);
            };
            openGoalMenu();
            press(Qt.LeftButton);
            openGoalMenu();
            press(Qt.RightButton);
            mouseClick(status);
            compare(world.todos("First"), ["Read (ing)"]);
        }
        function test_an_open_menu_keeps_the_wheel_and_the_pointer_from_the_board() {
            const titles = [];
            for (let i = 0; i < 30; ++i)
                titles.push("Todo " + i);
            const first = column("First");
            world.board.goals.goToColumn(world.columnOfGoal("First"));
            for (const title of titles)
                world.addTodo(title, "First");
            tryVerify(() => !isMoving() && view().contentHeight > view().height + 100);
            view().contentY = 0;
            openGoalMenu();
            mouseWheel(root, 1200, 250, 0, -240);
            mouseMove(first, 100, 250);
            mouseMove(first, 101, 251);
            wait(0);
            tryVerify(() => !isMoving());
            compare(view().contentY, 0);
            compare(all(first, item => item instanceof IconButton && item.symbol === "ellipsis"
                                       && item.isShown && item.visible).length, 1);
            closeMenu();
            mouseMove(first, 100, 251);
            mouseMove(first, 101, 250);
            tryVerify(() => all(first, item => item instanceof IconButton
                                               && item.symbol === "ellipsis" && item.isShown
                                               && item.visible).length === 2);
            mouseWheel(root, 1200, 250, 0, -240);
            tryVerify(() => view().contentY > 0);
            world.clearSelection();
        }
        function test_a_menu_closes_when_the_window_changes_its_size() {
            openGoalMenu();
            const window = root.Window.window;
            const width = window.width;
            window.width = width - 20;
            tryVerify(() => menuItems().length === 0);
            openGoalMenu();
            window.width = width;
            tryVerify(() => menuItems().length === 0);
        }
        function test_a_menu_closes_when_another_window_gets_the_keyboard() {
            openGoalMenu();
            showElsewhere();
            elsewhere.requestActivate();
            tryVerify(() => menuItems().length === 0);
            elsewhere.close();
            root.Window.window.requestActivate();
            tryVerify(() => root.Window.active);
        }
        function test_a_menu_that_opens_before_its_window_gets_the_keyboard_stays_open() {
            showElsewhere();
            elsewhere.requestActivate();
            tryVerify(() => elsewhere.active);
            openGoalMenu();
            root.Window.window.requestActivate();
            tryVerify(() => root.Window.active);
            // Time to close.
            wait(2 * Theme.mediumTime);
            verify(menuItems().length > 0);
            elsewhere.close();
            closeMenu();
        }
        function test_the_arrows_go_around_a_menu_and_leave_out_what_cannot_be_chosen() {
            openGoalMenu();
            compare(highlighted(), "");
            // The first goal can move on, and not back.
            keyClick(Qt.Key_Up);
            compare(highlighted(), "Delete goal");
            keyClick(Qt.Key_Down);
            compare(highlighted(), "Add windows to this goal");
            keyClick(Qt.Key_Up);
            compare(highlighted(), "Delete goal");
            keyClick(Qt.Key_Up);
            compare(highlighted(), "Move to the end");
            keyClick(Qt.Key_Up);
            compare(highlighted(), "Move goal right");
            keyClick(Qt.Key_Up);
            compare(highlighted(), "Export…");
            keyClick(Qt.Key_Up);
            compare(highlighted(), "Rename goal");
            closeMenu();
            openGoalMenu();
            compare(highlighted(), "");
            keyClick(Qt.Key_Down);
            compare(highlighted(), "Add windows to this goal");
            closeMenu();
        }
        function test_Home_End_and_letters_choose_in_a_menu() {
            openGoalMenu();
            keyClick(Qt.Key_End);
            compare(highlighted(), "Delete goal");
            keyClick(Qt.Key_Home);
            compare(highlighted(), "Add windows to this goal");
            keyClick("o");
            compare(highlighted(), "Open Chrome in this goal");
            keyClick("o");
            compare(highlighted(), "Open a Terminal in this goal");
            keyClick("o");
            compare(highlighted(), "Open Chrome in this goal");
            keyClick("m");
            compare(highlighted(), "Move goal right");
            keyClick("x");
            compare(highlighted(), "Move goal right");
            closeMenu();
        }
        function test_the_keys_choose_in_a_menu_within_a_menu() {
            const first = column("First");
            show(first, "First", ["Read"]);
            mouseMove(root, 1, 699);
            content(first, "Read").forceActiveFocus(Qt.TabFocusReason);
            keyClick(Qt.Key_Menu);
            tryVerify(() => menuItems().length === 7);
            keyClick("m");
            compare(highlighted(), "Move to goal");
            keyClick(Qt.Key_Right);
            tryVerify(() => menuItems().length === 9);
            keyClick(Qt.Key_Up);
            keyClick(Qt.Key_Home);
            keyClick("u");
            keyClick("s");
            keyClick(Qt.Key_Return);
            tryVerify(() => world.todos("Second").length === 1);
        }
        function test_a_button_of_a_todo_has_the_menu_of_the_todo() {
            const first = column("First");
            show(first, "First", ["Read"]);
            const status = button(row(first, "Read"), "circle");
            for (const open of [() => keyClick(Qt.Key_Menu),
                                () => keyClick(Qt.Key_F10, Qt.ShiftModifier)]) {
                status.forceActiveFocus(Qt.TabFocusReason);
                open();
                tryVerify(() => menuItems().some(item => item.text === "Delete todo"));
                compare(menuItems().length, 7);
                closeMenu();
            }
        }
    }
    Window {
        id: elsewhere

        width: 100
        height: 100
    }
}
