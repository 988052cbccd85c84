import QtQuick
import QtTest
import Kelpa.Controls
import Kelpa.Todos
import Kelpa.Windows
import Kelpa.Board
import "../cases"

/// The focus follows the selection, unless a person has moved it elsewhere.
Item {
    id: root

    width: 1100
    height: 700

    SearchField {
        id: search

        label: "Search"
        clearLabel: "Clear"
    }
    IconButton {
        id: button

        anchors.left: search.right
        symbol: "plus"
        text: "Button"
    }
    GoalBoard {
        id: board

        anchors.fill: parent
        anchors.topMargin: 50
        board: world.board
    }

    BoardCase {
        name: "SelectionFocus"
        goalBoard: board

        function holder() {
            return root.Window.activeFocusItem;
        }
        function card(title) {
            return only(all(board, item => item instanceof WindowCard && item.visible
                                           && item.title === title));
        }
        function initTestCase() {
            world.board.goals.createGoal("First");
            world.board.goals.createGoal("Second");
            world.addWindow(7, "Report");
            world.addWindow(8, "Letter");
            world.board.windows.moveWindow(8, world.columnOfGoal("First"));
            tryVerify(() => card("Report") !== null && card("Letter") !== null);
        }
        function init() {
            world.clearSelection();
            search.forceActiveFocus();
            search.focus = false;
            search.clear();
            tryVerify(() => !isMoving());
        }

        function test_alt_and_an_arrow_move_the_goal_that_the_arrow_keys_selected() {
            world.board.goals.goToColumn(world.columnOfGoal("Second"));
            tryCompare(column("Second"), "activeFocus", true);
            keyClick(Qt.Key_Left, Qt.AltModifier);
            compare(world.goalTitles(), ["Second", "First"]);
            compare(world.selectedGoal(), "Second");
            tryVerify(() => !isMoving());
            verify(column("Second").activeFocus);
            // Also from one of its windows; but what is written has that key for itself.
            world.board.goals.goToColumn(world.columnOfGoal("First"));
            world.board.windows.selectWindow(8);
            tryVerify(() => card("Letter").activeFocus);
            keyClick(Qt.Key_Left, Qt.AltModifier);
            compare(world.goalTitles(), ["First", "Second"]);
            world.board.todos.requestEditor(world.columnOfGoal("First"));
            tryVerify(() => holder() instanceof TextInputField);
            keyClick(Qt.Key_Right, Qt.AltModifier);
            compare(world.goalTitles(), ["First", "Second"]);
            keyClick(Qt.Key_Escape);
        }
        function test_the_focus_follows_the_selection() {
            world.moveSelection(Qt.Key_Right);
            tryVerify(() => holder() instanceof UnifiedTodoColumn);
            world.moveSelection(Qt.Key_Right);
            tryVerify(() => holder() === column("Unsorted"));
            world.board.windows.selectWindow(8);
            tryVerify(() => holder() === card("Letter"));
            verify(!card("Letter").visualFocus);
            world.leaveWindows();
            tryVerify(() => holder() === column("First"));
        }
        function test_the_focus_comes_to_a_card_that_was_out_of_sight() {
            for (let id = 101; id <= 130; ++id) {
                world.addWindow(id, "Window " + id);
                world.board.windows.moveWindow(id, world.columnOfGoal("Second"));
            }
            tryVerify(() => !isMoving());
            verify(card("Window 130") === null);
            world.board.windows.selectWindow(130);
            tryVerify(() => holder() !== null && holder() === card("Window 130"));
            for (let id = 101; id <= 130; ++id)
                world.removeWindow(id);
        }
        function test_what_is_typed_is_not_interrupted() {
            search.forceActiveFocus();
            world.moveSelection(Qt.Key_Right);
            tryVerify(() => world.board.todos.isUnifiedSelected && !isMoving());
            verify(search.activeFocus);
            // Until the field is left.
            search.focus = false;
            tryVerify(() => holder() instanceof UnifiedTodoColumn);
        }
        function test_a_button_that_Tab_reached_keeps_the_focus() {
            button.forceActiveFocus(Qt.TabFocusReason);
            world.moveSelection(Qt.Key_Right);
            tryVerify(() => world.board.todos.isUnifiedSelected && !isMoving());
            verify(button.activeFocus);
            button.focus = false;
        }
        function test_a_button_that_is_clicked_leaves_the_keyboard_where_it_is() {
            world.board.goals.goToColumn(world.columnOfGoal("First"));
            tryVerify(() => holder() === column("First") && !isMoving());
            mouseClick(button);
            const clicked = all(column("First"), item => item instanceof IconButton
                                                         && item.symbol === "lightbulb-plus")[0];
            mouseClick(clicked);
            verify(!button.activeFocus);
            verify(!clicked.activeFocus);
            // The Tab key reaches them.
            button.forceActiveFocus(Qt.TabFocusReason);
            verify(button.visualFocus);
            compare(button.focusPolicy, Qt.TabFocus);
            button.focus = false;
            world.board.todos.cancelEditor();
        }
        function test_without_a_selection_nobody_takes_the_focus() {
            world.moveSelection(Qt.Key_Right);
            tryVerify(() => holder() instanceof UnifiedTodoColumn);
            world.clearSelection();
            search.forceActiveFocus();
            search.focus = false;
            wait(0);
            tryVerify(() => !isMoving());
            verify(!(holder() instanceof UnifiedTodoColumn));
        }
        function test_Tab_selects_the_card_that_it_comes_to() {
            world.moveSelection(Qt.Key_Right);
            tryVerify(() => holder() instanceof UnifiedTodoColumn);
            card("Letter").forceActiveFocus(Qt.TabFocusReason);
            compare(world.selectedGoal(), "First");
            verify(card("Letter").isSelected);
            tryVerify(() => !isMoving());
            verify(card("Letter").visualFocus);
        }
        function test_Return_brings_the_window_forward_that_the_arrows_have_selected() {
            world.board.windows.selectWindow(8);
            tryVerify(() => holder() === card("Letter"));
            const before = world.calls().length;
            keyClick(Qt.Key_Return);
            world.runPending();
            verify(world.calls().slice(before).includes("raise Letter"));
            verify(card("Letter").isSelected);
        }
        function test_the_field_for_a_todo_keeps_the_focus_and_gives_it_back() {
            world.board.todos.requestEditor(world.columnOfGoal("First"));
            tryVerify(() => holder() instanceof TextInputField);
            tryVerify(() => !isMoving());
            verify(holder() instanceof TextInputField);
            keyClick(Qt.Key_Escape);
            tryVerify(() => holder() === column("First"));
        }
    }
}
