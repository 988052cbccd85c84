import QtQuick
import QtTest
import Kelpa.Appearance
import Kelpa.Controls
import Kelpa.Goals
import Kelpa.Todos
import Kelpa.Windows
import Kelpa.Board
import "../cases"

Item {
    id: root

    width: 1000
    height: 700

    BoardHeader {
        id: header

        width: parent.width
        height: 200
        board: world.board
    }
    GoalBoard {
        id: board

        anchors.fill: parent
        anchors.topMargin: 200
        board: world.board
    }

    BoardCase {
        name: "BoardHeader"
        goalBoard: board

        function search() {
            return only(all(header, item => item instanceof SearchField));
        }
        function button(symbol) {
            return only(all(header, item => item instanceof AppButton && item.symbol === symbol));
        }
        function placesOfControls() {
            return all(header, item => item instanceof PressButton && item.visible)
                .map(item => item.mapToItem(header, 0, 0).x);
        }
        function eachLanguage(check) {
            const before = world.board.languageIndex;
            for (let language = 0; language < world.board.languageNames.length; ++language) {
                world.board.setLanguageIndex(language);
                waitForRendering(header);
                check(world.board.languageNames[language]);
            }
            world.board.setLanguageIndex(before);
        }
        function cleanup() {
            header.width = 1000;
        }

        function test_no_control_moves_when_the_goals_are_filtered() {
            eachLanguage(language => {
                const before = placesOfControls();
                verify(before.length >= 5);
                world.board.toggleHidingGoalsWithoutOpenTodos();
                waitForRendering(header);
                const after = placesOfControls();
                world.board.toggleHidingGoalsWithoutOpenTodos();
                compare([language, ...after], [language, ...before]);
            });
        }
        /// Of the buttons for the order of the goals and for which of them show.
        function stateSymbols() {
            return all(header, item => item instanceof PressButton)
                .sort((a, b) => a.mapToItem(header, 0, 0).x - b.mapToItem(header, 0, 0).x)
                .map(item => item.symbol).filter(symbol => symbol.includes("-circle"));
        }
        function test_what_is_switched_on_is_told_by_the_form_of_its_symbol() {
            compare(stateSymbols(), ["arrow-up-down-circle", "list-filter-circle"]);
            mouseClick(only(all(header, item => item.symbol === "arrow-up-down-circle"
                                                && item instanceof IconButton)));
            compare(stateSymbols(), ["arrow-up-down-circle-filled", "list-filter-circle"]);
            mouseClick(button("list-filter-circle"));
            compare(stateSymbols(), ["arrow-up-down-circle-filled", "list-filter-circle-filled"]);
            world.board.toggleAutoSortingGoals();
            compare(stateSymbols(), ["arrow-up-down-circle", "list-filter-circle-filled"]);
            world.board.toggleHidingGoalsWithoutOpenTodos();
            compare(stateSymbols(), ["arrow-up-down-circle", "list-filter-circle"]);
        }
        function test_in_a_window_of_900_points_every_button_shows_its_text() {
            header.width = 900;
            eachLanguage(language => {
                compare([language, button("globe").isCompact, button("list-filter-circle").isCompact],
                        [language, false, false]);
            });
        }
        function test_on_a_small_screen_all_controls_are_there_and_some_show_their_symbol_alone() {
            header.width = 640;
            eachLanguage(language => {
                verify(button("globe").isCompact);
                compare(button("globe").width, 32);
                verify(search().width >= 150, language);
                const last = button("plus");
                const end = last.mapToItem(header, last.width, 0).x;
                verify(end <= 640 - Theme.boardMargin + 0.5, language + ": " + end);
                verify(last.width >= last.implicitWidth, language);
            });
        }
        function test_the_button_for_a_new_look_at_the_windows_shows_one_that_nobody_told_of() {
            const cards = () => all(board, item => item instanceof WindowCard && item.visible
                                                   && item.title === "Letter").length;
            world.openWindow(31, "Letter");
            waitForRendering(board);
            compare(cards(), 0);
            mouseClick(only(all(header, item => item instanceof IconButton
                                                && item.symbol === "rotate-cw")));
            tryVerify(() => cards() === 1);
            world.removeWindow(31);
        }
        function statusTexts() {
            return all(header, item => item instanceof SearchStatus && item.visible)
                .map(status => all(status, item => item instanceof Text && item.visible)
                     .map(item => item.text))[0] ?? [];
        }
        function test_what_is_found_and_what_is_hidden_is_counted_and_one_step_away() {
            compare(statusTexts(), []);
            world.board.goals.createGoal("Garden");
            world.board.goals.createGoal("Taxes");
            world.addTodo("Ask", "Garden");
            world.addWindow(31, "Letter");
            world.board.windows.moveWindow(31, world.columnOfGoal("Taxes"));
            const places = placesOfControls();
            world.board.toggleHidingGoalsWithoutOpenTodos();
            compare(statusTexts(), ["Hidden goals: 1, with windows: 1"]);
            world.board.search.text = "letter";
            compare(statusTexts(), ["Found: windows 0, goals 0, todos 0", "1 more in hidden goals"]);
            waitForRendering(header);
            // The button that clears the search comes within its field.
            const now = placesOfControls();
            verify(places.every(place => now.includes(place)), now);
            const step = only(all(header, item => item instanceof LinkButton));
            mouseClick(step);
            compare(statusTexts(), ["Found: windows 1, goals 0, todos 0"]);
            compare(world.selectedGoal(), "Taxes");
            verify(!world.board.isHidingGoalsWithoutOpenTodos);
            world.board.search.text = "";
            compare(statusTexts(), []);
            world.removeWindow(31);
            for (const title of ["Garden", "Taxes"])
                world.board.goals.deleteGoal(world.columnOfGoal(title));
        }
        function test_what_a_search_finds_is_marked_and_the_rest_steps_back() {
            world.board.goals.createGoal("Garden");
            world.board.goals.createGoal("Taxes");
            world.addTodo("Ask", "Taxes");
            world.addTodo("Garden gate", "Taxes");
            const head = title => only(all(column(title), item => item instanceof ColumnHeader));
            const row = title => only(all(column("Taxes"), item => item instanceof TodoRow
                                                                   && item.title === title));
            tryVerify(() => !isMoving() && row("Ask") !== null);
            const rest = [head("Garden").opacity, head("Taxes").opacity, row("Ask").opacity];
            compare(rest, [1, 1, 1]);
            world.board.search.text = "garden";
            compare([head("Garden").opacity, head("Garden").isTitleFound], [1, true]);
            compare([head("Taxes").opacity, head("Taxes").isTitleFound], [1, false]);
            compare([head("Unsorted").opacity, row("Ask").opacity, row("Garden gate").opacity],
                    [Theme.recedingOpacity, Theme.recedingOpacity, 1]);
            verify(row("Garden gate").isFound);
            world.board.search.text = "";
            compare([head("Unsorted").opacity, row("Ask").opacity], [1, 1]);
            for (const title of ["Garden", "Taxes"])
                world.board.goals.deleteGoal(world.columnOfGoal(title));
        }
        function test_escape_clears_the_search_and_then_gives_the_keyboard_back() {
            mouseClick(search());
            verify(search().activeFocus);
            type("ab");
            keyClick(Qt.Key_Escape);
            compare(world.board.search.text, "");
            verify(search().activeFocus);
            keyClick(Qt.Key_Escape);
            verify(!search().activeFocus);
            verify(!all(header, item => item.visualFocus).length);
        }
    }
}
