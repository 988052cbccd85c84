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

    TestCase {
        name: "GoalBoard"
        when: windowShown

        function initTestCase() {
            world.board.createGoal("First");
            world.addWindow(4294967295, "Report");
            world.addWindow(8, "Letter");
        }

        /// Everything below `item` for which `accepts` holds.
        function all(item, accepts) {
            let found = accepts(item) ? [item] : [];
            for (let i = 0; i < item.children.length; ++i)
                found = found.concat(all(item.children[i], accepts));
            return found;
        }
        function columns() {
            return all(board, item => item instanceof GoalColumn)
                .sort((a, b) => a.x - b.x);
        }
        function card(title) {
            const found = all(board, item => item instanceof WindowCard && item.visible
                                             && item.title === title);
            return found.length === 1 ? found[0] : null;
        }

        function test_columns_are_lists_named_by_their_title() {
            tryVerify(() => columns().length === 2);
            compare(columns()[0].Accessible.name, "Unsorted");
            compare(columns()[0].Accessible.role, Accessible.List);
            compare(columns()[1].Accessible.name, "First");
        }
        function test_cards_are_list_items_named_by_owner_and_title() {
            tryVerify(() => card("Report") !== null);
            compare(card("Report").Accessible.name, "App 1000: Report");
            compare(card("Report").Accessible.role, Accessible.ListItem);
        }
        function test_a_window_number_keeps_all_its_bits() {
            tryVerify(() => card("Report") !== null);
            compare(world.board.windowDragText(card("Report").windowID), "4294967295");
        }
        function test_a_card_survives_what_happens_to_its_neighbour() {
            tryVerify(() => card("Report") !== null);
            const before = card("Report");
            world.addWindow(9, "Newcomer");
            tryVerify(() => card("Newcomer") !== null);
            world.board.moveWindow(9, world.columnOfGoal("First"));
            compare(card("Report"), before);
            world.removeWindow(9);
            tryVerify(() => card("Newcomer") === null);
            compare(card("Report"), before);
        }
        function test_the_menu_of_a_card_moves_it() {
            tryVerify(() => card("Letter") !== null);
            const letter = card("Letter");
            mouseClick(letter, 20, 20, Qt.RightButton);
            // Past the heading, to the first goal.
            tryVerify(() => all(root.parent,
                                item => item instanceof AppMenuItem && item.visible).length === 3);
            keyClick(Qt.Key_Down);
            keyClick(Qt.Key_Return);
            tryVerify(() => world.goalOfWindow(8) === "First");
            world.board.moveWindow(8, "kelpa-unassigned");
            tryVerify(() => world.goalOfWindow(8) === "");
        }
        function test_the_menu_key_opens_the_menu_of_the_card_with_focus() {
            tryVerify(() => card("Letter") !== null);
            card("Letter").forceActiveFocus();
            keyClick(Qt.Key_Menu);
            keyClick(Qt.Key_Down);
            keyClick(Qt.Key_Return);
            tryVerify(() => world.goalOfWindow(8) === "First");
            world.board.moveWindow(8, "kelpa-unassigned");
        }
        function test_the_menu_of_a_goal_renames_it() {
            tryVerify(() => columns().length === 2);
            const button = all(columns()[1], item => item instanceof IconButton
                                                      && item.symbol === "ellipsis")[0];
            renaming.clear();
            mouseClick(button);
            // Past what opens and shows windows.
            for (let i = 0; i < 4; ++i)
                keyClick(Qt.Key_Down);
            keyClick(Qt.Key_Return);
            tryCompare(renaming, "count", 1);
            compare(renaming.signalArguments[0][1], "First");
        }
        function test_an_empty_title_shows_as_a_window() {
            world.addWindow(10, "");
            tryVerify(() => card("") !== null);
            compare(card("").shownTitle, "Window");
            world.removeWindow(10);
        }
    }
}
