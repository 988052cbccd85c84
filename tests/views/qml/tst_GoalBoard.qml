import QtQuick
import QtQuick.Templates as T
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
                .sort((a, b) => b.isUnassigned - a.isUnassigned);
        }
        function isMoving() {
            return board.isMoving || all(board, item => item instanceof WaterfallView
                                                        && item.isMoving).length > 0;
        }
        /// Null while a window that moved still has a card in a column that it left, and while
        /// cards move.
        function card(title) {
            if (isMoving())
                return null;
            const isCard = item => item instanceof WindowCard && item.visible
                                   && item.title === title;
            const found = all(board, isCard);
            if (found.length !== 1)
                return null;
            const place = world.goalOfWindow(found[0].windowID) || "Unsorted";
            return all(columns().find(column => column.title === place), isCard).length === 1
                    ? found[0] : null;
        }
        function moveBack(windowID, title) {
            tryVerify(() => card(title) !== null);
            world.board.moveWindow(windowID, "kelpa-unassigned");
            tryVerify(() => card(title) !== null);
        }

        /// What the open menu shows, from top to bottom: every text with its symbol.
        function menuEntries() {
            return all(root.parent, item => item instanceof T.MenuItem && item.visible)
                .sort((a, b) => a.y - b.y)
                .map(item => item instanceof AppMenuItem ? item.text + " (" + item.symbol + ")"
                                                         : item.text);
        }
        /// Items have their places one frame after the menu opens.
        function verifyMenu(entries) {
            tryVerify(() => menuEntries().join() === entries.join(), 1000, menuEntries().join());
        }
        function openMenuOf(title) {
            tryVerify(() => card(title) !== null);
            card(title).forceActiveFocus();
            keyClick(Qt.Key_Menu);
            tryVerify(() => menuItems().length > 1);
        }
        function closeMenu() {
            keyClick(Qt.Key_Escape);
            tryVerify(() => menuItems().length === 0);
        }
        function menuItems() {
            return all(root.parent, item => item instanceof AppMenuItem && item.visible);
        }
        /// By the keyboard: where the highlight starts depends on where the pointer rests.
        function choose(text) {
            const chosen = () => menuItems().find(item => item.text === text);
            tryVerify(() => chosen() !== undefined);
            for (let i = 0; i < menuItems().length && !chosen().highlighted; ++i)
                keyClick(Qt.Key_Down);
            for (let i = 0; i < menuItems().length && !chosen().highlighted; ++i)
                keyClick(Qt.Key_Up);
            verify(chosen().highlighted);
            keyClick(Qt.Key_Return);
            tryVerify(() => menuItems().length === 0);
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
            const report = card("Report");
            compare(report.windowID, 4294967295);
            compare(world.board.windowDragText(report.windowID), "4294967295");
            compare(all(report, item => item instanceof WindowPreview)[0].windowID, 4294967295);
            // The icon is asked for by that number too.
            compare(all(report, item => item.source?.toString()
                                        .startsWith("image://appicon/4294967295/")).length, 1);
            report.forceActiveFocus();
            keyClick(Qt.Key_Menu);
            choose("First");
            tryVerify(() => world.goalOfWindow(4294967295) === "First");
            moveBack(4294967295, "Report");
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
            tryVerify(() => menuItems().length === 3);
            choose("First");
            tryVerify(() => world.goalOfWindow(8) === "First");
            moveBack(8, "Letter");
        }
        function test_the_menu_of_a_card_shows_where_the_window_is_and_where_it_can_go() {
            openMenuOf("Letter");
            verifyMenu(["Move to goal", "First (circle)", "Unsorted (check)",
                        "New goal (plus)"]);
            const item = text => menuItems().find(each => each.text === text);
            verify(item("Unsorted").Accessible.checked);
            verify(!item("First").Accessible.checked);
            choose("First");
            tryVerify(() => world.goalOfWindow(8) === "First");
            openMenuOf("Letter");
            verifyMenu(["Move to goal", "First (check)", "Unsorted (circle)",
                        "New goal (plus)"]);
            // Where it is already.
            choose("First");
            compare(world.goalOfWindow(8), "First");
            moveBack(8, "Letter");
        }
        function test_the_menu_of_a_card_follows_the_order_of_the_goals() {
            world.board.createGoal("Second");
            world.board.createGoal("Third");
            openMenuOf("Letter");
            verifyMenu(["Move to goal", "First (circle)", "Second (circle)",
                        "Third (circle)", "Unsorted (check)", "New goal (plus)"]);
            closeMenu();
            verify(world.board.moveColumn(world.columnOfGoal("First"), 1));
            verify(world.board.moveColumn(world.columnOfGoal("Third"), -1));
            openMenuOf("Letter");
            verifyMenu(["Move to goal", "Second (circle)", "Third (circle)",
                        "First (circle)", "Unsorted (check)", "New goal (plus)"]);
            closeMenu();
            world.board.deleteGoal(world.columnOfGoal("Third"));
            world.board.createGoal("Fourth");
            openMenuOf("Letter");
            verifyMenu(["Move to goal", "Second (circle)", "First (circle)",
                        "Fourth (circle)", "Unsorted (check)", "New goal (plus)"]);
            choose("Fourth");
            tryVerify(() => world.goalOfWindow(8) === "Fourth");
            world.board.deleteGoal(world.columnOfGoal("Second"));
            world.board.deleteGoal(world.columnOfGoal("Fourth"));
            tryVerify(() => card("Letter") !== null);
        }
        function test_the_menu_of_a_card_stays_where_it_opened() {
            openMenuOf("Letter");
            const place = () => menuItems()[0].mapToItem(root, 0, 0);
            const before = place();
            // In a goal it has another place, and its card of now goes.
            world.board.moveWindow(8, world.columnOfGoal("First"));
            tryVerify(() => card("Letter") !== null);
            verify(menuItems().length > 1);
            compare(place(), before);
            closeMenu();
            moveBack(8, "Letter");
        }
        function test_the_menu_key_opens_the_menu_of_the_card_with_focus() {
            tryVerify(() => card("Letter") !== null);
            card("Letter").forceActiveFocus();
            keyClick(Qt.Key_Menu);
            choose("First");
            tryVerify(() => world.goalOfWindow(8) === "First");
            moveBack(8, "Letter");
        }
        function test_a_click_switches_to_the_window() {
            tryVerify(() => card("Letter") !== null);
            mouseClick(card("Letter"), 60, 110);
            tryVerify(() => card("Letter")?.isSelected ?? false);
            world.runPending();
            verify(world.calls().includes("raise Letter"));
        }
        function test_return_on_a_card_switches_to_its_window() {
            tryVerify(() => card("Report") !== null);
            card("Report").forceActiveFocus(Qt.TabFocusReason);
            keyClick(Qt.Key_Return);
            tryVerify(() => card("Report")?.isSelected ?? false);
            world.runPending();
            verify(world.calls().includes("raise Report"));
        }
        function test_an_assistive_program_switches_to_the_window() {
            tryVerify(() => card("Letter") !== null);
            const before = world.calls().length;
            card("Letter").Accessible.pressAction();
            world.runPending();
            verify(world.calls().slice(before).includes("raise Letter"));
        }
        function cardButton(title, symbol) {
            return all(card(title), item => item instanceof CardButton && item.symbol === symbol)[0];
        }
        function test_the_buttons_of_a_card_are_reached_by_keyboard() {
            tryVerify(() => card("Letter") !== null);
            card("Letter").forceActiveFocus();
            const close = cardButton("Letter", "x");
            compare(close.Accessible.name, "Close this app process");
            keyClick(Qt.Key_Tab);
            verify(cardButton("Letter", "ellipsis").activeFocus);
            keyClick(Qt.Key_Tab);
            verify(close.activeFocus);
            const before = world.calls().length;
            keyClick(Qt.Key_Return);
            world.runPending();
            verify(world.calls().slice(before).includes("quit 1000"));
        }
        function test_a_finger_reaches_the_close_button_of_a_card_at_rest() {
            mouseMove(root, 1090, 690);
            tryVerify(() => card("Report") !== null);
            const button = cardButton("Report", "x");
            verify(button.visible);
            const before = world.calls().length;
            touchEvent(button).press(0, button, 11, 11).commit();
            touchEvent(button).release(0, button, 11, 11).commit();
            world.runPending();
            verify(world.calls().slice(before).includes("quit 1000"));
        }
        function test_a_finger_moves_a_window_by_the_button_of_its_card() {
            tryVerify(() => card("Letter") !== null);
            const button = cardButton("Letter", "ellipsis");
            compare(button.Accessible.role, Accessible.ButtonMenu);
            compare(button.Accessible.name, "Move to goal");
            touchEvent(button).press(0, button, 11, 11).commit();
            touchEvent(button).release(0, button, 11, 11).commit();
            choose("First");
            tryVerify(() => world.goalOfWindow(8) === "First");
            moveBack(8, "Letter");
        }
        function test_an_assistive_program_takes_a_window_out_of_its_goal() {
            world.board.moveWindow(8, world.columnOfGoal("First"));
            tryVerify(() => card("Letter") !== null);
            cardButton("Letter", "ellipsis").Accessible.pressAction();
            tryVerify(() => menuItems().some(item => item.text === "Unsorted"));
            menuItems().find(item => item.text === "Unsorted").Accessible.pressAction();
            tryVerify(() => world.goalOfWindow(8) === "");
            tryVerify(() => menuItems().length === 0 && card("Letter") !== null);
        }
        function face(title) {
            return all(card(title), item => item.isPictured !== undefined
                                            && item.parent === card(title))[0];
        }
        function test_a_card_rises_under_the_pointer_and_gives_way_to_a_press() {
            world.clearSelection();
            mouseMove(root, 1090, 690);
            tryVerify(() => card("Report") !== null);
            const report = face("Report");
            tryCompare(report, "scale", 1);
            compare(report.opacity, 1);
            mouseMove(card("Report"), 60, 110);
            tryCompare(report, "scale", 1.012);
            compare(report.opacity, 1);
            mousePress(card("Report"), 60, 110);
            tryCompare(report, "scale", 0.985);
            compare(report.opacity, 0.82);
            mouseRelease(card("Report"), 60, 110);
            tryCompare(report, "scale", 1.012);
            compare(report.opacity, 1);
            mouseMove(root, 1090, 690);
            // The selected one stays raised.
            tryVerify(() => card("Report")?.isSelected ?? false);
            compare(report.scale, 1.012);
            world.clearSelection();
            tryCompare(report, "scale", 1);
        }
        function test_a_raised_card_has_no_seams() {
            tryVerify(() => card("Report") !== null);
            world.board.focusWindow(4294967295);
            for (let width = 900; width < 1010; width += 7) {
                board.anchors.rightMargin = root.width - width;
                waitForRendering(board);
                tryVerify(() => card("Report") !== null);
                const report = card("Report");
                tryCompare(face("Report"), "scale", 1.012);
                // Below the caption, from one round corner to the other.
                const at = report.mapToItem(board, 0, report.height - 5);
                const image = grabImage(board);
                const colors = new Set();
                for (let x = 6; x < report.width - 6; ++x)
                    colors.add(String(image.pixel(Math.round(at.x) + x, Math.round(at.y))));
                compare([width, colors.size], [width, 1]);
            }
            board.anchors.rightMargin = 0;
            world.clearSelection();
        }
        function test_the_ring_goes_from_the_column_to_the_card_that_is_selected() {
            // Of its own selection only: no keyboard focus.
            root.forceActiveFocus();
            tryVerify(() => card("Letter") !== null && columns().length === 2);
            const ring = item => all(item, each => each.parent === item && each instanceof Rectangle
                                                   && each.border.width === 2)[0];
            const unsorted = columns()[0];
            world.board.todos.goToColumn("kelpa-unassigned");
            tryVerify(() => unsorted.isSelected);
            verify(ring(unsorted).visible);
            verify(Qt.colorEqual(ring(unsorted).border.color, Theme.focus));
            compare(world.states(unsorted), ["selectable", "selected"]);
            tryVerify(() => card("Letter") !== null);
            verify(!ring(card("Letter")).visible);
            world.board.focusWindow(8);
            tryVerify(() => card("Letter")?.isSelected ?? false);
            verify(ring(card("Letter")).visible);
            compare(world.states(card("Letter")), ["selectable", "selected"]);
            compare(world.states(card("Report")), ["selectable"]);
            verify(Qt.colorEqual(ring(card("Letter")).border.color, Theme.focus));
            verify(!ring(card("Report")).visible);
            verify(ring(unsorted).visible);
            verify(Qt.colorEqual(ring(unsorted).border.color, Theme.enteredOutline));
            world.clearSelection();
            tryVerify(() => !ring(unsorted).visible);
        }
        function test_a_card_shows_a_message_and_then_the_preview() {
            world.addWindow(11, "Fresh");
            tryVerify(() => card("Fresh") !== null);
            compare(card("Fresh").previewMessage, "This window cannot be captured yet");
            for (let i = 0; i < 3; ++i)
                world.capture();
            tryVerify(() => card("Fresh") !== null && card("Fresh").previewRevision !== 0);
            compare(card("Fresh").previewMessage, "");
            const middle = () => {
                const fresh = card("Fresh");
                const at = fresh.mapToItem(board, fresh.width / 2, 40);
                return grabImage(board).pixel(at.x, at.y);
            };
            tryVerify(() => Qt.colorEqual(middle(), "#ff0000"));
            world.removeWindow(11);
        }
        function test_the_tip_of_a_card_has_a_title_that_is_cut_off() {
            const title = "A title that is far too long for any card of the board to show it";
            world.addWindow(12, title);
            tryVerify(() => card(title) !== null);
            const tip = all(card(title), item => item instanceof HoverTip)
                .find(item => item.parent === card(title));
            tryCompare(tip, "text",
                       title + "\nClick to switch to the window; drag to another goal");
            world.removeWindow(12);
        }
        function test_the_tip_of_a_card_goes_when_it_is_pressed_and_comes_with_the_pointer() {
            tryVerify(() => card("Report") !== null);
            const report = card("Report");
            const tip = all(report, item => item instanceof HoverTip)
                .find(item => item.parent === report);
            mouseMove(report, 60, 110);
            tryVerify(() => tip.active);
            mousePress(report, 60, 110);
            verify(!tip.active);
            mouseRelease(report, 60, 110);
            verify(!tip.active);
            mouseMove(root, 1090, 690);
            mouseMove(report, 60, 110);
            tryVerify(() => tip.active);
            mouseMove(root, 1090, 690);
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
        function test_the_menu_of_a_card_makes_a_goal_for_it() {
            tryVerify(() => card("Letter") !== null);
            card("Letter").forceActiveFocus();
            keyClick(Qt.Key_Menu);
            choose(world.board.copy.text(CopyKey.NewGoal));
            tryVerify(() => root.Window.activeFocusItem instanceof TextInputField);
            for (const letter of "new")
                keyClick(letter);
            keyClick(Qt.Key_Return);
            tryVerify(() => world.goalOfWindow(8) === "new");
            tryVerify(() => all(root.parent, item => item instanceof TextInputField
                                                     && item.visible).length === 0);
            world.board.deleteGoal(world.columnOfGoal("new"));
            tryVerify(() => world.goalOfWindow(8) === "");
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
            choose("Move goal later");
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
        function test_a_title_of_spaces_shows_as_a_window() {
            world.addWindow(10, "   ");
            tryVerify(() => card("Window") !== null);
            compare(card("Window").Accessible.name, "App 1000: Window");
            world.removeWindow(10);
        }
        /// The colour in the middle of a card's icon; of the symbol, that of the card behind it.
        function iconColor(title) {
            const place = all(card(title), item => item instanceof CardCaption)[0].children[0];
            const at = place.mapToItem(board, 10, 10);
            return grabImage(board).pixel(at.x, at.y);
        }
        function hasSymbol(title) {
            return all(card(title), item => item instanceof AppIcon && item.visible
                                            && item.name === "app-window").length === 1;
        }
        function test_the_icon_of_a_window_takes_the_place_of_the_symbol_when_it_comes() {
            world.addWindow(13, "Late");
            tryVerify(() => card("Late") !== null && hasSymbol("Late"));
            tryVerify(() => Qt.colorEqual(iconColor("Late"), Theme.card));
            world.setIcon(13);
            // The window draws itself.
            tryVerify(() => {
                world.capture();
                return card("Late") !== null && Qt.colorEqual(iconColor("Late"), "#ff0000");
            });
            verify(!hasSymbol("Late"));
            world.removeWindow(13);
        }
        function test_the_icon_of_an_application_comes_when_it_becomes_known() {
            world.addWindow(14, "Unknown");
            tryVerify(() => card("Unknown") !== null && hasSymbol("Unknown"));
            tryVerify(() => Qt.colorEqual(iconColor("Unknown"), Theme.card));
            world.recognizeApplication();
            tryVerify(() => Qt.colorEqual(iconColor("Unknown"), "#00ff00"));
            verify(!hasSymbol("Unknown"));
            world.forgetApplication();
            tryVerify(() => hasSymbol("Unknown"));
            world.removeWindow(14);
        }
    }
}
