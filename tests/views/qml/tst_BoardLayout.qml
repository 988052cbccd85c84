import QtQuick
import QtTest
import Kelpa

Item {
    id: root

    width: 1100
    height: 700

    GoalBoard {
        id: board

        anchors.fill: parent
        board: world.board
    }
    Item {
        id: elsewhere
    }
    SignalSpy {
        id: adding

        target: board
        signalName: "newGoalRequested"
    }

    TestCase {
        name: "BoardLayout"
        when: windowShown

        /// Everything below `item` for which `accepts` holds.
        function all(item, accepts) {
            let found = accepts(item) ? [item] : [];
            for (let i = 0; i < item.children.length; ++i)
                found = found.concat(all(item.children[i], accepts));
            return found;
        }
        function only(found) {
            return found.length === 1 ? found[0] : null;
        }
        function column(title) {
            return only(all(board, item => item instanceof GoalColumn && item.title === title));
        }
        function unified() {
            return only(all(board, item => item instanceof UnifiedTodoColumn));
        }
        function targets() {
            return only(all(board, item => item instanceof WaterfallView
                                           && item.minimumColumnWidth === 320));
        }
        function view() {
            return only(all(board, item => item instanceof Flickable
                                           && item.Accessible.role === Accessible.Pane));
        }
        function isMoving() {
            return board.isMoving || all(board, item => item instanceof WaterfallView
                                                        && item.isMoving).length > 0;
        }
        function goal(number) {
            return "Goal " + number;
        }
        function settle() {
            targets().layOut();
            tryVerify(() => !isMoving());
            targets().layOut();
        }

        function initTestCase() {
            for (let number = 1; number <= 200; ++number)
                world.board.createGoal(goal(number));
            tryVerify(() => column(goal(1)) !== null);
        }
        function init() {
            elsewhere.forceActiveFocus();
            world.clearSelection();
            view().contentY = 0;
            settle();
        }

        readonly property string longTitle: "A goal whose title is a good deal longer than its place"

        function cleanup() {
            world.removeTodos();
            world.board.renameGoal(world.columnOfGoal(longTitle), goal(1));
            ViewSettings.isReducingMotion = false;
        }
        /// Not one that waits to be used for another goal.
        function entry(title) {
            const list = only(all(board, item => item instanceof ListView
                                                 && item.model === world.board.breadcrumbs));
            for (let row = 0; row < list.count; ++row)
                if (list.itemAtIndex(row)?.text === title)
                    return list.itemAtIndex(row);
            return null;
        }
        function select(number) {
            world.board.todos.goToColumn(world.columnOfGoal(goal(number)));
        }
        function isInView(item) {
            const top = item.mapToItem(view(), 0, 0).y;
            return top >= 0 && top + Math.min(item.height, view().height) <= view().height + 1;
        }

        function test_a_click_on_the_rail_selects_and_expands_a_goal() {
            mouseClick(entry("(0)" + goal(3)));
            compare(world.selectedGoal(), goal(3));
            settle();
            verify(column(goal(3)).isExpanded);
            compare(entry("(0)" + goal(3)).opacity, 1);
            compare(entry("(0)" + goal(2)).opacity, 0.65);
            compare(entry("(0)" + goal(2)).height, 18);
        }
        function test_the_rail_has_entries_only_where_it_shows_them() {
            const entries = all(board, item => item instanceof MarqueeGoalTitle);
            verify(entries.length > 20);
            verify(entries.length < 80, entries.length);
        }
        function test_the_rail_is_116_points_wide_with_14_around_entries_18_high() {
            const rail = only(all(board, item => item instanceof GoalBreadcrumbRail));
            compare(rail.width, 116);
            select(1);
            world.clearSelection();
            const first = entry("(0)" + goal(1));
            const place = first.mapToItem(rail, 0, 0);
            compare(place.x, 14);
            compare(place.y, 14);
            compare(first.width, 116 - 28);
            compare(first.height, 18);
            compare(first.background.radius, 7);
            compare(first.opacity, 0.65);
            const list = first.ListView.view;
            compare(list.height, rail.height - 28);
        }
        function test_a_wide_title_passes_by_in_its_card_while_that_is_selected_and_on_the_screen() {
            const wide = longTitle;
            world.board.renameGoal(world.columnOfGoal(goal(1)), wide);
            tryVerify(() => column(wide) !== null);
            const title = only(all(column(wide), item => item instanceof MarqueeGoalTitle));
            compare(title.text, wide);
            verify(!title.isMoving);
            verify(title.isTruncated);
            world.board.todos.goToColumn(world.columnOfGoal(wide));
            settle();
            verify(title.isMoving);
            compare(title.measure.travel, title.measure.textWidth + 15);
            tryVerify(() => title.offset < -2);
            // Just above what shows, where the card still is.
            const below = title.mapToItem(view().contentItem, 0, title.height).y;
            view().contentY = below - 1;
            verify(title.isMoving);
            view().contentY = below + 1;
            verify(!title.isMoving);
            compare(only(all(column(wide), item => item instanceof MarqueeGoalTitle)), title);
            view().contentY = 0;
            verify(title.isMoving);
            world.clearSelection();
            verify(!title.isMoving);
        }
        function test_the_tab_key_walks_the_rail_beyond_what_it_shows() {
            const rail = only(all(board, item => item instanceof GoalBreadcrumbRail));
            select(1);
            entry("(0)" + goal(1)).forceActiveFocus();
            for (let number = 2; number <= 40; ++number) {
                keyClick(Qt.Key_Tab);
                const focused = root.Window.activeFocusItem;
                compare(focused.text, "(0)" + goal(number));
                const top = focused.mapToItem(rail, 0, 0).y;
                verify(top >= 14, top);
                verify(top + 18 <= rail.height - 14, top);
            }
        }
        function test_the_arrow_keys_bring_the_entry_of_the_last_goal_into_view() {
            select(199);
            tryVerify(() => entry("(0)" + goal(199)) !== null);
            world.moveSelection(Qt.Key_Right);
            compare(world.selectedGoal(), goal(200));
            tryVerify(() => entry("(0)" + goal(200)) !== null);
            const rail = only(all(board, item => item instanceof GoalBreadcrumbRail));
            const last = entry("(0)" + goal(200));
            compare(last.opacity, 1);
            const top = last.mapToItem(rail, 0, 0).y;
            verify(top >= 14, top);
            verify(top + last.height <= rail.height - 14, top);
            // Below what is unsorted, and scrolled to from below: the first that shows.
            world.board.todos.goToColumn("kelpa-unassigned");
            world.moveSelection(Qt.Key_Down);
            compare(world.selectedGoal(), goal(2));
            tryVerify(() => entry("(0)" + goal(2)) !== null);
            compare(entry("(0)" + goal(2)).mapToItem(rail, 0, 0).y, 14);
        }
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
        function test_the_selection_is_scrolled_into_view_wherever_it_is() {
            compare(column(goal(150)), null);
            select(150);
            tryVerify(() => column(goal(150)) !== null && !isMoving());
            verify(isInView(column(goal(150))));
            verify(column(goal(150)).isExpanded);
            compare(column(goal(1)), null);
        }
        function test_a_burst_of_selections_scrolls_once_after_the_last() {
            const before = view().contentY;
            for (let number = 100; number < 110; ++number) {
                select(number);
                compare(view().contentY, before);
            }
            tryVerify(() => column(goal(109)) !== null && !isMoving());
            verify(isInView(column(goal(109))));
        }
        function test_a_selected_card_that_is_scrolled_away_collapses_when_another_is_selected() {
            for (let i = 0; i < 12; ++i)
                world.addTodo("Todo " + i, goal(1));
            select(1);
            settle();
            const expanded = targets().rowRect(2).height;
            verify(expanded > 292);
            view().contentY = 8000;
            targets().layOut();
            compare(targets().rowRect(2).height, expanded);
            select(100);
            tryCompare(targets(), "isMoving", false);
            settle();
            compare(targets().rowRect(2).height, 292);
            tryVerify(() => column(goal(1)) === null);
        }
        function test_cards_that_come_into_view_show_their_own_goal() {
            for (let i = 0; i < 3; ++i)
                world.addTodo("Of forty " + i, goal(40));
            for (const y of [3000, 6000, 9000, 12000, 6000, 3000]) {
                view().contentY = y;
                targets().layOut();
            }
            select(40);
            tryVerify(() => column(goal(40)) !== null && !isMoving());
            const titles = all(column(goal(40)), item => item instanceof TodoRow)
                .sort((a, b) => a.y - b.y).map(row => row.title);
            compare(titles, ["Of forty 0", "Of forty 1", "Of forty 2"]);
            compare(column(goal(40)).Accessible.name, goal(40));
            compare(column(goal(40)).openTodoCount, 3);
        }
        function test_the_field_that_has_the_keyboard_stays_with_its_card() {
            select(2);
            settle();
            world.board.todos.requestEditor(world.columnOfGoal(goal(2)));
            const field = () => only(all(board, item => item instanceof TextInputField));
            tryVerify(() => field()?.activeFocus ?? false);
            field().text = "half writ";
            settle();
            view().contentY = 9000;
            tryVerify(() => column(goal(60)) !== null || column(goal(50)) !== null
                            || targets().itemCount > 3);
            compare(field().text, "half writ");
            verify(field().activeFocus);
            world.board.todos.cancelEditor();
        }
        function test_a_card_that_waits_for_another_goal_takes_no_request_from_the_one_that_shows() {
            const cards = () => all(board, item => item instanceof GoalColumn);
            const seen = [];
            const scroll = y => {
                view().contentY = y;
                targets().layOut();
                for (const card of cards())
                    if (!seen.includes(card))
                        seen.push(card);
            };
            // Shown by another card, which is younger than the one from before, which still waits.
            const isWaitedFor = card => seen.slice(0, seen.indexOf(card)).some(
                other => other.parent === null && other.columnID === card.columnID);
            let shown = undefined;
            for (let far = 700; far < 9000 && shown === undefined; far += 700) {
                for (let y = 0; y < far; y += 700)
                    scroll(y);
                for (let y = far; y >= 0 && shown === undefined; y -= 120) {
                    scroll(y);
                    shown = cards().find(card => isWaitedFor(card) && isInView(card));
                }
            }
            verify(shown !== undefined);
            world.board.todos.requestEditor(shown.columnID);
            const field = () => only(all(shown, item => item instanceof TextInputField));
            tryVerify(() => field()?.activeFocus ?? false);
            world.board.todos.cancelEditor();
        }
        function test_a_deleted_goal_leaves_no_gap() {
            world.board.createGoal("Short-lived");
            tryVerify(() => column("Short-lived") !== null);
            settle();
            world.board.deleteGoal(world.columnOfGoal("Short-lived"));
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
