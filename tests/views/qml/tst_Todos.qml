import QtQuick
import QtTest
import Kelpa

Item {
    id: root

    width: 1300
    height: 700

    GoalBoard {
        id: board

        anchors.fill: parent
        board: world.board
    }

    Component {
        id: lineText

        AppText {
            text: "A\nB\nC"
        }
    }

    TestCase {
        name: "Todos"
        when: windowShown

        function initTestCase() {
            world.board.createGoal("First");
            world.board.createGoal("Second");
            tryVerify(() => column("Second") !== null);
        }
        function cleanup() {
            world.board.todos.cancelEditor();
            for (const list of all(board, item => item instanceof TodoList))
                list.isOwnEditorOpen = false;
            world.removeTodos();
            // No menu and no row of one test stays for the next.
            tryVerify(() => menuItems().length === 0);
            tryVerify(() => all(board, item => item instanceof TodoRow).length === 0);
        }

        /// Everything below `item` for which `accepts` holds.
        function all(item, accepts) {
            let found = accepts(item) ? [item] : [];
            for (let i = 0; i < item.children.length; ++i)
                found = found.concat(all(item.children[i], accepts));
            return found;
        }
        function only(found) {
            return found.length === 1 ? found[0] : null;
        }
        function column(title) {
            return only(all(board, item => item instanceof GoalColumn && item.title === title));
        }
        function unified() {
            return only(all(board, item => item instanceof UnifiedTodoColumn));
        }
        function rowTitles(place) {
            return all(place, item => item instanceof TodoRow).sort((a, b) => a.y - b.y)
                .map(row => row.title);
        }
        function row(place, title) {
            return only(all(place, item => item instanceof TodoRow && item.title === title));
        }
        function face(place, title) {
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
            const item = root.Window.activeFocusItem;
            return item !== null && (item.visualFocus ?? item.activeFocusOnTab);
        }
        function menuItems() {
            return all(root.parent, item => item instanceof AppMenuItem && item.visible
                                            && item.opacity > 0);
        }
        /// By the keyboard: where the highlight starts depends on where the pointer rests.
        function choose(text) {
            const chosen = () => menuItems().find(item => item.text === text);
            tryVerify(() => chosen() !== undefined);
            for (let i = 0; i < 8 && !chosen().highlighted; ++i)
                keyClick(Qt.Key_Down);
            for (let i = 0; i < 8 && !chosen().highlighted; ++i)
                keyClick(Qt.Key_Up);
            verify(chosen().highlighted);
            keyClick(Qt.Key_Return);
        }
        function show(place, goal, titles) {
            for (const title of titles)
                world.addTodo(title, goal);
            tryVerify(() => row(place, titles[titles.length - 1]) !== null);
        }
        function type(text) {
            for (const character of text)
                keyClick(character);
        }

        function test_the_goals_of_the_menu_follow_their_order_on_the_board() {
            show(unified(), "", ["Sort"]);
            const goals = () => {
                face(unified(), "Sort").forceActiveFocus();
                keyClick(Qt.Key_Menu);
                choose("Move to goal");
                tryVerify(() => menuItems().some(item => item.text === "Second"));
                const titles = menuItems().filter(item => item.symbol === "circle")
                    .sort((a, b) => a.y - b.y).map(item => item.text);
                keyClick(Qt.Key_Escape);
                keyClick(Qt.Key_Escape);
                tryVerify(() => menuItems().length === 0);
                return titles;
            };
            compare(goals(), ["First", "Second"]);
            verify(world.board.moveColumn(world.columnOfGoal("First"), 1));
            compare(goals(), ["Second", "First"]);
            verify(world.board.moveColumn(world.columnOfGoal("First"), -1));
            compare(goals(), ["First", "Second"]);
        }
        function test_todos_are_list_items_named_by_their_title() {
            const first = column("First");
            show(first, "First", ["Read"]);
            compare(face(first, "Read").Accessible.name, "Read");
            compare(unified().Accessible.role, Accessible.List);
            compare(unified().Accessible.name, "All todos");
            compare(face(unified(), "Read").Accessible.description, "First");
        }
        function test_a_title_of_several_lines_is_one_line_that_keeps_its_breaks() {
            const first = column("First");
            world.addTodo("Buy\nmilk\u2028and\ttea", "First");
            tryVerify(() => row(first, "Buy milk and tea") !== null);
            const shown = row(first, "Buy milk and tea");
            compare(face(first, "Buy milk and tea").Accessible.name, "Buy milk and tea");
            const lines = all(shown, item => item instanceof AppText && item.visible);
            for (const text of lines)
                compare(text.lineCount, 1);
            mouseClick(shown, 60, 17);
            tryVerify(() => field(first) !== null && field(first).activeFocus);
            compare(field(first).text, "Buy\nmilk\u2028and\ttea");
            keyClick(Qt.Key_End);
            type("s");
            keyClick(Qt.Key_Return);
            compare(world.todos("First"), ["Buy\nmilk\u2028and\tteas (todo)"]);
            // Also where a text did not come by the models.
            const other = createTemporaryObject(lineText, root);
            compare(other.lineCount, 1);
            compare(other.height, createTemporaryObject(lineText, root, {text: "A"}).height);
        }
        function test_the_status_button_goes_round() {
            const first = column("First");
            show(first, "First", ["Read", "Write"]);
            const status = button(row(first, "Read"), "circle");
            compare(status.Accessible.name,
                    world.board.copy.statusAccessibilityLabel("todo"));
            compare(status.help, world.board.copy.statusHelp("todo"));
            mouseClick(status);
            compare(world.todos("First")[0], "Read (ing)");
            compare(status.symbol, "contrast");
            mouseClick(status);
            compare(world.todos("First")[0], "Read (completed)");
            compare(status.symbol, "circle-check");
            // Still on the card of its goal, but no more among all todos.
            compare(rowTitles(first), ["Read", "Write"]);
            tryVerify(() => row(unified(), "Read") === null);
            mouseClick(status);
            compare(world.todos("First")[0], "Read (todo)");
        }
        function test_a_click_on_the_title_edits_it_in_place() {
            const first = column("First");
            show(first, "First", ["Read"]);
            mouseClick(row(first, "Read"), 60, 17);
            tryVerify(() => field(first) !== null && field(first).activeFocus);
            compare(field(first).text, "Read");
            compare(field(first).Accessible.name, "Edit todo");
            type("abc");
            keyClick(Qt.Key_Return);
            compare(world.todos("First"), ["abc (todo)"]);
            tryVerify(() => field(first) === null);
            verify(!hasKeyboard());
            // The board's own keys reach it again, and no row of a todo.
            keyClick(Qt.Key_Return);
            compare(field(first), null);
        }
        function test_a_blank_title_keeps_the_editor_and_the_todo() {
            const first = column("First");
            show(first, "First", ["Read"]);
            face(first, "Read").forceActiveFocus();
            keyClick(Qt.Key_F2);
            tryVerify(() => field(first) !== null && field(first).activeFocus);
            keyClick(Qt.Key_Space);
            keyClick(Qt.Key_Return);
            verify(field(first) !== null);
            compare(world.todos("First"), ["Read (todo)"]);
            keyClick(Qt.Key_Escape);
            tryVerify(() => field(first) === null);
            compare(world.todos("First"), ["Read (todo)"]);
            verify(face(first, "Read").activeFocus);
        }
        function test_return_that_ends_a_composition_does_not_commit() {
            const first = column("First");
            show(first, "First", ["Read"]);
            mouseClick(row(first, "Read"), 60, 17);
            tryVerify(() => field(first) !== null && field(first).activeFocus);
            world.compose("にほん");
            keyClick(Qt.Key_Return);
            verify(field(first) !== null);
            compare(world.todos("First"), ["Read (todo)"]);
            world.compose("");
            keyClick(Qt.Key_Escape);
        }
        function test_a_title_is_kept_when_the_keyboard_goes_elsewhere() {
            const first = column("First");
            show(first, "First", ["Read", "Write"]);
            mouseClick(row(first, "Read"), 60, 17);
            tryVerify(() => field(first) !== null && field(first).activeFocus);
            type("abc");
            mouseClick(button(row(first, "Write"), "circle"));
            tryVerify(() => field(first) === null);
            compare(world.todos("First"), ["abc (todo)", "Write (ing)"]);
            // Also when it goes to nobody, as after a click beside all buttons.
            mouseClick(row(first, "abc"), 60, 17);
            tryVerify(() => field(first) !== null && field(first).activeFocus);
            type("def");
            field(first).focus = false;
            tryVerify(() => field(first) === null);
            compare(world.todos("First"), ["def (todo)", "Write (ing)"]);
            verify(!hasKeyboard());
        }
        function test_a_title_stands_at_the_left_also_while_it_is_written() {
            const title = "\u0634\u0631\u0627\u0621 \u0627\u0644\u062d\u0644\u064a\u0628";
            const first = column("First");
            show(first, "First", [title]);
            const text = all(row(first, title), item => item instanceof AppText
                                                        && item.text === title)[0];
            compare(text.effectiveHorizontalAlignment, Text.AlignLeft);
            mouseClick(row(first, title), 60, 17);
            tryVerify(() => field(first) !== null);
            compare(field(first).effectiveHorizontalAlignment, TextInput.AlignLeft);
            keyClick(Qt.Key_Escape);
        }
        function test_a_title_keeps_its_length_when_it_is_edited() {
            const first = column("First");
            const title = "x".repeat(40000);
            show(first, "First", [title]);
            mouseClick(row(first, title), 60, 17);
            tryVerify(() => field(first) !== null && field(first).activeFocus);
            compare(field(first).length, 40000);
            keyClick(Qt.Key_End);
            type("y");
            keyClick(Qt.Key_Return);
            tryVerify(() => field(first) === null);
            compare(world.todos("First")[0].length, 40001 + " (todo)".length);
        }
        function test_a_key_that_is_held_presses_a_button_once() {
            const first = column("First");
            show(first, "First", ["Read"]);
            for (const key of [Qt.Key_Return, Qt.Key_Space]) {
                const before = world.todos("First")[0];
                button(first, before === "Read (todo)" ? "circle" : "contrast")
                    .forceActiveFocus(Qt.TabFocusReason);
                keyPress(key);
                for (let i = 0; i < 5; ++i)
                    world.repeatKey(board, key);
                keyRelease(key);
                compare(world.todos("First")[0],
                        before === "Read (todo)" ? "Read (ing)" : "Read (completed)");
            }
        }
        function test_a_blank_title_is_not_kept() {
            const first = column("First");
            show(first, "First", ["Read"]);
            mouseClick(row(first, "Read"), 60, 17);
            tryVerify(() => field(first) !== null && field(first).activeFocus);
            keyClick(Qt.Key_Space);
            field(first).focus = false;
            tryVerify(() => field(first) === null);
            compare(world.todos("First"), ["Read (todo)"]);
        }
        function test_the_cancel_button_of_an_edit_throws_it_away() {
            const first = column("First");
            show(first, "First", ["Read"]);
            mouseClick(row(first, "Read"), 60, 17);
            tryVerify(() => field(first) !== null && field(first).activeFocus);
            type("abc");
            // As the window does at every press beside the field.
            const cancel = button(first, "x");
            mousePress(cancel);
            field(first).focus = false;
            mouseRelease(cancel);
            tryVerify(() => field(first) === null);
            compare(world.todos("First"), ["Read (todo)"]);
        }
        function test_what_is_written_for_a_new_todo_outlasts_its_field() {
            for (const place of [unified(), column("Unsorted")]) {
                mouseClick(button(place, "lightbulb-plus"));
                tryVerify(() => field(place) !== null && field(place).activeFocus);
                type("ab");
                field(place).focus = false;
                compare(field(place).text, "ab");
                // A column that is written in is not given to another goal when it is scrolled away.
                verify(place.isPinned);
                mouseClick(button(place, "lightbulb-plus"));
                type("c");
                compare(field(place).text, "abc");
                keyClick(Qt.Key_Escape);
                tryVerify(() => field(place) === null);
                verify(!place.isPinned);
            }
            const first = column("First");
            mouseClick(button(first, "lightbulb-plus"));
            tryVerify(() => field(first) !== null && field(first).activeFocus);
            type("ab");
            world.board.todos.requestEditor(column("Second").columnID);
            tryVerify(() => field(first) === null);
            compare(field(column("Second")).text, "");
            mouseClick(button(first, "lightbulb-plus"));
            tryVerify(() => field(first) !== null && field(first).activeFocus);
            compare(field(first).text, "ab");
            mouseClick(button(first, "x"));
            tryVerify(() => field(first) === null);
            mouseClick(button(first, "lightbulb-plus"));
            tryVerify(() => field(first) !== null);
            compare(field(first).text, "");
        }
        function test_the_tab_key_walks_through_a_list_that_is_longer_than_its_column() {
            for (let i = 0; i < 40; ++i)
                world.addTodo("Todo " + i, "");
            const list = only(all(unified(), item => item instanceof TodoList));
            tryVerify(() => row(unified(), "Todo 0") !== null);
            face(unified(), "Todo 0").forceActiveFocus();
            const isFace = () => root.Window.activeFocusItem?.Accessible.role
                               === Accessible.ListItem;
            for (let i = 1; i < 40; ++i) {
                keyClick(Qt.Key_Tab);
                for (let part = 0; part < 5 && !isFace(); ++part)
                    keyClick(Qt.Key_Tab);
                compare(root.Window.activeFocusItem.Accessible.name, "Todo " + i);
                const rect = list.rowRect(world.todoID("Todo " + i, ""));
                verify(rect.y >= 0 && rect.y + rect.height <= list.height);
                // Rows are made before the next frame.
                waitForRendering(unified());
            }
            for (let i = 38; i >= 0; --i) {
                keyClick(Qt.Key_Backtab, Qt.ShiftModifier);
                for (let part = 0; part < 5 && !isFace(); ++part)
                    keyClick(Qt.Key_Backtab, Qt.ShiftModifier);
                compare(root.Window.activeFocusItem.Accessible.name, "Todo " + i);
                waitForRendering(unified());
            }
        }
        function test_the_menu_button_shows_where_the_pointer_or_the_keyboard_is() {
            const first = column("First");
            show(first, "First", ["Read", "Write"]);
            const menu = button(row(first, "Read"), "ellipsis");
            compare(menu.Accessible.name, "More todo actions");
            compare(menu.Accessible.role, Accessible.ButtonMenu);
            verify(!menu.Accessible.ignored);
            verify(!menu.isShown);
            mouseMove(row(first, "Read"), 60, 17);
            tryCompare(menu, "isShown", true);
            mouseMove(root, 1, 699);
            tryCompare(menu, "isShown", false);
            face(first, "Read").forceActiveFocus();
            verify(menu.isShown);
            mouseClick(menu);
            tryVerify(() => menuItems().length === 5);
            keyClick(Qt.Key_Escape);
        }
        function test_the_menu_of_a_todo_edits_it() {
            const first = column("First");
            show(first, "First", ["Read"]);
            face(first, "Read").forceActiveFocus();
            keyClick(Qt.Key_Menu);
            choose("Edit todo");
            tryVerify(() => field(first) !== null && field(first).activeFocus);
            type("abc");
            keyClick(Qt.Key_Return);
            compare(world.todos("First"), ["abc (todo)"]);
            tryVerify(() => face(first, "abc").activeFocus);
        }
        function test_the_keyboard_goes_on_where_a_todo_was_deleted() {
            const first = column("First");
            show(first, "First", ["A", "B", "C"]);
            const remove = title => {
                face(first, title).forceActiveFocus();
                keyClick(Qt.Key_Menu);
                choose("Delete todo");
                tryVerify(() => row(first, title) === null);
            };
            remove("B");
            tryVerify(() => face(first, "C").activeFocus);
            remove("C");
            tryVerify(() => face(first, "A").activeFocus);
            remove("A");
            tryVerify(() => button(first, "lightbulb-plus").visualFocus);
        }
        function test_the_keyboard_goes_on_where_a_todo_was_completed_or_moved_away() {
            const place = unified();
            show(place, "First", ["A", "B", "C"]);
            button(row(place, "B"), "circle").forceActiveFocus(Qt.TabFocusReason);
            keyClick(Qt.Key_Return);
            keyClick(Qt.Key_Return);
            tryVerify(() => row(place, "B") === null);
            tryVerify(() => face(place, "C").activeFocus);
            const first = column("First");
            face(first, "A").forceActiveFocus();
            world.board.todos.move(world.todoID("A", "First"), first.columnID,
                                   column("Second").columnID);
            tryVerify(() => row(first, "A") === null);
            tryVerify(() => face(first, "B").activeFocus);
        }
        function test_a_todo_deleted_by_mouse_leaves_the_keyboard_alone() {
            const first = column("First");
            show(first, "First", ["A", "B"]);
            mouseClick(row(first, "A"), 60, 17, Qt.RightButton);
            tryVerify(() => menuItems().length === 5);
            choose("Delete todo");
            tryVerify(() => row(first, "A") === null);
            tryVerify(() => menuItems().length === 0);
            verify(!hasKeyboard());
        }
        function test_escape_gives_the_keyboard_back_to_the_button_that_opened_the_field() {
            for (const place of [unified(), column("Unsorted"), column("First")]) {
                mouseClick(button(place, "lightbulb-plus"));
                tryVerify(() => field(place) !== null && field(place).activeFocus);
                keyClick(Qt.Key_Escape);
                tryVerify(() => field(place) === null);
                verify(!hasKeyboard());
                button(place, "lightbulb-plus").forceActiveFocus(Qt.TabFocusReason);
                keyClick(Qt.Key_Return);
                tryVerify(() => field(place) !== null && field(place).activeFocus);
                keyClick(Qt.Key_Escape);
                tryVerify(() => field(place) === null);
                verify(button(place, "lightbulb-plus").visualFocus);
            }
        }
        function test_the_list_of_all_todos_is_selected_by_mouse_and_by_assistive_programs() {
            world.clearSelection();
            mouseClick(unified(), 60, 24);
            verify(world.board.todos.isUnifiedSelected);
            world.clearSelection();
            unified().Accessible.pressAction();
            verify(world.board.todos.isUnifiedSelected);
        }
        function test_editing_ends_when_the_keyboard_goes_elsewhere() {
            const first = column("First");
            show(first, "First", ["Read", "Write"]);
            mouseClick(row(first, "Read"), 60, 17);
            tryVerify(() => field(first) !== null && field(first).activeFocus);
            face(first, "Write").forceActiveFocus();
            tryVerify(() => field(first) === null);
            compare(world.todos("First"), ["Read (todo)", "Write (todo)"]);
        }
        function test_the_handle_copies() {
            show(column("First"), "First", ["Read"]);
            const handle = button(row(column("First"), "Read"), "menu");
            compare(handle.Accessible.name, "Copy and drag todo");
            mouseClick(handle);
            compare(world.clipboard(), "Read");
        }
        function test_the_add_button_of_a_goal_opens_a_field_that_stays() {
            const first = column("First");
            mouseClick(button(first, "lightbulb-plus"));
            tryVerify(() => field(first) !== null && field(first).activeFocus);
            type("ab");
            keyClick(Qt.Key_Return);
            compare(world.todos("First"), ["ab (todo)"]);
            compare(field(first).text, "");
            verify(field(first).activeFocus);
            type("cd");
            keyClick(Qt.Key_Return);
            compare(world.todos("First"), ["ab (todo)", "cd (todo)"]);
            keyClick(Qt.Key_Return);
            compare(world.todos("First").length, 2);
            verify(field(first) !== null);
            keyClick(Qt.Key_Escape);
            tryVerify(() => field(first) === null);
            compare(world.board.todos.editorColumnID, "");
        }
        function test_a_request_for_the_editor_moves_it_and_takes_the_keyboard() {
            world.board.todos.requestEditor(world.columnOfGoal("First"));
            tryVerify(() => field(column("First")) !== null && field(column("First")).activeFocus);
            world.board.todos.requestEditor(world.columnOfGoal("Second"));
            tryVerify(() => field(column("Second")) !== null && field(column("Second")).activeFocus);
            compare(field(column("First")), null);
            button(unified(), "lightbulb-plus").forceActiveFocus();
            world.board.todos.requestEditor(world.columnOfGoal("Second"));
            tryVerify(() => field(column("Second")).activeFocus);
        }
        function test_the_cancel_button_closes_the_field() {
            const first = column("First");
            mouseClick(button(first, "lightbulb-plus"));
            tryVerify(() => field(first) !== null);
            mouseClick(button(first, "x"));
            tryVerify(() => field(first) === null);
        }
        function test_unassigned_todos_are_added_in_two_columns() {
            for (const place of [column("Unsorted"), unified()]) {
                mouseClick(button(place, "lightbulb-plus"));
                tryVerify(() => field(place) !== null && field(place).activeFocus);
                type("x");
                keyClick(Qt.Key_Return);
                keyClick(Qt.Key_Escape);
                tryVerify(() => field(place) === null);
            }
            compare(world.todos(""), ["x (todo)", "x (todo)"]);
        }
        function test_the_menu_of_a_todo_deletes_it() {
            const first = column("First");
            show(first, "First", ["Read", "Write"]);
            mouseClick(row(first, "Read"), 60, 17, Qt.RightButton);
            tryVerify(() => menuItems().length === 5);
            choose("Delete todo");
            tryVerify(() => world.todos("First").length === 1);
            compare(world.todos("First"), ["Write (todo)"]);
        }
        function test_the_keys_move_a_todo_to_another_goal_by_its_menu() {
            const first = column("First");
            show(first, "First", ["Read"]);
            face(first, "Read").forceActiveFocus();
            keyClick(Qt.Key_F10, Qt.ShiftModifier);
            choose("Move to goal");
            // The other goal and the unassigned column.
            tryVerify(() => menuItems().length === 7);
            choose("Second");
            tryVerify(() => world.todos("Second").length === 1);
            compare(world.todos("First"), []);
        }
        function test_alt_and_an_arrow_reorder() {
            const first = column("First");
            show(first, "First", ["A", "B", "C"]);
            face(first, "C").forceActiveFocus();
            keyClick(Qt.Key_Up, Qt.AltModifier);
            tryVerify(() => rowTitles(first).join() === "A,C,B");
            keyClick(Qt.Key_Up, Qt.AltModifier);
            tryVerify(() => rowTitles(first).join() === "C,A,B");
            keyClick(Qt.Key_Down, Qt.AltModifier);
            tryVerify(() => rowTitles(first).join() === "A,C,B");
            tryVerify(() => rowTitles(unified()).join() === "A,C,B");
        }
        function test_the_priority_menu_sets_the_priority() {
            const second = column("Second");
            const shown = button(second, "equal");
            compare(shown.Accessible.name, world.board.copy.priorityAccessibilityLabel("p2"));
            mouseClick(shown);
            tryVerify(() => menuItems().length === 4);
            compare(menuItems().filter(item => item.isChosen).map(item => item.text),
                    [world.board.copy.priorityName("p2")]);
            keyClick(Qt.Key_Down);
            keyClick(Qt.Key_Return);
            tryVerify(() => world.priorityOf("Second") === "p0");
            compare(shown.symbol, "chevrons-up");
            world.board.todos.setPriority(world.columnOfGoal("Second"), "p2");
        }
        function test_alt_and_an_arrow_move_a_goal() {
            button(column("Second"), "ellipsis").forceActiveFocus();
            keyClick(Qt.Key_Left, Qt.AltModifier);
            compare(world.goalTitles(), ["Second", "First"]);
            keyClick(Qt.Key_Right, Qt.AltModifier);
            compare(world.goalTitles(), ["First", "Second"]);
        }
        function test_the_badges_count_open_todos() {
            const first = column("First");
            show(first, "First", ["A", "B"]);
            world.board.todos.toggle(world.todoID("A", "First"), first.columnID);
            world.board.todos.toggle(world.todoID("A", "First"), first.columnID);
            tryCompare(first, "openTodoCount", 1);
            const badge = all(first, item => item instanceof CountBadge)[0];
            compare(badge.Accessible.name, world.board.copy.openTodoCount(1));
        }
        function test_the_way_to_a_todo_selects_its_goal() {
            show(unified(), "Second", ["Read"]);
            mouseClick(button(row(unified(), "Read"), "arrow-right"));
            tryCompare(column("Second"), "isSelected", true);
            verify(!column("First").isSelected);
            tryVerify(() => row(column("Second"), "Read").isHighlighted);
            verify(!row(unified(), "Read").isHighlighted);
            verify(!hasKeyboard());
            world.board.todos.goToColumn(column("First").columnID);
            tryVerify(() => !row(column("Second"), "Read").isHighlighted);
        }
        function test_who_goes_to_a_todo_by_the_keyboard_goes_on_with_it_there() {
            show(unified(), "Second", ["Read"]);
            button(row(unified(), "Read"), "arrow-right").forceActiveFocus(Qt.TabFocusReason);
            keyClick(Qt.Key_Return);
            tryVerify(() => row(column("Second"), "Read").isHighlighted);
            tryVerify(() => face(column("Second"), "Read").activeFocus);
        }
        function test_the_way_to_a_todo_leads_to_a_row_that_showed_another_one() {
            const first = column("First");
            show(first, "First", ["Done with"]);
            const former = row(first, "Done with");
            world.board.todos.remove(world.todoID("Done with", "First"), first.columnID);
            tryVerify(() => row(first, "Done with") === null);
            // Asked for before it has a row.
            world.addTodo("Read", "First");
            compare(row(first, "Read"), null);
            world.board.todos.goToTodo(world.todoID("Read", "First"), first.columnID, true);
            tryVerify(() => row(first, "Read") !== null);
            compare(row(first, "Read"), former);
            tryVerify(() => face(first, "Read").activeFocus);
        }
        function test_the_menu_of_a_todo_moves_it_within_the_list_that_shows_it() {
            const first = column("First");
            show(first, "First", ["A", "B", "C"]);
            face(first, "B").forceActiveFocus();
            keyClick(Qt.Key_Menu);
            tryVerify(() => menuItems().length === 5);
            const move = text => menuItems().find(item => item.text === text);
            verify(move("Move todo up").enabled);
            verify(move("Move todo down").enabled);
            choose("Move todo down");
            tryVerify(() => rowTitles(first).join() === "A,C,B");
            tryVerify(() => menuItems().length === 0);
            face(first, "B").forceActiveFocus();
            keyClick(Qt.Key_Menu);
            tryVerify(() => menuItems().length === 5);
            verify(!move("Move todo down").enabled);
            keyClick(Qt.Key_Escape);
            tryVerify(() => menuItems().length === 0);
        }
        function test_an_empty_list_says_so() {
            const texts = all(column("First"), item => item instanceof AppText && item.visible)
                .map(item => item.text);
            verify(texts.includes("No todos yet"));
        }
        function test_a_long_list_makes_only_the_rows_that_show() {
            for (let i = 0; i < 1000; ++i)
                world.addTodo("Todo " + i, "First");
            tryVerify(() => rowTitles(column("First")).length > 5);
            verify(rowTitles(column("First")).length < 60);
            verify(rowTitles(unified()).length < 60);
        }
    }
}
