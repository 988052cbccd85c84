import QtQuick
import QtTest
import Kelpa.Controls
import Kelpa.Board
import Kelpa.Todos
import Kelpa.Windows
import "../cases"

/// Titles that are much longer than what can be seen of them.
Item {
    id: root

    width: 1300
    height: 700

    GoalBoard {
        id: board

        anchors.fill: parent
        board: world.board
    }
    Item {
        id: elsewhere
    }
    WindowSelectionSheet {
        id: picker

        windows: world.board.windows
    }

    TodoCase {
        name: "LongTexts"
        goalBoard: board

        readonly property string longTitle: "Start " + "x".repeat(1000000)
        readonly property string notice: "The title has 1000006 characters, too many to be edited "
                                         + "here. It stays as it is until another one is entered."
        /// More than a line, and a name with its window's application.
        readonly property int longestLine: 1100

        function initTestCase() {
            world.board.goals.createGoal("First");
            world.board.goals.createGoal(longTitle);
            tryVerify(() => longGoal() !== undefined);
            world.addWindow(1, longTitle);
            world.addWindow(2, "Report");
            world.board.windows.moveWindow(2, world.columnOfGoal(longTitle));
        }
        function longGoal() {
            return all(board, item => item instanceof GoalColumn && item.title.length > 900)[0];
        }
        function longRow(place) {
            return all(place, item => item instanceof TodoRow && item.title.length > 900)[0];
        }
        /// All texts that are laid out or told to assistive programs.
        function lengths() {
            let found = [];
            for (const item of all(root.Window.contentItem, () => true)) {
                for (const text of [item.text, item.title, item.Accessible.name,
                                    item.Accessible.description])
                    if (typeof text === "string")
                        found.push(text.length);
            }
            return found;
        }
        function isShort() {
            const longest = Math.max(...lengths());
            return longest > 900 && longest <= longestLine;
        }
        function edit(place) {
            longRow(place).edit(true);
            tryVerify(() => field(place) !== null && field(place).activeFocus);
            return field(place);
        }

        function test_only_the_beginning_is_laid_out_and_told() {
            world.addTodo(longTitle, "First");
            tryVerify(() => longRow(column("First")) !== undefined
                            && longRow(unified()) !== undefined);
            verify(longRow(unified()).title.startsWith("Start xx"));
            verify(longRow(unified()).title.endsWith("\u2026"));
            verify(isShort());
            // With the menus and sheets that name a goal.
            longRow(column("First")).menuRequested(longRow(column("First")), Qt.rect(20, 20, 0, 0));
            choose("Move to goal");
            tryVerify(() => menuItems().some(item => item.text.length > 900));
            verify(isShort());
            keyClick(Qt.Key_Escape);
            keyClick(Qt.Key_Escape);
            world.board.goals.requestWindows(world.columnOfGoal("First"));
            tryVerify(() => picker.opened);
            verify(isShort());
            world.board.windows.picker.close();
            world.board.goals.requestWindows(world.columnOfGoal(longTitle));
            tryVerify(() => picker.opened);
            verify(isShort());
            world.board.windows.picker.close();
            tryVerify(() => !picker.visible);
        }
        function test_the_whole_title_is_copied() {
            world.addTodo(longTitle, "First");
            tryVerify(() => longRow(column("First")) !== undefined);
            mouseClick(button(longRow(column("First")), "menu"));
            verify(world.clipboard() === longTitle);
        }
        function test_a_title_that_no_field_takes_is_kept_until_another_one_is_written() {
            const first = column("First");
            world.addTodo(longTitle, "First");
            tryVerify(() => longRow(first) !== undefined);
            let editor = edit(first);
            compare(editor.text, "");
            compare(editor.notice, notice);
            keyClick(Qt.Key_Return);
            verify(editor.activeFocus);
            keyClick(Qt.Key_Escape);
            tryVerify(() => field(first) === null);
            verify(world.todos("First")[0] === longTitle + " (todo)");

            // Nor is it lost by going elsewhere.
            edit(first);
            elsewhere.forceActiveFocus();
            tryVerify(() => field(first) === null);
            verify(world.todos("First")[0] === longTitle + " (todo)");

            editor = edit(first);
            type("ab");
            compare(editor.notice, "");
            keyClick(Qt.Key_Return);
            compare(world.todos("First"), ["ab (todo)"]);
        }
        function test_the_longest_title_that_a_field_takes_is_edited() {
            const first = column("First");
            world.addTodo("x".repeat(50000), "First");
            tryVerify(() => longRow(first) !== undefined);
            const editor = edit(first);
            compare(editor.length, 50000);
            compare(editor.notice, "");
            keyClick(Qt.Key_End);
            keyClick(Qt.Key_Backspace);
            keyClick(Qt.Key_Return);
            verify(world.todos("First")[0] === "x".repeat(49999) + " (todo)");
        }
        function test_a_goals_title_that_no_field_takes_says_so() {
            const goal = world.columnOfGoal(longTitle);
            compare(world.board.goals.goalTitle(goal), "");
            compare(world.board.goals.goalTitleNotice(goal), notice);
            const other = world.columnOfGoal("First");
            compare(world.board.goals.goalTitle(other), "First");
            compare(world.board.goals.goalTitleNotice(other), "");
        }
    }
}
