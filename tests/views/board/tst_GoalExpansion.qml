import QtQuick
import QtTest
import Kelpa.Appearance
import Kelpa.Controls
import Kelpa.Goals
import Kelpa.Windows
import Kelpa.Board
import "../cases"

/// The card of a goal that is not selected shows its beginning, and a fade over the lowest part of
/// it. Whatever in it has the keyboard is seen whole.
Item {
    id: root

    width: 1300
    // Without room to spare.
    height: 330

    GoalBoard {
        id: board

        anchors.fill: parent
        board: world.board
    }

    TodoCase {
        name: "GoalExpansion"
        goalBoard: board

        function init() {
            ViewSettings.isReducingMotion = true;
            root.height = 330;
            root.forceActiveFocus();
            world.clearSelection();
            tryVerify(() => !isMoving());
            view().contentY = 0;
            tryVerify(() => !first().isSelected && first().height === 292);
        }
        function first() {
            return column("First");
        }
        function holder() {
            return root.Window.activeFocusItem;
        }
        function fill(count) {
            const titles = [];
            for (let i = 0; i < count; ++i)
                titles.push("Todo " + i);
            show(first(), "First", titles.slice(0, 1));
            for (const title of titles.slice(1))
                world.addTodo(title, "First");
            tryVerify(() => !isMoving() && first().isCut && row(first(), "Todo 5") !== null);
        }
        /// Neither cut off by the card nor below its fade.
        function isSeen(item) {
            const end = item.mapToItem(first(), 0, item.height).y;
            return end <= first().height - (first().isCut ? 48 : 0);
        }
        function isWithin(item, ancestor) {
            for (let each = item; each !== null; each = each.parent)
                if (each === ancestor)
                    return true;
            return false;
        }

        function test_a_card_shows_more_where_the_board_has_room_to_spare() {
            fill(12);
            const second = column("Second");
            // It is below the first goal at first.
            const addCard = only(all(board, item => item instanceof AddGoalCard));
            const places = () => [first().x, first().y, second.x, second.y, second.height].join();
            const before = places();
            root.height = 500;
            // Down to the lower margin of the board.
            tryVerify(() => !isMoving() && first().height > 292);
            compare(addCard.y + addCard.height, targets().room);
            verify(first().isCut);
            compare(places(), before);
            root.height = 1000;
            tryVerify(() => !isMoving() && !first().isCut);
            compare(first().height, first().naturalHeight);
            compare(places(), before);
            // It shows everything already, so that selecting it moves nothing.
            world.board.goals.goToColumn(world.columnOfGoal("First"));
            tryVerify(() => first().isSelected && !isMoving());
            compare(first().height, first().naturalHeight);
            compare(places(), before);
            world.clearSelection();
            root.height = 330;
            tryCompare(first(), "height", 292);
            verify(first().isCut);
        }
        function test_the_list_of_all_todos_shows_more_where_the_board_has_room_to_spare() {
            fill(20);
            tryCompare(unified(), "height", 606);
            verify(unified().implicitHeight < unified().naturalHeight);
            const places = () => [first(), column("Second")].map(each => [each.x, each.y]).join();
            const before = places();
            root.height = 800;
            // Down to the lower margin of the board.
            tryVerify(() => !isMoving() && unified().y + unified().height === targets().room);
            compare(places(), before);
            root.height = 1400;
            tryVerify(() => !isMoving() && unified().height === unified().naturalHeight);
            const last = row(unified(), "Todo 19");
            verify(last.mapToItem(unified(), 0, last.height).y <= unified().height);
            root.height = 330;
            tryCompare(unified(), "height", 606);
        }
        function test_a_title_in_the_fade_is_edited_in_full_view() {
            fill(8);
            const row = this.row(first(), "Todo 5");
            verify(!isSeen(row));
            mouseClick(row, 60, 17);
            tryVerify(() => field(first())?.activeFocus ?? false);
            tryVerify(() => isSeen(field(first())));
            keyClick(Qt.Key_Escape);
            tryCompare(first(), "height", 292);
        }
        function test_a_title_above_the_fade_is_edited_without_any_change_of_the_card() {
            fill(8);
            mouseClick(row(first(), "Todo 4"), 60, 17);
            tryVerify(() => field(first())?.activeFocus ?? false);
            verify(isSeen(field(first())));
            tryVerify(() => !isMoving());
            compare(first().height, 292);
            keyClick(Qt.Key_Escape);
        }
        function test_the_Tab_key_leads_through_a_card_in_full_view() {
            fill(8);
            content(first(), "Todo 0").forceActiveFocus(Qt.TabFocusReason);
            let steps = 0;
            for (; isWithin(holder(), first()) && steps < 100; ++steps) {
                tryVerify(() => isSeen(holder()), 5000, String(holder().text ?? holder().title));
                keyClick(Qt.Key_Tab);
            }
            // A row has four items with the keyboard.
            compare(steps, 8 * 4);
            tryCompare(first(), "height", 292);
        }
        function test_a_row_that_the_keyboard_moves_into_the_fade_is_seen() {
            fill(8);
            content(first(), "Todo 4").forceActiveFocus(Qt.TabFocusReason);
            verify(isSeen(row(first(), "Todo 4")));
            keyClick(Qt.Key_Down, Qt.AltModifier);
            tryVerify(() => !isMoving() && rowTitles(first())[5] === "Todo 4");
            tryVerify(() => isSeen(row(first(), "Todo 4")));
        }
        function test_a_draft_stays_in_view_when_another_goal_is_selected() {
            fill(6);
            world.board.todos.requestEditor(world.columnOfGoal("First"));
            tryVerify(() => field(first())?.activeFocus ?? false);
            type("half");
            root.forceActiveFocus();
            world.board.goals.goToColumn(world.columnOfGoal("Second"));
            tryVerify(() => column("Second").isSelected && !isMoving());
            compare(field(first()).text, "half");
            verify(isSeen(field(first())));
        }
        function test_the_button_of_a_card_that_the_Tab_key_reaches_from_behind_is_seen() {
            fill(6);
            world.addWindow(7, "Letter");
            world.board.windows.moveWindow(7, world.columnOfGoal("First"));
            const button = () => only(all(first(), item => item instanceof CardButton
                                                           && item.visible && item.symbol === "x"));
            tryVerify(() => button() !== null && !isMoving());
            verify(!isSeen(button()));
            button().forceActiveFocus(Qt.BacktabFocusReason);
            tryVerify(() => isSeen(button()));
            verify(button().activeFocus);
            world.removeWindow(7);
            tryVerify(() => button() === null);
        }
    }
}
