import QtQuick
import QtTest
import Kelpa.Controls
import Kelpa.Windows

/// Two goals, and three windows that a sheet offers for the first of them.
TestCase {
    id: root

    required property WindowSelectionSheet sheet

    readonly property WindowPicker picker: world.board.windows.picker

    when: windowShown

    function initTestCase() {
        world.board.goals.createGoal("Proposal");
        world.board.goals.createGoal("Taxes");
        world.addWindow(1, "Alpha");
        world.addWindow(2, "Beta");
        world.addWindow(3, "Gamma");
    }
    function init() {
        for (const id of [1, 2, 3])
            world.board.windows.moveWindow(id, "kelpa-unassigned");
        picker.open(world.columnOfGoal("Proposal"));
        tryVerify(() => root.sheet.opened && rows().length === 3);
    }
    function cleanup() {
        picker.close();
        tryVerify(() => !root.sheet.visible);
    }

    function all(item, accepts) {
        let found = accepts(item) ? [item] : [];
        for (let i = 0; i < item.children.length; ++i)
            found = found.concat(all(item.children[i], accepts));
        return found;
    }
    function rows() {
        return all(root.sheet.contentItem, item => item instanceof WindowPickerRow && item.visible)
            .sort((a, b) => a.y - b.y);
    }
    function row(title) {
        return rows().find(item => item.title === title);
    }
    function button(text) {
        return all(root.sheet.contentItem, item => item instanceof AppButton)
            .find(item => item.text === text);
    }
    function texts() {
        return all(root.sheet.contentItem, item => item instanceof AppText && item.visible)
            .map(item => item.text);
    }
    function list() {
        return all(root.sheet.contentItem, item => item instanceof ListView)[0];
    }
    function search() {
        return all(root.sheet.contentItem, item => item instanceof SearchField)[0];
    }
    function focusItem() {
        return root.sheet.contentItem.Window.activeFocusItem;
    }
}
