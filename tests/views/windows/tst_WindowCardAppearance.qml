import QtQuick
import QtTest
import Kelpa.Appearance
import Kelpa.Controls
import Kelpa.Windows
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

    Item {
        id: lens

        readonly property real ratio: Screen.devicePixelRatio
    }

    WindowCase {
        name: "WindowCardAppearance"
        goalBoard: board

        function cardItem(title) {
            return all(card(title), item => item.tilt !== undefined
                                            && item.parent === card(title))[0];
        }
        /// A picture of the item in pixels of the screen, which also count the rects of a grab.
        function grabOf(item) {
            const place = item.mapToItem(root, 0, 0);
            lens.x = Math.round(place.x * lens.ratio);
            lens.y = Math.round(place.y * lens.ratio);
            lens.width = Math.ceil(item.width * lens.ratio);
            lens.height = Math.ceil(item.height * lens.ratio);
            return grabImage(lens);
        }
        function test_a_card_rises_under_the_pointer_and_gives_way_to_a_press() {
            world.clearSelection();
            mouseMove(root, 1090, 690);
            tryVerify(() => card("Report") !== null);
            const report = cardItem("Report");
            tryCompare(report, "scale", 1);
            compare(report.opacity, 1);
            mouseMove(card("Report"), 60, 110);
            tryCompare(report, "scale", 1.012);
            compare(report.opacity, 1);
            mousePress(card("Report"), 60, 110);
            tryCompare(report, "scale", 0.985);
            compare(report.opacity, 0.82);
            // Towards the middle of the card, as all of it.
            const pressed = button => button.mapToItem(card("Report"), Qt.rect(0, 0, 22, 22));
            const menu = pressed(cardButton("Report", "ellipsis"));
            const close = pressed(cardButton("Report", "x"));
            const inset = 4 * 0.985 + 0.0075 * card("Report").width;
            fuzzyCompare(menu.width, 22 * 0.985, 0.001);
            fuzzyCompare(close.width, 22 * 0.985, 0.001);
            fuzzyCompare(menu.x, inset, 0.001);
            fuzzyCompare(close.x + close.width, card("Report").width - inset, 0.001);
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
        function test_nothing_but_the_card_is_beside_a_preview() {
            world.clearSelection();
            mouseMove(root, 1090, 690);
            tryVerify(() => card("Report") !== null);
            tryCompare(cardItem("Report"), "scale", 1);
            const preview = () => all(card("Report"), item => item instanceof CardPreview)[0];
            const colors = () => {
                const at = preview().mapToItem(board, 0, 36);
                const image = grabImage(board);
                return [1, preview().width - 2].map(x => String(image.pixel(Math.round(at.x + x),
                                                                            Math.round(at.y))));
            };
            const plain = String(Theme.card);
            world.capture();
            tryVerify(() => preview().revision !== 0);
            tryVerify(() => String(colors()) === String([plain, plain]));
        }
        function test_a_raised_card_has_no_seams() {
            tryVerify(() => card("Report") !== null);
            world.board.windows.focusWindow(4294967295);
            for (let width = 900; width < 1010; width += 7) {
                board.anchors.rightMargin = root.width - width;
                waitForRendering(board);
                tryVerify(() => card("Report") !== null);
                const report = card("Report");
                tryCompare(cardItem("Report"), "scale", 1.012);
                // Below the caption, from one round corner to the other.
                const ground = String(Qt.tint(Theme.card, Theme.accepting));
                const image = grabOf(report);
                const colors = new Set();
                for (let x = 6; x < report.width - 6; ++x)
                    colors.add(String(image.pixel(Math.round(x * lens.ratio),
                                                  Math.round((report.height - 5) * lens.ratio))));
                compare([width, ...colors], [width, ground]);
            }
            board.anchors.rightMargin = 0;
            world.clearSelection();
        }
        function test_the_ring_goes_from_the_column_to_the_card_that_is_selected() {
            // Of its own selection only: no keyboard focus.
            root.forceActiveFocus();
            tryVerify(() => card("Letter") !== null && columns().length === 2);
            const isOf = (each, item) => each.parent === item
                    || (each.parent instanceof FocusRing && each.parent.parent === item);
            const ring = item => all(item, each => each instanceof Rectangle && isOf(each, item)
                                                   && each.border.width === 2)[0];
            const unsorted = columns()[0];
            world.board.goals.goToColumn("kelpa-unassigned");
            tryVerify(() => unsorted.isSelected);
            verify(ring(unsorted).visible);
            verify(Qt.colorEqual(ring(unsorted).border.color, Theme.focus));
            compare(world.states(unsorted), ["selectable", "selected"]);
            tryVerify(() => card("Letter") !== null);
            verify(!(ring(card("Letter"))?.visible ?? false));
            world.board.windows.focusWindow(8);
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
        function test_a_window_that_carries_another_icon_shows_it() {
            world.addWindow(17, "Changing");
            world.setIcon(17);
            tryVerify(() => {
                world.capture();
                return card("Changing") !== null && Qt.colorEqual(iconColor("Changing"), "#ff0000");
            });
            world.replaceIcon(17);
            tryVerify(() => Qt.colorEqual(iconColor("Changing"), "#0000ff"));
            verify(!hasSymbol("Changing"));
            world.removeWindow(17);
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
