import QtQuick
import QtTest
import Kelpa.Appearance
import Kelpa.Todos
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
    TextInput {
        id: field
    }

    BigBoardCase {
        name: "SearchScroll"
        goalBoard: board

        function init() {
            field.forceActiveFocus();
            world.addWindow(21, "Letter");
            world.board.windows.moveWindow(21, world.columnOfGoal(goal(150)));
            settle();
        }
        function cleanup() {
            search("");
            world.removeTodos();
            world.removeWindow(21);
            world.clearSelection();
            ViewSettings.isReducingMotion = false;
            settle();
            view().contentY = 0;
            settle();
        }
        function search(text) {
            world.board.search.text = text;
            tryVerify(() => !isMoving());
        }
        function card(title) {
            return only(all(board, item => item instanceof WindowCard && item.visible
                                           && item.title === title));
        }
        function isShown(item) {
            return item !== null && isInView(item);
        }

        /// Types, and looks before the board scrolls.
        function begin(text) {
            world.board.search.text = text;
            verify(goalBoard.isMoving);
        }
        /// The board comes to rest where it was.
        function compareResting(place) {
            tryVerify(() => !isMoving());
            compare(view().contentY, place);
        }

        function test_a_search_shows_its_first_match_and_stays_there() {
            view().contentY = 700;
            settle();
            search("lett");
            verify(isShown(card("Letter")));
            verify(isShown(column(goal(150))));
            verify(view().contentY > 700);
            compare(world.board.selectedTarget, -1);
            const place = view().contentY;
            search("letter");
            compare(view().contentY, place);
            search("");
            verify(isShown(card("Letter")));
            compare(view().contentY, place);
            // Where nothing is found, the board stays.
            search("nobody");
            compare(view().contentY, place);
        }
        function test_a_goal_and_a_todo_are_shown_as_well() {
            world.addTodo("Write a letter", goal(120));
            world.removeWindow(21);
            world.clearSelection();
            settle();
            view().contentY = 0;
            settle();
            search("letter");
            verify(isShown(only(all(column(goal(120)), item => item instanceof TodoRow))));
            search(goal(180));
            verify(isShown(column(goal(180))));
            compare(world.board.selectedTarget, -1);
        }
        function test_a_card_shows_the_match_that_its_fade_would_cover_until_the_search_ends() {
            for (let i = 0; i < 8; ++i)
                world.addTodo("Todo " + i, goal(150));
            world.addTodo("Write it down", goal(120));
            for (let i = 0; i < 8; ++i)
                world.addTodo("Later " + i, goal(120));
            world.addTodo("Call the bank", goal(120));
            world.clearSelection();
            settle();
            view().contentY = 700;
            settle();
            search("letter");
            const grown = column(goal(150));
            const letter = card("Letter");
            verify(letter.mapToItem(grown, 0, letter.height).y > Theme.collapsedCardHeight);
            compare(grown.height, grown.naturalHeight);
            verify(isShown(letter));
            compare(world.board.selectedTarget, -1);
            // The card of another match takes its place.
            search("bank");
            verify(isShown(only(all(column(goal(120)), item => item instanceof TodoRow
                                                               && item.title === "Call the bank"))));
            compare(column(goal(120)).height, column(goal(120)).naturalHeight);
            // One that shows the match as it is does not expand.
            search("goal 149");
            search("write it");
            compare(column(goal(120)).height, Theme.collapsedCardHeight);
            search("bank");
            verify(column(goal(120)).height > Theme.collapsedCardHeight);
            search("");
            settle();
            compare(column(goal(120)).height, Theme.collapsedCardHeight);
        }
        function test_a_card_in_view_expands_as_well_but_not_while_a_button_is_held() {
            for (let i = 0; i < 8; ++i)
                world.addTodo("Todo " + i, goal(1));
            world.addTodo("Call the bank", goal(1));
            world.clearSelection();
            settle();
            view().contentY = 0;
            settle();
            mousePress(board, 600, 300);
            search("bank");
            compare(column(goal(1)).height, Theme.collapsedCardHeight);
            mouseRelease(board, 600, 300);
            search("the bank");
            compare(column(goal(1)).height, column(goal(1)).naturalHeight);
            verify(isShown(only(all(column(goal(1)), item => item instanceof TodoRow
                                                             && item.title === "Call the bank"))));
        }
        function test_the_board_does_not_move_while_the_match_is_in_view() {
            select(150);
            settle();
            world.clearSelection();
            settle();
            const top = card("Letter").mapToItem(view().contentItem, 0, 0).y;
            for (const beside of [1, 200, view().height - 127]) {
                view().contentY = top - beside;
                settle();
                const place = view().contentY;
                verify(isShown(card("Letter")));
                search("letter");
                compare(view().contentY, place);
                search("");
                compare(view().contentY, place);
            }
        }
        function test_without_motion_the_match_is_shown_as_well() {
            ViewSettings.isReducingMotion = true;
            search("letter");
            verify(isShown(card("Letter")));
        }
        function test_who_scrolls_while_searching_stays_there() {
            search("letter");
            verify(isShown(card("Letter")));
            view().turn(-1);
            settle();
            const place = view().contentY;
            search("");
            compare(view().contentY, place);
            // By the wheel, too, and while the board is on its way.
            world.board.search.text = "letter";
            tryVerify(() => view().contentY !== place);
            mouseWheel(board, 600, 400, 0, -120);
            tryVerify(() => !isMoving() && !view().moving);
            const stopped = view().contentY;
            wait(300);
            compare(view().contentY, stopped);
            // And by a key where there is nothing more to scroll.
            search("");
            view().contentY = 0;
            settle();
            begin("letter");
            view().scrollTo(0);
            compareResting(0);
        }
        function test_the_selection_stays_where_it_is() {
            select(3);
            settle();
            search("letter");
            verify(isShown(card("Letter")));
            compare(world.selectedGoal(), goal(3));
            search("");
            compare(world.selectedGoal(), goal(3));
        }
        function test_a_window_that_the_search_hides_may_be_the_selected_one() {
            world.addWindow(22, "Other");
            world.board.windows.moveWindow(22, world.columnOfGoal(goal(2)));
            search("other");
            verify(world.board.search.selectFirst());
            search("");
            field.forceActiveFocus();
            search("letter");
            verify(isShown(card("Letter")));
            search("");
            world.removeWindow(22);
        }
        function test_what_is_selected_meanwhile_stays_in_view() {
            begin("letter");
            select(3);
            tryVerify(() => !isMoving());
            verify(isShown(column(goal(3))));
            const place = view().contentY;
            search("");
            // What is selected already has not changed.
            begin("letter");
            world.board.goals.showColumn(world.columnOfGoal(goal(3)));
            compareResting(place);
        }
        function test_a_todo_of_the_selected_goal_stays_in_view() {
            world.addTodo("Call", goal(3));
            select(3);
            settle();
            const place = view().contentY;
            begin("letter");
            world.board.todos.goToTodo(world.todoID("Call", goal(3)), world.columnOfGoal(goal(3)), false);
            compareResting(place);
        }
        function test_undo_shows_what_it_restores() {
            select(3);
            settle();
            world.board.goals.renameGoal(world.columnOfGoal(goal(3)), "Other");
            settle();
            const place = view().contentY;
            begin("letter");
            world.board.undo();
            compareResting(place);
            verify(isShown(column(goal(3))));
        }
        function test_a_press_ends_it_also_on_the_way() {
            begin("letter");
            mousePress(board, 600, 300);
            tryVerify(() => !isMoving());
            compare(view().contentY, 0);
            // Nor while the button is held.
            search("lette");
            compare(view().contentY, 0);
            mouseRelease(board, 600, 300);
            begin("letter");
            tryVerify(() => view().contentY > 0);
            mousePress(board, 600, 300);
            const place = view().contentY;
            compareResting(place);
            mouseRelease(board, 600, 300);
            verify(!isShown(card("Letter")));
        }
        function test_the_focus_on_a_card_ends_it() {
            const part = column(goal(1)).selectedPart();
            begin("letter");
            part.forceActiveFocus(Qt.TabFocusReason);
            compareResting(0);
        }
    }
}
