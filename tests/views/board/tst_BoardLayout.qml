import QtQuick
import QtTest
import Kelpa.Appearance
import Kelpa.Goals
import Kelpa.Todos
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
    SignalSpy {
        id: adding

        target: world.board
        signalName: "newGoalRequested"
    }

    BigBoardCase {
        name: "BoardLayout"
        goalBoard: board

        function test_two_hundred_goals_have_as_many_cards_as_the_screen_shows() {
            compare(world.goalTitles().length, 200);
            // Two columns: the list of all todos and five cards, with what is just out of sight.
            tryVerify(() => targets().itemCount <= 6);
            const cards = all(board, item => item instanceof GoalColumn);
            compare(cards.length, 5);
        }
        function test_cards_stand_in_the_order_of_the_board() {
            const places = all(board, item => item instanceof GoalColumn)
                .sort((a, b) => a.y - b.y || a.x - b.x).map(card => card.title);
            compare(places.slice(0, 4), ["Unsorted", goal(1), goal(2), goal(3)]);
            compare(unified().x, 0);
            compare(unified().y, 0);
            compare(column("Unsorted").x, unified().width + 22);
            compare(column("Unsorted").y, 0);
            compare(column(goal(1)).x, 0);
            compare(column(goal(1)).y, 314);
            compare(column(goal(2)).x, unified().width + 22);
            // Assistive programs read them in this order too.
            const items = targets().children;
            compare(items[0], unified());
            compare(items[1], column("Unsorted"));
            compare(items[2], column(goal(1)));
            compare(items[3], column(goal(2)));
        }
        function test_the_last_cards_are_the_last_goals_and_the_adding_card() {
            view().contentY = view().contentHeight - view().height;
            tryVerify(() => column(goal(200)) !== null);
            compare(column("Unsorted"), null);
            const card = only(all(board, item => item instanceof AddGoalCard));
            verify(card !== null);
            compare(card.Accessible.name, "Add goal");
            verify(card.y >= column(goal(200)).y);
            adding.clear();
            mouseClick(card);
            compare(adding.count, 1);
        }
        function test_a_card_is_292_points_high_until_it_is_selected() {
            for (let i = 0; i < 12; ++i)
                world.addTodo("Todo " + i, goal(1));
            const card = column(goal(1));
            compare(card.height, 292);
            verify(card.isCut);
            select(1);
            tryCompare(card, "expansionProgress", 1);
            settle();
            compare(card.height, card.naturalHeight);
            verify(card.height > 12 * 34 + 92);
            verify(!card.isCut);
            compare(column(goal(3)).y, card.y + card.height + 22);
            world.clearSelection();
            tryCompare(card, "expansionProgress", 0);
            settle();
            compare(card.height, 292);
        }
        function test_a_card_grows_and_what_lies_below_gives_way_step_by_step() {
            for (let i = 0; i < 12; ++i)
                world.addTodo("Todo " + i, goal(1));
            // Where both are seen all the time: a card that leaves the view ends.
            settle();
            view().contentY = 500;
            settle();
            const card = column(goal(1));
            const below = column(goal(3));
            let heights = [];
            let places = [];
            const noteHeight = () => heights.push(card.height);
            const notePlace = () => places.push(below.y);
            card.heightChanged.connect(noteHeight);
            below.yChanged.connect(notePlace);
            const before = below.y;
            select(1);
            tryCompare(card, "expansionProgress", 1);
            settle();
            card.heightChanged.disconnect(noteHeight);
            below.yChanged.disconnect(notePlace);
            verify(heights.some(height => height > 292 && height < card.naturalHeight));
            verify(places.some(place => place > before && place < below.y));
            compare(below.y, card.y + card.naturalHeight + 22);
        }
        function test_with_reduced_motion_cards_are_at_once_where_they_belong() {
            ViewSettings.isReducingMotion = true;
            for (let i = 0; i < 12; ++i)
                world.addTodo("Todo " + i, goal(1));
            const card = column(goal(1));
            select(1);
            compare(card.expansionProgress, 1);
            targets().layOut();
            compare(targets().rowRect(4).y, card.y + card.naturalHeight + 22);
            verify(!targets().isMoving);
        }
        function test_a_collapsed_card_has_rows_only_for_what_it_shows() {
            for (let i = 0; i < 300; ++i)
                world.addTodo("Todo " + i, goal(1));
            const card = column(goal(1));
            const rows = () => all(card, item => item instanceof TodoRow).length;
            tryVerify(() => rows() > 0);
            verify(rows() <= 8, rows());
            select(1);
            settle();
            compare(card.height, card.naturalHeight);
            verify(card.height > 300 * 34);
            // As many as the view is high, and what is just out of sight.
            verify(rows() <= (root.height + 200) / 34 + 2, rows());
            view().contentY = 6000;
            tryVerify(() => all(card, item => item instanceof TodoRow
                                              && item.title === "Todo 180").length === 1);
            verify(rows() <= (root.height + 200) / 34 + 2, rows());
        }
        function test_the_list_of_all_todos_is_no_higher_than_two_cards_and_scrolls() {
            compare(unified().height, 292);
            for (let i = 0; i < 200; ++i)
                world.addTodo("Todo " + i, "");
            settle();
            compare(unified().height, 606);
            const rows = all(unified(), item => item instanceof TodoRow).length;
            verify(rows >= 10);
            verify(rows <= 15, rows);
        }
        function test_a_deleted_goal_leaves_no_gap() {
            world.board.goals.createGoal("Short-lived");
            tryVerify(() => column("Short-lived") !== null);
            settle();
            world.board.goals.deleteGoal(world.columnOfGoal("Short-lived"));
            world.clearSelection();
            tryVerify(() => column("Short-lived") === null);
            settle();
            compare(targets().rowRect(1).y, 0);
            compare(targets().rowRect(1).height, 292);
            compare(targets().rowRect(200).y, targets().rowRect(198).y + 314);
            // Where it stood is the card that makes another goal.
            compare(targets().rowRect(202).y, targets().rowRect(200).y + 314);
            compare(targets().rowRect(203).height, 0);
        }
    }
}
