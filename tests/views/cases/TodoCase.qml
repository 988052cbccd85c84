import QtQuick
import QtTest
import Kelpa.Controls
import Kelpa.Goals
import Kelpa.Todos

/// Two goals, and todos that go with the test.
BoardCase {
    id: root

    function initTestCase() {
        world.board.goals.createGoal("First");
        world.board.goals.createGoal("Second");
        tryVerify(() => column("Second") !== null);
    }
    function cleanup() {
        world.board.todos.cancelEditor();
        for (const list of all(root.goalBoard, item => item instanceof TodoList)) {
            list.isOwnEditorOpen = false;
            world.board.todos.setDraft(list.listID, "");
        }
        world.removeTodos();
        // No menu and no row of one test stays for the next.
        tryVerify(() => menuItems().length === 0);
        tryVerify(() => all(root.goalBoard, item => item instanceof TodoRow).length === 0);
    }
    function rowTitles(place) {
        return all(place, item => item instanceof TodoRow).sort((a, b) => a.y - b.y)
            .map(row => row.title);
    }
    function row(place, title) {
        return only(all(place, item => item instanceof TodoRow && item.title === title));
    }
    function content(place, title) {
        return only(all(row(place, title), item => item.Accessible.role === Accessible.ListItem));
    }
    function button(place, symbol) {
        return only(all(place, item => (item instanceof IconButton || item instanceof PriorityButton)
                                       && item.visible
                                       && item.symbol === symbol));
    }
    function field(place) {
        return only(all(place, item => item instanceof TextInputField && item.visible));
    }
    /// Whether something has the keyboard that a person went to with it.
    function hasKeyboard() {
        const item = root.goalBoard.Window.activeFocusItem;
        return item !== null && (item.visualFocus ?? item.activeFocusOnTab);
    }
    function show(place, goal, titles) {
        for (const title of titles)
            world.addTodo(title, goal);
        tryVerify(() => row(place, titles[titles.length - 1]) !== null);
    }
}
