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
    SignalSpy {
        id: renaming

        target: board
        signalName: "renameRequested"
    }

    WindowCase {
        name: "GoalBoard"
        goalBoard: board

        function test_columns_are_lists_named_by_their_title() {
            tryVerify(() => columns().length === 2);
            compare(columns()[0].Accessible.name, "Unsorted");
            compare(columns()[0].Accessible.role, Accessible.List);
            compare(columns()[1].Accessible.name, "First");
        }
        function test_scrolling_pauses_the_previews() {
            world.rest();
            world.capture();
            const before = world.captureCount();
            verify(before > 0);
            const view = all(board, item => item instanceof Flickable
                                    && item.Accessible.role === Accessible.Pane)[0];
            view.contentY += 1;
            world.capture();
            compare(world.captureCount(), before);
            world.rest();
            world.capture();
            compare(world.captureCount(), before + 1);
            view.contentY -= 1;
            world.rest();
        }
        function test_the_menu_of_a_goal_opens_and_shows_windows() {
            tryVerify(() => columns().length === 2);
            const button = all(columns()[1], item => item instanceof IconButton
                                                      && item.symbol === "ellipsis")[0];
            const choose = place => {
                mouseClick(button);
                for (let i = 0; i < place; ++i)
                    keyClick(Qt.Key_Down);
                keyClick(Qt.Key_Return);
                world.runPending();
            };
            choose(2);
            tryVerify(() => world.calls().includes("launch chrome"));
            choose(3);
            tryVerify(() => world.calls().includes("launch terminal"));
        }
        function test_the_menu_of_a_goal_renames_it() {
            tryVerify(() => columns().length === 2);
            const button = all(columns()[1], item => item instanceof IconButton
                                                      && item.symbol === "ellipsis")[0];
            renaming.clear();
            mouseClick(button);
            // Past what opens and shows windows.
            for (let i = 0; i < 5; ++i)
                keyClick(Qt.Key_Down);
            keyClick(Qt.Key_Return);
            tryCompare(renaming, "count", 1);
            compare(renaming.signalArguments[0][1], "First");
        }
        function test_the_menu_of_a_goal_moves_it() {
            world.board.createGoal("Second");
            tryVerify(() => columns().length === 3);
            const button = all(columns().find(column => column.title === "First"),
                               item => item instanceof IconButton
                                       && item.symbol === "ellipsis")[0];
            mouseClick(button);
            tryVerify(() => menuItems().length === 8);
            verify(!menuItems().find(item => item.text === "Move goal earlier").enabled);
            chooseAndClose("Move goal later");
            compare(world.goalTitles(), ["Second", "First"]);
            world.board.deleteGoal(world.columnOfGoal("Second"));
            tryVerify(() => columns().length === 2);
        }
        function test_the_badge_of_a_goal_adds_windows_to_it() {
            tryVerify(() => columns().length === 2);
            const first = columns().find(column => column.title === "First");
            const badge = all(first, item => item instanceof CountButton)[0];
            compare(badge.Accessible.name, "Add windows to this goal");
            mouseClick(badge);
            tryVerify(() => world.board.windowPicker.isOpen);
            compare(world.board.windowPicker.goalTitle, "First");
            world.board.windowPicker.close();
        }
        function test_a_click_beside_all_cards_selects_nothing() {
            tryVerify(() => columns().length === 2);
            world.board.todos.goToColumn(world.columnOfGoal("First"));
            compare(world.selectedGoal(), "First");
            const view = all(board, item => item instanceof Flickable
                                    && item.Accessible.role === Accessible.Pane)[0];
            mouseClick(view, 5, 300);
            compare(world.board.selectedTarget, -1);
            const first = columns().find(column => column.title === "First");
            tryVerify(() => !first.isExpanded);
        }
        function test_a_search_says_that_no_window_matches_and_not_that_there_is_none() {
            tryVerify(() => columns().length === 2);
            const texts = () => all(columns()[1], item => item instanceof AppText && item.visible)
                .map(item => item.text);
            verify(texts().includes("Drag a window here"));
            world.board.searchText = "Nothing has this name";
            verify(texts().includes("No matching windows"));
            verify(!texts().includes("Drag a window here"));
            world.board.searchText = "";
            verify(texts().includes("Drag a window here"));
            tryVerify(() => card("Letter") !== null);
        }
        function test_goals_that_are_all_hidden_are_not_forgotten() {
            tryVerify(() => columns().length === 2);
            const adding = all(board, item => item instanceof AddGoalCard)[0];
            const hint = "Goals without unfinished todos are hidden."
                       + " Choose “Show All” to see them.";
            const shows = () => all(adding, item => item instanceof AppText && item.visible
                                                    && item.text === hint).length === 1;
            verify(!shows());
            world.board.toggleHidingGoalsWithoutOpenTodos();
            verify(shows());
            compare(adding.Accessible.description, hint);
            world.board.toggleHidingGoalsWithoutOpenTodos();
            verify(!shows());
            tryVerify(() => columns().length === 2);
        }
    }
}
