import QtQuick
import QtTest
import Kelpa.Board
import Kelpa.Todos
import "../cases"

/// Several lines that are pasted into a field for a new todo.
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
        name: "PastedLines"
        goalBoard: board

        readonly property string lines: "- [ ] one\n* two\n\n3. three"

        function pasted(place, text) {
            mouseClick(button(place, "lightbulb-plus"));
            tryVerify(() => field(place) !== null && field(place).activeFocus);
            world.offerText(text);
            keyClick(Qt.Key_V, Qt.ControlModifier);
            return field(place);
        }
        function offer(place) {
            return only(all(place, item => item instanceof TodoOffer));
        }
        function offerText(place) {
            return offer(place)?.Accessible.name ?? "";
        }
        function list(place) {
            return only(all(place, item => item instanceof TodoList));
        }

        function test_the_key_makes_a_todo_of_each_line_in_one_step() {
            for (const place of [column("First"), unified()]) {
                const goal = place === unified() ? "" : "First";
                const field = pasted(place, lines);
                compare(field.text, lines);
                tryCompare(offer(place), "visible", true);
                compare(offerText(place), "Make 3 todos Ctrl+Return");
                keyClick(Qt.Key_Return, Qt.ControlModifier);
                compare(world.todos(goal), ["one (todo)", "two (todo)", "three (todo)"]);
                compare(field.text, "");
                verify(field.activeFocus);
                compare(offer(place), null);
                keyClick(Qt.Key_Escape);
                tryVerify(() => this.field(place) === null);
                world.board.undo();
                compare(world.todos(goal), []);
            }
        }
        function test_a_click_does_the_same_and_the_field_goes_on() {
            const first = column("First");
            pasted(first, lines);
            tryVerify(() => offer(first) !== null);
            // The offer has room within the card.
            compare(list(first).editorHeight, 34 + offer(first).height);
            mouseClick(offer(first), 20, offer(first).height / 2);
            compare(world.todos("First"), ["one (todo)", "two (todo)", "three (todo)"]);
            verify(field(first).activeFocus);
            compare(list(first).editorHeight, 34);
            type("x");
            keyClick(Qt.Key_Return);
            compare(world.todos("First").length, 4);
        }
        function test_return_keeps_the_lines_as_one_text() {
            pasted(column("First"), lines);
            keyClick(Qt.Key_Return);
            compare(world.todos("First"), [lines + " (todo)"]);
        }
        function test_escape_declines_the_offer_and_keeps_the_text() {
            const first = column("First");
            const field = pasted(first, lines);
            keyClick(Qt.Key_Escape);
            compare(offer(first), null);
            compare(field.text, lines);
            verify(field.activeFocus);
            // There is no offer that the key could take.
            keyClick(Qt.Key_Return, Qt.ControlModifier);
            compare(world.todos("First"), [lines + " (todo)"]);
            keyClick(Qt.Key_Escape);
            tryVerify(() => this.field(first) === null);
        }
        function test_going_on_typing_declines_it_too() {
            const first = column("First");
            const field = pasted(first, lines);
            verify(offer(first) !== null);
            type("x");
            compare(offer(first), null);
            compare(field.text, lines + "x");
        }
        function test_the_cross_closes_the_field_with_its_offer() {
            const first = column("First");
            pasted(first, lines);
            mouseClick(button(first, "x"));
            tryVerify(() => field(first) === null);
            compare(world.todos("First"), []);
        }
        function test_a_single_line_is_no_list() {
            const first = column("First");
            compare(pasted(first, "- one\n").text, "- one\n");
            compare(offer(first), null);
        }
        function test_a_draft_that_was_kept_is_one_text() {
            const first = column("First");
            pasted(first, lines);
            world.board.todos.leaveEditor();
            tryVerify(() => field(first) === null);
            mouseClick(button(first, "lightbulb-plus"));
            tryVerify(() => field(first) !== null);
            compare(field(first).text, lines);
            compare(offer(first), null);
        }
        function test_the_limit_of_a_field_is_that_of_a_list() {
            const first = column("First");
            const field = pasted(first, "line\n".repeat(20000));
            compare(field.text, "");
            compare(offer(first), null);
            verify(field.notice.length > 0);
        }
    }
}
