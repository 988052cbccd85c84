import QtQuick
import QtTest
import Kelpa.Appearance
import Kelpa.Controls
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
        name: "BoardScrolling"
        goalBoard: board

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
        function todoRow(title) {
            return only(all(column(goal(150)), item => item instanceof TodoRow
                                                       && item.title === title));
        }
        function test_the_selected_card_in_a_tall_goal_is_scrolled_into_view() {
            for (let id = 301; id <= 340; ++id) {
                world.addWindow(id, "Window " + id);
                world.board.windows.moveWindow(id, world.columnOfGoal(goal(150)));
            }
            const card = title => only(all(board, item => item instanceof WindowCard
                                                          && item.visible && item.title === title));
            // From far away, then from one end of the goal to the other and back.
            for (const id of [320, 340, 301, 340]) {
                world.board.windows.selectWindow(id);
                tryVerify(() => card("Window " + id)?.isSelected && !isMoving());
                const shown = card("Window " + id);
                compare(world.selectedGoal(), goal(150));
                verify(isInView(shown), id);
                // Its rect is its position, so that it was scrolled to and no other.
                const rect = column(goal(150)).windowRect(world.board.selectedWindow);
                const place = shown.mapToItem(column(goal(150)), 0, 0);
                compare(Qt.point(rect.x, rect.y), Qt.point(place.x, place.y));
            }
            // The goal is higher than what shows: its head has gone.
            verify(column(goal(150)).height > view().height);
            for (let id = 301; id <= 340; ++id)
                world.removeWindow(id);
        }
        function test_the_todo_that_was_gone_to_in_a_tall_goal_is_scrolled_into_view() {
            for (let i = 0; i < 60; ++i)
                world.addTodo("Todo " + i, goal(150));
            for (const place of [59, 0, 30]) {
                const title = "Todo " + place;
                world.board.todos.goToTodo(world.todoID(title, goal(150)),
                                           world.columnOfGoal(goal(150)), false);
                tryVerify(() => column(goal(150)) !== null && todoRow(title) !== null
                                && !isMoving());
                verify(todoRow(title).isHighlighted);
                verify(isInView(todoRow(title)), title);
                const rect = column(goal(150)).todoRect(world.todoID(title, goal(150)));
                compare(rect.y, todoRow(title).mapToItem(column(goal(150)), 0, 0).y);
                compare(rect.height, 34);
            }
            verify(column(goal(150)).height > view().height);
        }
        function test_the_board_scrolls_45_milliseconds_after_the_last_of_a_burst_and_once() {
            ViewSettings.isReducingMotion = true;
            let moves = 0;
            const note = () => ++moves;
            view().contentYChanged.connect(note);
            let last = 0;
            // False when it scrolled meanwhile, as it does on a machine that is too busy for one step
            // to follow on the other in time.
            const selectInBurst = first => {
                for (let number = first; number < first + 12; ++number) {
                    last = Date.now();
                    select(number);
                    // As a held key repeats: the program goes on between two of them.
                    wait(5);
                    if (moves > 0)
                        return false;
                }
                return true;
            };
            let first = 100;
            let isDone = selectInBurst(first);
            for (let attempt = 0; attempt < 20 && !isDone; ++attempt) {
                tryVerify(() => !isMoving());
                first = first === 100 ? 150 : 100;
                moves = 0;
                isDone = selectInBurst(first);
            }
            verify(isDone);
            tryVerify(() => moves > 0);
            verify(Date.now() - last >= 40);
            tryVerify(() => !isMoving());
            compare(moves, 1);
            view().contentYChanged.disconnect(note);
            verify(isInView(column(goal(first + 11))));
        }
        function test_who_takes_the_scroll_bar_stops_the_board_on_its_way() {
            const bar = only(all(board, item => item instanceof AppScrollBar && item.parent === board));
            view().scrollTo(10000);
            tryVerify(() => view().contentY > 0);
            mousePress(bar, 4, bar.position * bar.height + 8);
            verify(bar.pressed);
            verify(!view().isScrolling);
            const place = view().contentY;
            wait(50);
            compare(view().contentY, place);
            mouseRelease(bar, 4, bar.position * bar.height + 8);
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
            const titles = () => all(column(goal(40)), item => item instanceof TodoRow)
                .sort((a, b) => a.y - b.y).map(row => row.title).join();
            tryVerify(() => titles() === "Of forty 0,Of forty 1,Of forty 2");
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
    }
}
