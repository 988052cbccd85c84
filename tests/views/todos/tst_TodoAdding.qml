import QtQuick
import QtTest
import Kelpa.Scene
import Kelpa.Todos
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

    TodoCase {
        name: "TodoAdding"
        goalBoard: board

        function openField(place) {
            mouseClick(button(place, "lightbulb-plus"));
            tryVerify(() => field(place) !== null && field(place).activeFocus);
        }
        function requestField(goal) {
            world.board.todos.requestEditor(world.columnOfGoal(goal));
            tryVerify(() => field(column(goal)) !== null && field(column(goal)).activeFocus);
        }

        function test_the_add_button_of_a_goal_opens_a_field_that_stays() {
            const first = column("First");
            openField(first);
            type("ab");
            keyClick(Qt.Key_Return);
            compare(world.todos("First"), ["ab (todo)"]);
            compare(field(first).text, "");
            verify(field(first).activeFocus);
            type("cd");
            keyClick(Qt.Key_Return);
            compare(world.todos("First"), ["ab (todo)", "cd (todo)"]);
            keyClick(Qt.Key_Return);
            compare(world.todos("First").length, 2);
            verify(field(first) !== null);
            keyClick(Qt.Key_Escape);
            tryVerify(() => field(first) === null);
            compare(world.board.todos.editorColumnID, "");
        }
        function test_the_text_for_a_new_todo_outlasts_its_field() {
            for (const place of [unified(), column("Unsorted")]) {
                openField(place);
                type("ab");
                field(place).focus = false;
                compare(field(place).text, "ab");
                // A column with an open field is not pooled when it is scrolled away.
                verify(place.WaterfallDelegate.isPinned);
                mouseClick(button(place, "lightbulb-plus"));
                type("c");
                compare(field(place).text, "abc");
                keyClick(Qt.Key_Escape);
                tryVerify(() => field(place) === null);
                verify(!place.WaterfallDelegate.isPinned);
            }
            const first = column("First");
            openField(first);
            type("ab");
            world.board.todos.requestEditor(column("Second").columnID);
            tryVerify(() => field(first) === null);
            compare(field(column("Second")).text, "");
            openField(first);
            compare(field(first).text, "ab");
            mouseClick(button(first, "x"));
            tryVerify(() => field(first) === null);
            mouseClick(button(first, "lightbulb-plus"));
            tryVerify(() => field(first) !== null);
            compare(field(first).text, "");
        }
        function test_escape_returns_the_focus_to_the_button_that_opened_the_field() {
            for (const place of [unified(), column("Unsorted"), column("First")]) {
                openField(place);
                keyClick(Qt.Key_Escape);
                tryVerify(() => field(place) === null);
                verify(!hasKeyboard());
                button(place, "lightbulb-plus").forceActiveFocus(Qt.TabFocusReason);
                keyClick(Qt.Key_Return);
                tryVerify(() => field(place) !== null && field(place).activeFocus);
                keyClick(Qt.Key_Escape);
                tryVerify(() => field(place) === null);
                verify(button(place, "lightbulb-plus").visualFocus);
            }
        }
        function test_a_field_that_an_arrow_leaves_closes_and_its_draft_stays() {
            for (const place of [unified(), column("Unsorted")]) {
                openField(place);
                type("ab");
                world.board.todos.leaveEditor();
                tryVerify(() => field(place) === null);
                openField(place);
                compare(field(place).text, "ab");
                keyClick(Qt.Key_Escape);
                tryVerify(() => field(place) === null);
            }
        }
        function test_a_key_gives_up_the_text_of_the_focused_field_alone() {
            const unsorted = column("Unsorted");
            openField(unsorted);
            type("ab");
            requestField("First");
            type("cd");
            requestField("Second");
            type("ef");
            world.pressArrowInField();
            for (const place of [unsorted, column("First"), column("Second")])
                tryVerify(() => field(place) === null);
            world.finishWriting();
            compare(world.todos(""), ["ab (todo)"]);
            compare(world.todos("First"), ["cd (todo)"]);
            compare(world.todos("Second"), []);
            // The draft is kept for the next field, and opening that makes it wanted again.
            requestField("Second");
            compare(field(column("Second")).text, "ef");
            world.board.todos.leaveEditor();
            tryVerify(() => field(column("Second")) === null);
            world.finishWriting();
            compare(world.todos("Second"), ["ef (todo)"]);
        }
        function test_a_field_that_was_left_closes_once_its_text_is_added() {
            const unsorted = column("Unsorted");
            openField(unsorted);
            type("ab");
            requestField("First");
            type("cd");
            verify(field(unsorted) !== null);
            world.finishWriting();
            tryVerify(() => field(unsorted) === null);
            compare(world.todos(""), ["ab (todo)"]);
            verify(field(column("First")).activeFocus);
            world.board.todos.cancelEditor();
        }
        function test_the_place_behind_the_last_row_has_no_height_in_a_card_that_ends_before_it() {
            const list = only(all(column("First"), item => item instanceof TodoList));
            const end = only(all(list, item => item instanceof TodoEndDropArea));
            const room = list.roomBelow;
            list.roomBelow = -1000;
            compare(end.height, 0);
            list.roomBelow = room;
        }
        function test_a_field_that_is_left_for_another_goals_field_leaves_that_open() {
            requestField("First");
            // A click does so before the first field closes.
            field(column("First")).focus = false;
            world.board.todos.requestEditor(world.columnOfGoal("Second"));
            wait(100);
            verify(field(column("Second")).activeFocus);
            compare(field(column("First")), null);
            world.board.todos.cancelEditor();
        }
        function test_a_request_for_the_editor_moves_it_and_focuses_it() {
            requestField("First");
            requestField("Second");
            compare(field(column("First")), null);
            button(unified(), "lightbulb-plus").forceActiveFocus();
            world.board.todos.requestEditor(world.columnOfGoal("Second"));
            tryVerify(() => field(column("Second")).activeFocus);
        }
        function test_the_cancel_button_closes_the_field() {
            const first = column("First");
            mouseClick(button(first, "lightbulb-plus"));
            tryVerify(() => field(first) !== null);
            mouseClick(button(first, "x"));
            tryVerify(() => field(first) === null);
        }
        function test_unassigned_todos_are_added_in_two_columns() {
            for (const place of [column("Unsorted"), unified()]) {
                openField(place);
                type("x");
                keyClick(Qt.Key_Return);
                keyClick(Qt.Key_Escape);
                tryVerify(() => field(place) === null);
            }
            compare(world.todos(""), ["x (todo)", "x (todo)"]);
        }
    }
}
