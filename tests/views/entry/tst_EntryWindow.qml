import QtQuick
import QtTest
import Kelpa.Appearance
import Kelpa.Controls
import Kelpa.Entry

/// The field for a todo over other windows, in its window.
Item {
    EntryWindow {
        id: root

        entry: world.entry

        TestCase {
            name: "EntryWindow"
            when: windowShown

            function all(item, accepts) {
                let found = accepts(item) ? [item] : [];
                for (let i = 0; i < item.children.length; ++i)
                    found = found.concat(all(item.children[i], accepts));
                return found;
            }
            function field() {
                return all(root.contentItem, item => item instanceof TextInputField)[0];
            }
            function named(role, name) {
                return all(root.contentItem,
                           item => item.visible && item.Accessible.role === role
                                   && item.Accessible.name === name);
            }
            function type(text) {
                for (const letter of text)
                    keyClick(letter);
            }
            function initTestCase() {
                world.board.goals.createGoal("First");
                world.board.goals.createGoal("Second");
            }
            function init() {
                world.openEntry();
                root.show();
                root.requestActivate();
                root.focusField();
                tryVerify(() => field().activeFocus);
                waitForLayout();
            }
            // The column has its new height, and the window with it, at the next polish.
            function waitForLayout() {
                tryVerify(() => !isPolishScheduled(field().parent));
            }
            function cleanup() {
                world.entry.close();
                world.entry.edit("", 0);
                field().clear();
                world.removeTodos();
            }

            function test_a_todo_is_typed_and_added_by_Return() {
                compare(field().Accessible.name, "New todo");
                type("ab");
                keyClick(Qt.Key_Return);
                compare(world.todos(""), ["ab (todo)"]);
                compare(field().text, "");
                verify(!world.entry.isOpen);
            }
            function test_the_keys_choose_a_goal_and_the_rest_of_the_text_stays() {
                type("ab #");
                compare(named(Accessible.ListItem, "Second").length, 1);
                compare(named(Accessible.AlertMessage, "First").length, 1);
                keyClick(Qt.Key_Down);
                compare(named(Accessible.AlertMessage, "Second").length, 1);
                verify(named(Accessible.ListItem, "Second")[0].Accessible.selected);
                verify(!named(Accessible.ListItem, "First")[0].Accessible.selected);
                keyClick(Qt.Key_Tab);
                compare(field().text, "ab ");
                compare(field().cursorPosition, 3);
                compare(named(Accessible.StaticText, "Second").length, 1);
                type("c");
                keyClick(Qt.Key_Return);
                compare(world.todos("Second"), ["ab c (todo)"]);
            }
            function test_a_click_chooses_a_goal() {
                type("#se");
                waitForLayout();
                mouseClick(named(Accessible.ListItem, "Second")[0]);
                compare(field().text, "");
                compare(named(Accessible.StaticText, "Second").length, 1);
                verify(field().activeFocus);
            }
            function test_a_composition_has_its_keys() {
                type("#");
                world.compose("にほん");
                keyClick(Qt.Key_Down);
                compare(world.entry.currentTitle, "First");
                keyClick(Qt.Key_Tab);
                keyClick(Qt.Key_Return);
                verify(world.entry.isOpen);
                compare(field().text, "#");
                root.finishComposition();
                compare(field().text, "#にほん");
                verify(!world.entry.isCompleting);
                compare(world.entry.text, "#にほん");
                // The key that ends a composition is the input method's, as are those right after it.
                tryVerify(() => {
                    keyClick(Qt.Key_Return);
                    return !world.entry.isOpen;
                });
                compare(world.todos(""), ["#にほん (todo)"]);
            }
            function test_Escape_keeps_what_was_typed() {
                type("ab #fi");
                keyClick(Qt.Key_Escape);
                verify(!world.entry.isCompleting);
                verify(world.entry.isOpen);
                keyClick(Qt.Key_Escape);
                verify(!world.entry.isOpen);
                compare(world.entry.text, "ab #fi");
                compare(field().text, "ab #fi");
            }
            function test_the_window_is_as_high_as_what_it_shows() {
                const height = root.height;
                type("#");
                waitForLayout();
                verify(root.height > height);
                compare(root.minimumHeight, root.maximumHeight);
                keyClick(Qt.Key_Escape);
                tryCompare(root, "height", height);
            }
        }}
}
