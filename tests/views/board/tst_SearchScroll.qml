import QtQuick
import QtTest
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

    BigBoardCase {
        name: "SearchScroll"
        goalBoard: board

        function init() {
            world.addWindow(21, "Letter");
            world.board.windows.moveWindow(21, world.columnOfGoal(goal(150)));
            settle();
        }
        function cleanup() {
            search("");
            world.removeTodos();
            world.removeWindow(21);
            world.clearSelection();
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

        function test_a_search_shows_its_first_match_and_its_end_what_was_there_before() {
            view().contentY = 700;
            settle();
            search("lett");
            verify(isShown(card("Letter")));
            verify(isShown(column(goal(150))));
            verify(view().contentY > 700);
            compare(world.board.selectedTarget, -1);
            search("letter");
            verify(isShown(card("Letter")));
            search("");
            compare(view().contentY, 700);
            // Where nothing is found, the board stays.
            search("nobody");
            compare(view().contentY, 700);
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
            search("");
            compare(view().contentY, 0);
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
            tryVerify(() => !isMoving());
            const stopped = view().contentY;
            search("");
            compare(view().contentY, stopped);
        }
        function test_what_was_selected_meanwhile_stays_in_view() {
            search("letter");
            verify(world.board.search.selectFirst());
            settle();
            verify(isShown(card("Letter")));
            search("");
            verify(isShown(card("Letter")));
            verify(view().contentY > 0);
        }
        function test_the_selection_stays_where_it_is_and_comes_back_into_view() {
            select(3);
            settle();
            const place = view().contentY;
            search("letter");
            verify(isShown(card("Letter")));
            compare(world.selectedGoal(), goal(3));
            search("");
            compare(view().contentY, place);
            compare(world.selectedGoal(), goal(3));
        }
        function test_a_search_that_begins_on_the_way_back_returns_to_the_same_place() {
            view().contentY = 300;
            settle();
            search("letter");
            world.board.search.text = "";
            wait(30);
            search(goal(190));
            verify(isShown(column(goal(190))));
            search("");
            compare(view().contentY, 300);
        }
    }
}
