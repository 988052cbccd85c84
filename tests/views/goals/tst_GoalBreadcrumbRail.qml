import QtQuick
import QtTest
import Kelpa.Appearance
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

    BigBoardCase {
        name: "GoalBreadcrumbRail"
        goalBoard: board

        /// Not one that waits to be used for another goal.
        function entry(title) {
            const list = only(all(board, item => item instanceof ListView
                                                 && item.model === world.board.goals.breadcrumbs));
            for (let row = 0; row < list.count; ++row)
                if (list.itemAtIndex(row)?.text === title)
                    return list.itemAtIndex(row);
            return null;
        }
        function isAfter(item, before) {
            const items = Array.from(before.parent.children);
            return item !== null && items.indexOf(item) > items.indexOf(before);
        }
        function test_a_click_on_the_rail_selects_and_expands_a_goal() {
            mouseClick(entry("(0)" + goal(3)));
            compare(world.selectedGoal(), goal(3));
            settle();
            verify(column(goal(3)).isExpanded);
            compare(entry("(0)" + goal(3)).opacity, 1);
            compare(entry("(0)" + goal(2)).opacity, 0.65);
            compare(entry("(0)" + goal(2)).height, 18);
        }
        function test_a_click_on_the_rail_brings_the_goal_back_that_is_selected_already() {
            select(3);
            settle();
            view().contentY = 9000;
            settle();
            compare(view().contentY, 9000);
            mouseClick(entry("(0)" + goal(3)));
            tryVerify(() => view().contentY < 9000 && !isMoving());
            compare(world.selectedGoal(), goal(3));
            verify(isInView(column(goal(3))));
            // Who clicks on its card sees it.
            const card = column(goal(3));
            const place = card.mapToItem(view().contentItem, 0, 0).y;
            view().contentY = place + 20;
            settle();
            mouseClick(card, 60, 30);
            verify(!isMoving());
            compare(view().contentY, place + 20);
        }
        function test_a_click_on_the_rail_shows_the_goal_and_not_the_todo_that_undo_gave_back() {
            for (let i = 0; i < 60; ++i)
                world.addTodo("Todo " + i, goal(3));
            const id = world.todoID("Todo 45", goal(3));
            world.board.todos.remove(id, world.columnOfGoal(goal(3)));
            select(3);
            settle();
            world.board.undo();
            compare(world.board.todos.highlightedTodoID, id);
            tryVerify(() => !isMoving());
            mouseClick(entry("(60)" + goal(3)));
            compare(world.board.todos.highlightedTodoID, "");
            // What is too high for the view begins in it.
            const top = () => column(goal(3)).mapToItem(view(), 0, 0).y;
            tryVerify(() => !isMoving() && top() >= 0 && top() < 100);
        }
        function test_the_rail_has_entries_only_where_it_shows_them() {
            const entries = all(board, item => item instanceof MarqueeGoalTitle);
            verify(entries.length > 20);
            verify(entries.length < 80, entries.length);
        }
        function relativeLuminance(color) {
            const linear = each => each <= 0.04045 ? each / 12.92 : Math.pow((each + 0.055) / 1.055, 2.4);
            return 0.2126 * linear(color.r) + 0.7152 * linear(color.g) + 0.0722 * linear(color.b);
        }
        function contrast(one, other) {
            const lights = [relativeLuminance(one), relativeLuminance(other)].sort((a, b) => b - a);
            return (lights[0] + 0.05) / (lights[1] + 0.05);
        }
        function test_entries_at_rest_are_readable() {
            tryVerify(() => entry("(0)" + goal(1)) !== null);
            const texts = {"dark": ["#f1f2f4", "#2a2c32", "#202125"],
                           "light": ["#191b1f", "#e6eaf2", "#eff0f3"]};
            const [text, ...grounds] = texts[Theme.isDark ? "dark" : "light"];
            compare([Theme.text, Theme.railTop, Theme.railBottom].map(String), [text, ...grounds]);
            for (const appearance of ["dark", "light"]) {
                const [own, top, bottom] = texts[appearance];
                for (const ground of [top, bottom]) {
                    const seen = Qt.tint(ground, Qt.alpha(own, entry("(0)" + goal(1)).opacity));
                    verify(contrast(seen, Qt.color(ground)) >= 4.5, appearance);
                }
            }
        }
        function test_the_rail_shows_colours_and_grows_under_the_pointer_without_moving_the_board() {
            const rail = only(all(board, item => item instanceof GoalBreadcrumbRail));
            const dot = all(entry("(0)" + goal(1)), item => item instanceof Rectangle
                                                            && item.width === 6)[0];
            verify(Qt.colorEqual(dot.color, Theme.accentColor("blue")));
            mouseMove(root, 1000, 690);
            tryCompare(rail, "width", 116);
            world.board.goals.renameGoal(world.columnOfGoal(goal(2)), longTitle);
            tryVerify(() => entry("(0)" + longTitle) !== null);
            const place = targets().mapToItem(board, 0, 0).x;
            // As on a desktop with a pointer.
            entry("(0)" + goal(1)).hoverEnabled = true;
            mouseMove(entry("(0)" + goal(1)), 20, 9);
            tryCompare(rail, "width", 240);
            compare(entry("(0)" + goal(1)).opacity, 1);
            compare(entry("(0)" + goal(1)).mapToItem(rail, 0, 0).x, 14);
            compare(targets().mapToItem(board, 0, 0).x, place);
            mouseMove(root, 1000, 690);
            tryCompare(rail, "width", 116);
            compare(entry("(0)" + goal(1)).opacity, 0.65);
            // It grows only as far as the titles that it has by now.
            world.board.goals.renameGoal(world.columnOfGoal(longTitle), goal(2));
            tryVerify(() => entry("(0)" + goal(2)) !== null);
            mouseMove(entry("(0)" + goal(1)), 20, 9);
            tryVerify(() => entry("(0)" + goal(1)).hovered);
            tryVerify(() => rail.implicitWidth === Math.max(116, rail.widestTitle + 34));
            verify(rail.widestTitle + 34 < 200, rail.widestTitle);
            mouseMove(root, 1000, 690);
            tryCompare(rail, "width", 116);
        }
        function test_the_rail_is_116_points_wide_with_14_around_entries_18_high() {
            mouseMove(root, 1000, 690);
            const rail = only(all(board, item => item instanceof GoalBreadcrumbRail));
            tryCompare(rail, "width", 116);
            compare(rail.width, 116);
            const first = entry("(0)" + goal(1));
            const place = first.mapToItem(rail, 0, 0);
            compare(place.x, 14);
            compare(place.y, 14);
            compare(first.width, 116 - 28);
            compare(first.height, 18);
            compare(first.background.radius, 7);
            compare(first.opacity, 0.65);
            const list = first.ListView.view;
            compare(list.height, rail.height - 28);
        }
        function test_a_wide_title_passes_by_in_its_card_while_that_is_selected_and_on_the_screen() {
            const wide = longTitle;
            world.board.goals.renameGoal(world.columnOfGoal(goal(1)), wide);
            tryVerify(() => column(wide) !== null);
            const title = only(all(column(wide), item => item instanceof MarqueeGoalTitle));
            compare(title.text, wide);
            verify(!title.isMoving);
            verify(title.isTruncated);
            world.board.goals.goToColumn(world.columnOfGoal(wide));
            settle();
            verify(title.isMoving);
            compare(title.measure.travel, title.measure.textWidth + 15);
            tryVerify(() => title.offset < -2);
            // Just above what shows, where the card still is.
            const below = title.mapToItem(view().contentItem, 0, title.height).y;
            view().contentY = below - 1;
            verify(title.isMoving);
            view().contentY = below + 1;
            verify(!title.isMoving);
            compare(only(all(column(wide), item => item instanceof MarqueeGoalTitle)), title);
            view().contentY = 0;
            verify(title.isMoving);
            world.clearSelection();
            verify(!title.isMoving);
        }
        function test_the_tab_key_walks_the_rail_beyond_what_it_shows() {
            const rail = only(all(board, item => item instanceof GoalBreadcrumbRail));
            select(1);
            entry("(0)" + goal(1)).forceActiveFocus();
            for (let number = 2; number <= 40; ++number) {
                // Those beyond what shows are made, and put in their order, between frames.
                tryVerify(() => isAfter(entry("(0)" + goal(number)),
                                        entry("(0)" + goal(number - 1))));
                keyClick(Qt.Key_Tab);
                const focused = root.Window.activeFocusItem;
                compare(focused.text, "(0)" + goal(number));
                const top = focused.mapToItem(rail, 0, 0).y;
                verify(top >= 14, top);
                verify(top + 18 <= rail.height - 14, top);
            }
        }
        function test_the_arrow_keys_bring_the_entry_of_the_last_goal_into_view() {
            select(199);
            tryVerify(() => entry("(0)" + goal(199)) !== null);
            world.moveSelection(Qt.Key_Right);
            compare(world.selectedGoal(), goal(200));
            tryVerify(() => entry("(0)" + goal(200)) !== null);
            const rail = only(all(board, item => item instanceof GoalBreadcrumbRail));
            const last = entry("(0)" + goal(200));
            compare(last.opacity, 1);
            const top = last.mapToItem(rail, 0, 0).y;
            verify(top >= 14, top);
            verify(top + last.height <= rail.height - 14, top);
            // Below what is unsorted, and scrolled to from below: the first that shows.
            world.board.goals.goToColumn("kelpa-unassigned");
            world.moveSelection(Qt.Key_Down);
            compare(world.selectedGoal(), goal(2));
            tryVerify(() => entry("(0)" + goal(2)) !== null);
            compare(entry("(0)" + goal(2)).mapToItem(rail, 0, 0).y, 14);
        }
    }
}
