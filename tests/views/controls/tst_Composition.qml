import QtQuick
import QtTest
import Kelpa.Controls
import Kelpa.Goals
import Kelpa.Todos
import Kelpa.Windows
import Kelpa.Board
import "../cases"

/// What an input method composes, in every kind of field.
Item {
    id: root

    width: 1300
    height: 700

    GoalBoard {
        id: board

        anchors.fill: parent
        board: world.board
    }
    Connections {
        target: world.board.goals

        function onRenameRequested(columnID: string): void {
            sheet.ask(world.board.goals.goalTitle(columnID));
        }
    }
    SearchField {
        id: search

        label: "Search"
        clearLabel: "Clear"
    }
    TitleSheet {
        id: sheet

        goals: world.board.goals
        title: "Create a goal"
        explanation: ""
        placeholder: ""
        fieldLabel: "Name"
        confirmLabel: "Create"
    }
    WindowSelectionSheet {
        id: picker

        windows: world.board.windows
    }
    SignalSpy {
        id: committed

        signalName: "committed"
    }
    SignalSpy {
        id: cancelled

        signalName: "cancelled"
    }

    TodoCase {
        name: "Composition"
        goalBoard: board

        function focusedField() {
            const item = root.Window.activeFocusItem;
            return item instanceof TextInputField ? item : null;
        }
        /// Opens a field and returns it once it has the keyboard.
        function opened(open) {
            open();
            tryVerify(() => focusedField() !== null);
            committed.target = focusedField();
            cancelled.target = focusedField();
            committed.clear();
            cancelled.clear();
            return focusedField();
        }
        function cleanup() {
            sheet.close();
            world.board.windows.picker.close();
            tryVerify(() => !sheet.visible && !picker.visible);
            board.forceActiveFocus();
            world.board.todos.cancelEditor();
            world.board.todos.setDraft(world.columnOfGoal("First"), "");
            world.removeTodos();
            tryVerify(() => all(board, item => item instanceof TodoField).length === 0);
        }
        function fields() {
            return [
                {tag: "search", open: () => search.forceActiveFocus()},
                {tag: "title of a goal", open: () => sheet.ask("")},
                {tag: "search of the sheet",
                 open: () => world.board.goals.requestWindows(world.columnOfGoal("First"))},
                {tag: "new todo",
                 open: () => world.board.todos.requestEditor(world.columnOfGoal("First"))},
                {tag: "title of a todo", open: () => {
                    show(column("First"), "First", ["Read"]);
                    content(column("First"), "Read").forceActiveFocus(Qt.TabFocusReason);
                    keyClick(Qt.Key_F2);
                }}
            ];
        }

        function test_return_within_a_composition_commits_nothing_data() {
            return fields();
        }
        function test_return_within_a_composition_commits_nothing(data) {
            const field = opened(data.open);
            world.compose("にほん");
            keyClick(Qt.Key_Return);
            keyClick(Qt.Key_Enter);
            compare(committed.count, 0);
            verify(field.activeFocus);
            compare(field.preeditText, "にほん");
        }
        function test_return_that_comes_with_the_end_of_a_composition_commits_nothing_data() {
            return fields();
        }
        function test_return_that_comes_with_the_end_of_a_composition_commits_nothing(data) {
            const field = opened(data.open);
            field.clear();
            world.compose("한");
            world.finishComposing("한");
            keyClick(Qt.Key_Return);
            compare(committed.count, 0);
            compare(field.text, "한");
            verify(field.activeFocus);
        }
        function test_return_after_a_composition_commits_data() {
            return fields();
        }
        function test_return_after_a_composition_commits(data) {
            const field = opened(data.open);
            world.compose("本");
            world.finishComposing("本");
            // As a person who has read what was written.
            tryVerify(() => {
                keyClick(Qt.Key_Return);
                return committed.count > 0;
            });
        }
        function test_escape_within_a_composition_ends_it_alone_data() {
            return fields();
        }
        function test_escape_within_a_composition_ends_it_alone(data) {
            const field = opened(data.open);
            field.text = "ab";
            world.compose("にほん");
            keyClick(Qt.Key_Escape);
            compare(field.preeditText, "");
            compare(field.text, "ab");
            compare(cancelled.count, 0);
            verify(field.activeFocus);
            tryVerify(() => {
                keyClick(Qt.Key_Escape);
                return cancelled.count > 0;
            });
        }

        function test_where_nothing_is_left_of_a_composition_the_keys_are_the_fields_data() {
            return fields();
        }
        function test_where_nothing_is_left_of_a_composition_the_keys_are_the_fields(data) {
            const field = opened(data.open);
            world.compose("にほん");
            world.composeNothing();
            compare(field.preeditText, "");
            tryVerify(() => {
                keyClick(Qt.Key_Return);
                return committed.count > 0;
            });
            keyClick(Qt.Key_Escape);
            compare(cancelled.count, 1);
        }
        function test_what_the_end_of_the_program_leaves_composed_is_kept() {
            const field = opened(fields()[3].open);
            field.text = "ab";
            field.cursorPosition = 1;
            world.compose("글");
            world.finishWriting();
            compare(world.todos("First"), ["a글b (todo)"]);
        }
        function test_what_the_end_of_the_program_leaves_composed_in_a_title_is_kept() {
            const field = opened(fields()[4].open);
            field.text = "ab";
            world.compose("글");
            world.finishWriting();
            compare(world.todos("First"), ["ab글 (todo)"]);
            compare(field.preeditText, "");
        }
        /// An input method that is asked to forget what was composed writes it once more.
        function test_what_was_kept_is_not_written_again_in_the_next_field() {
            opened(fields()[3].open);
            world.compose("글");
            // As the toolkit does before another field gets the keyboard.
            world.finishComposing("글");
            search.clear();
            search.forceActiveFocus();
            world.finishComposing("글");
            compare(search.text, "");
            // But whatever comes then is written.
            world.finishComposing("글");
            compare(search.text, "글");
            search.clear();
        }
        function test_what_was_kept_by_a_click_is_not_written_again_in_the_same_field() {
            const field = opened(fields()[3].open);
            field.clear();
            world.compose("글");
            mouseClick(field, field.width - 10, field.height / 2);
            if (field.preeditText.length > 0)
                world.finishComposing("글");
            world.finishComposing("글");
            compare(field.text, "글");
        }
        function test_what_was_given_up_is_not_written_again_data() {
            return [
                {tag: "by Escape", give: () => keyClick(Qt.Key_Escape)},
                {tag: "by the button", give: () => {
                    mouseClick(all(search, item => item instanceof IconButton && item.visible)[0]);
                }}
            ];
        }
        function test_what_was_given_up_is_not_written_again(data) {
            const field = opened(() => search.forceActiveFocus());
            field.text = "ab";
            world.compose("글");
            data.give();
            compare(field.preeditText, "");
            const left = field.text;
            world.finishComposing("글");
            compare(field.text, left);
            field.clear();
        }
        function test_what_is_written_twice_is_there_twice() {
            const field = opened(() => search.forceActiveFocus());
            field.clear();
            for (let i = 0; i < 2; ++i) {
                world.compose("하");
                world.finishComposing("하");
            }
            compare(field.text, "하하");
            // By its own will.
            wait(0);
            // One that composes nothing first, in the next field.
            const next = opened(fields()[3].open);
            next.clear();
            world.finishComposing("하");
            compare(next.text, "하");
            search.clear();
        }
    }
}
