import QtQuick
import QtTest
import Kelpa.Controls
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

    Component {
        id: lineText

        AppText {
            text: "A\nB\nC"
        }
    }

    TodoCase {
        name: "TodoEditing"
        goalBoard: board

        function edit(place, title) {
            mouseClick(row(place, title), 60, 17);
            tryVerify(() => field(place) !== null && field(place).activeFocus);
        }

        function test_a_click_on_the_title_edits_it_in_place() {
            const first = column("First");
            show(first, "First", ["Read"]);
            edit(first, "Read");
            compare(field(first).text, "Read");
            compare(field(first).Accessible.name, "Edit todo");
            type("abc");
            keyClick(Qt.Key_Return);
            compare(world.todos("First"), ["abc (todo)"]);
            tryVerify(() => field(first) === null);
            verify(!hasKeyboard());
            // Keys belong to the board again, not to the row.
            keyClick(Qt.Key_Return);
            compare(field(first), null);
        }
        function test_a_title_of_several_lines_is_one_line_that_keeps_its_breaks() {
            const first = column("First");
            world.addTodo("Buy\nmilk\u2028and\ttea", "First");
            tryVerify(() => row(first, "Buy milk and tea") !== null);
            const shown = row(first, "Buy milk and tea");
            compare(content(first, "Buy milk and tea").Accessible.name, "Buy milk and tea");
            const lines = all(shown, item => item instanceof AppText && item.visible);
            for (const text of lines)
                compare(text.lineCount, 1);
            mouseClick(shown, 60, 17);
            tryVerify(() => field(first) !== null && field(first).activeFocus);
            compare(field(first).text, "Buy\nmilk\u2028and\ttea");
            keyClick(Qt.Key_End);
            type("s");
            keyClick(Qt.Key_Return);
            compare(world.todos("First"), ["Buy\nmilk\u2028and\tteas (todo)"]);
            // Also where a text does not come from the models.
            const other = createTemporaryObject(lineText, root);
            compare(other.lineCount, 1);
            compare(other.height, createTemporaryObject(lineText, root, {text: "A"}).height);
        }
        /// Far more than the list goes through one by one when every other one goes.
        function showMany(place) {
            const titles = Array.from({length: 1500}, (_, i) => "Todo " + i);
            world.board.todos.addLines(titles.join("\n"), place.columnID);
            tryVerify(() => row(place, "Todo 0") !== null);
        }
        /// What is left is removed one by one.
        function leaveFew() {
            while (world.todos("First").length > 20)
                world.removeEveryOtherTodo();
        }
        function test_a_title_is_edited_on_when_half_of_a_long_list_goes() {
            const first = column("First");
            showMany(first);
            edit(first, "Todo 0");
            type("abc");
            const edited = field(first);
            world.removeEveryOtherTodo();
            tryVerify(() => row(first, "Todo 2") !== null && row(first, "Todo 1") === null);
            compare(field(first), edited);
            verify(edited.activeFocus);
            compare(edited.text, "abc");
            keyClick(Qt.Key_Return);
            compare(world.todos("First")[0], "abc (todo)");
            leaveFew();
        }
        function test_a_row_keeps_the_keyboard_when_half_of_a_long_list_goes() {
            const first = column("First");
            showMany(first);
            content(first, "Todo 0").forceActiveFocus(Qt.TabFocusReason);
            const focused = content(first, "Todo 0");
            world.removeEveryOtherTodo();
            tryVerify(() => row(first, "Todo 2") !== null && row(first, "Todo 1") === null);
            compare(content(first, "Todo 0"), focused);
            verify(focused.activeFocus);
            leaveFew();
        }
        function test_a_blank_title_keeps_the_editor_and_the_todo() {
            const first = column("First");
            show(first, "First", ["Read"]);
            content(first, "Read").forceActiveFocus();
            keyClick(Qt.Key_F2);
            tryVerify(() => field(first) !== null && field(first).activeFocus);
            keyClick(Qt.Key_Space);
            keyClick(Qt.Key_Return);
            verify(field(first) !== null);
            compare(world.todos("First"), ["Read (todo)"]);
            keyClick(Qt.Key_Escape);
            tryVerify(() => field(first) === null);
            compare(world.todos("First"), ["Read (todo)"]);
            verify(content(first, "Read").activeFocus);
        }
        function test_return_that_ends_a_composition_does_not_commit() {
            const first = column("First");
            show(first, "First", ["Read"]);
            edit(first, "Read");
            world.compose("にほん");
            keyClick(Qt.Key_Return);
            verify(field(first) !== null);
            compare(world.todos("First"), ["Read (todo)"]);
            world.compose("");
            keyClick(Qt.Key_Escape);
        }
        function test_escape_during_a_composition_does_not_leave_the_field() {
            const first = column("First");
            show(first, "First", ["Read"]);
            edit(first, "Read");
            world.compose("にほん");
            keyClick(Qt.Key_Escape);
            verify(field(first).activeFocus);
            world.compose("");
            // An Escape that comes with the end of the composition belongs to the input method.
            tryVerify(() => {
                keyClick(Qt.Key_Escape);
                return field(first) === null;
            });
        }
        function test_a_field_that_loses_the_focus_closes_and_keeps_what_is_not_blank_data() {
            const toNothing = place => field(place).focus = false;
            const toButton = place => button(row(place, "Write"), "circle")
                .forceActiveFocus(Qt.TabFocusReason);
            const toRow = place => content(place, "Write").forceActiveFocus();
            return [{tag: "typed, to a button", typed: "abc", title: "abc", leave: toButton,
                     isToNothing: false},
                    // As after a click beside all buttons.
                    {tag: "typed, to nothing", typed: "def", title: "def", leave: toNothing,
                     isToNothing: true},
                    {tag: "blank, to nothing", typed: " ", title: "Read", leave: toNothing,
                     isToNothing: true},
                    {tag: "not typed, to a row", typed: "", title: "Read", leave: toRow,
                     isToNothing: false}];
        }
        function test_a_field_that_loses_the_focus_closes_and_keeps_what_is_not_blank(data) {
            const first = column("First");
            show(first, "First", ["Read", "Write"]);
            edit(first, "Read");
            type(data.typed);
            data.leave(first);
            tryVerify(() => field(first) === null);
            compare(world.todos("First"), [data.title + " (todo)", "Write (todo)"]);
            if (data.isToNothing)
                verify(!hasKeyboard());
        }
        function test_a_field_shows_an_undone_title_until_somebody_types() {
            const first = column("First");
            show(first, "First", ["Read"]);
            world.board.todos.rename(world.todoID("Read", "First"), first.columnID, "Write");
            tryVerify(() => row(first, "Write") !== null);
            edit(first, "Write");
            world.board.undo();
            compare(field(first).text, "Read");
            field(first).focus = false;
            tryVerify(() => field(first) === null);
            compare(world.todos("First"), ["Read (todo)"]);
            // Typed text stays, and is committed.
            edit(first, "Read");
            type("abc");
            world.board.todos.rename(world.todoID("Read", "First"), first.columnID, "Other");
            compare(field(first).text, "abc");
            field(first).focus = false;
            tryVerify(() => field(first) === null);
            compare(world.todos("First"), ["abc (todo)"]);
        }
        function test_a_title_is_aligned_left_also_while_it_is_edited() {
            const title = "\u0634\u0631\u0627\u0621 \u0627\u0644\u062d\u0644\u064a\u0628";
            const first = column("First");
            show(first, "First", [title]);
            const text = all(row(first, title), item => item instanceof AppText
                                                        && item.text === title)[0];
            compare(text.effectiveHorizontalAlignment, Text.AlignLeft);
            mouseClick(row(first, title), 60, 17);
            tryVerify(() => field(first) !== null);
            compare(field(first).effectiveHorizontalAlignment, TextInput.AlignLeft);
            keyClick(Qt.Key_Escape);
        }
        function test_a_title_keeps_its_length_when_it_is_edited() {
            const first = column("First");
            const title = "x".repeat(40000);
            const shown = "x".repeat(1000) + "\u2026";
            world.addTodo(title, "First");
            tryVerify(() => row(first, shown) !== null);
            edit(first, shown);
            compare(field(first).length, 40000);
            keyClick(Qt.Key_End);
            type("y");
            keyClick(Qt.Key_Return);
            tryVerify(() => field(first) === null);
            compare(world.todos("First")[0].length, 40001 + " (todo)".length);
        }
        function test_the_cancel_button_of_an_edit_discards_it() {
            const first = column("First");
            show(first, "First", ["Read"]);
            edit(first, "Read");
            type("abc");
            // The window does so at every press beside the field.
            const cancel = button(first, "x");
            mousePress(cancel);
            field(first).focus = false;
            mouseRelease(cancel);
            tryVerify(() => field(first) === null);
            compare(world.todos("First"), ["Read (todo)"]);
        }
    }
}
