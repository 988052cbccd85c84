import QtQuick
import QtTest
import Kelpa.Appearance
import Kelpa.Controls
import Kelpa.Goals
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
    SignalSpy {
        id: renaming

        target: world.board.goals
        signalName: "renameRequested"
    }

    SignalSpy {
        id: adding

        target: world.board
        signalName: "newGoalRequested"
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
            // The card takes the place of one that another test has deleted.
            tryVerify(() => !board.isMoving);
            const button = all(columns()[1], item => item instanceof IconButton
                                                      && item.symbol === "ellipsis")[0];
            const chooseIn = text => {
                mouseClick(button);
                chooseAndClose(text);
                world.runPending();
            };
            chooseIn("Open Chrome in this goal");
            tryVerify(() => world.calls().includes("launch chrome"));
            chooseIn("Open a Terminal in this goal");
            tryVerify(() => world.calls().includes("launch terminal"));
        }
        function test_the_menu_of_a_goal_renames_it() {
            tryVerify(() => columns().length === 2);
            // The card takes the place of one that another test has deleted.
            tryVerify(() => !board.isMoving);
            const button = all(columns()[1], item => item instanceof IconButton
                                                      && item.symbol === "ellipsis")[0];
            renaming.clear();
            mouseClick(button);
            tryVerify(() => menuItems().length === 12);
            compare(menuItems().slice(1, 6).map(item => item.text),
                    ["Open Chrome in this goal", "Open a Terminal in this goal",
                     "Show all windows in this goal", "Work on this goal", "Rename goal"]);
            chooseAndClose("Rename goal");
            tryCompare(renaming, "count", 1);
            compare(renaming.signalArguments[0][0], world.columnOfGoal("First"));
        }
        function test_the_menu_of_a_goal_moves_it() {
            world.board.goals.createGoal("Second");
            tryVerify(() => columns().length === 3);
            // The card makes room for the new one.
            tryVerify(() => !board.isMoving);
            const button = all(columns().find(column => column.title === "First"),
                               item => item instanceof IconButton
                                       && item.symbol === "ellipsis")[0];
            mouseClick(button);
            tryVerify(() => menuItems().length === 12);
            verify(!menuItems().find(item => item.text === "Move goal left").enabled);
            chooseAndClose("Move goal right");
            compare(world.goalTitles(), ["Second", "First"]);
            world.board.goals.deleteGoal(world.columnOfGoal("Second"));
            tryVerify(() => columns().length === 2);
        }
        function test_the_title_of_a_goal_has_most_of_its_header() {
            tryVerify(() => columns().length === 2);
            const first = columns().find(column => column.title === "First");
            const header = all(first, item => item instanceof ColumnHeader)[0];
            const title = all(header, item => item instanceof MarqueeGoalTitle)[0];
            verify(title.width >= 0.55 * header.width, title.width + " of " + header.width);
            // Whatever shows beside or below it stays beside or below it.
            for (const item of all(header, item => (item instanceof PressButton
                                                    || item instanceof CountBadge) && item.visible)) {
                const place = item.mapToItem(header, 0, 0);
                verify(place.y >= title.y + title.height || place.x >= title.x + title.width,
                       item.text);
                verify(place.y + item.height <= header.height + 0.5);
            }
            // The lists of all columns begin at one height.
            compare(header.y + header.height, Theme.columnListY);
        }
        function test_the_badge_of_a_goal_adds_windows_to_it() {
            tryVerify(() => columns().length === 2);
            const first = columns().find(column => column.title === "First");
            const badge = all(first, item => item instanceof CountButton)[0];
            compare(badge.Accessible.name, "Add windows to this goal");
            mouseClick(badge);
            tryVerify(() => world.board.windows.picker.isOpen);
            compare(world.board.windows.picker.goalTitle, "First");
            world.board.windows.picker.close();
        }
        function test_a_click_beside_all_cards_selects_nothing() {
            tryVerify(() => columns().length === 2);
            world.board.goals.goToColumn(world.columnOfGoal("First"));
            compare(world.selectedGoal(), "First");
            const view = all(board, item => item instanceof Flickable
                                    && item.Accessible.role === Accessible.Pane)[0];
            mouseClick(view, 5, 300);
            compare(world.board.selectedTarget, -1);
            const first = columns().find(column => column.title === "First");
            tryVerify(() => !first.isExpanded);
        }
        function test_a_search_says_of_a_goal_alone_whose_windows_it_hides_that_none_matches() {
            tryVerify(() => columns().length === 2);
            const texts = column => all(column, item => item instanceof AppText && item.visible)
                .map(item => item.text);
            verify(texts(columns()[1]).includes("Drag a window here"));
            world.board.search.text = "Nothing has this name";
            verify(texts(columns()[0]).includes("No matching windows"));
            // There is none to match.
            verify(texts(columns()[1]).includes("Drag a window here"));
            verify(!texts(columns()[1]).includes("No matching windows"));
            world.board.search.text = "";
            tryVerify(() => card("Letter") !== null);
        }
        function test_the_menu_of_the_board_makes_goals_and_takes_changes_back() {
            tryVerify(() => columns().length === 2);
            adding.clear();
            const item = text => menuItems().find(each => each.text === text);
            mouseClick(view(), 5, 300, Qt.RightButton);
            tryVerify(() => menuItems().length === 11);
            verify(item("Undo").enabled);
            verify(!item("Redo").enabled);
            chooseAndClose("New goal");
            compare(adding.count, 1);
            // By key while nothing is selected, and by assistive programs.
            world.board.goals.renameGoal(world.columnOfGoal("First"), "Renamed");
            world.clearSelection();
            world.board.selectionMenuRequested();
            chooseAndClose("Undo");
            compare(world.goalTitles(), ["First"]);
            world.clearSelection();
            view().Accessible.pressAction();
            tryVerify(() => item("Redo")?.enabled);
            chooseAndClose("Redo");
            compare(world.goalTitles(), ["Renamed"]);
            world.board.undo();
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
