import QtQuick
import QtTest
import Kelpa.Controls
import Kelpa.Goals
import Kelpa.Board
import "../cases"

/// Where the menus of the board open, and in which places their entries are.
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
        name: "MenuPlaces"
        goalBoard: board

        function test_a_second_click_on_the_button_of_a_menu_chooses_nothing_data() {
            return [
                {tag: "goal", symbol: "ellipsis", isInRow: false},
                {tag: "priority", symbol: "equal", isInRow: false},
                {tag: "todo", symbol: "ellipsis", isInRow: true}
            ];
        }
        function test_a_second_click_on_the_button_of_a_menu_chooses_nothing(data) {
            const first = column("First");
            show(first, "First", ["Read"]);
            // Nothing scrolls the board.
            world.clearSelection();
            const place = data.isInRow ? row(first, "Read")
                                       : only(all(first, item => item instanceof ColumnHeader));
            // From the upper edge of the window to the lower one, below which there is no room.
            for (const top of [0, 260, 420, 560]) {
                board.anchors.topMargin = top;
                tryVerify(() => !isMoving());
                const opener = button(place, data.symbol);
                mouseMove(opener);
                mouseClick(opener);
                tryVerify(() => menuItems().length > 3);
                const at = item => item.mapToItem(null, item.width / 2, item.height / 2);
                for (const item of menuItems())
                    verify(!item.contains(item.mapFromItem(null, at(opener))), item.text);
                mouseClick(opener);
                tryVerify(() => menuItems().length === 0);
                compare(world.todos("First"), ["Read (todo)"]);
                compare(world.goalTitles(), ["First", "Second"]);
                compare(first.priority, "p2");
            }
            board.anchors.topMargin = 0;
        }
        function test_delete_is_the_last_item_in_the_menus_of_todos_and_goals() {
            const first = column("First");
            show(first, "First", ["Read"]);
            const texts = () => menuItems().sort((a, b) => a.y - b.y).map(item => item.text);
            content(first, "Read").forceActiveFocus();
            keyClick(Qt.Key_Menu);
            tryVerify(() => menuItems().length === 7);
            // Items have their places one frame after the menu opens.
            tryVerify(() => texts()[0] === "Move to goal");
            compare(texts()[6], "Delete todo");
            keyClick(Qt.Key_Escape);
            tryVerify(() => menuItems().length === 0);
            first.openSelectionMenu();
            tryVerify(() => menuItems().length === 12);
            tryVerify(() => texts()[11] === "Delete goal");
            compare(texts().slice(0, 7), ["Add windows to this goal", "Open Chrome in this goal",
                                          "Open a Terminal in this goal",
                                          "Show all windows in this goal",
                                          "Work on this goal", "Rename goal", "Export…"]);
            compare(texts()[11], "Delete goal");
            keyClick(Qt.Key_Escape);
            tryVerify(() => menuItems().length === 0);
        }
        function test_what_is_beyond_the_usual_in_a_menu_is_in_groups_of_its_own() {
            const isEntry = item => (item instanceof AppMenuItem || item instanceof AppMenuSeparator)
                                    && item.visible && item.opacity > 0;
            const entries = () => all(root.Window.contentItem, isEntry).sort((a, b) => a.y - b.y)
                .map(item => item.text ?? "-");
            const first = column("First");
            show(first, "First", ["Read"]);
            content(first, "Read").forceActiveFocus();
            keyClick(Qt.Key_Menu);
            tryVerify(() => menuItems().length === 7);
            tryVerify(() => entries()[0] === "Move to goal" && entries()[8] === "Delete todo");
            compare(entries(), ["Move to goal", "-", "Edit todo", "Move todo up", "Move todo down",
                                "Move to the beginning", "Move to the end", "-", "Delete todo"]);
            keyClick(Qt.Key_Escape);
            tryVerify(() => menuItems().length === 0);
            first.openSelectionMenu();
            tryVerify(() => menuItems().length === 12);
            tryVerify(() => entries()[13] === "Delete goal");
            compare(entries(), ["Add windows to this goal", "Open Chrome in this goal",
                                "Open a Terminal in this goal", "Show all windows in this goal",
                                "Work on this goal", "Rename goal", "Export…", "-", "Move goal left",
                                "Move goal right", "Move to the beginning", "Move to the end", "-", "Delete goal"]);
            keyClick(Qt.Key_Escape);
            tryVerify(() => menuItems().length === 0);
        }
    }
}
