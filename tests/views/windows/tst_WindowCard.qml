import QtQuick
import QtTest
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

    TextMetrics {
        id: measure

        text: "…/Taxes and insurance/letter.txt"
    }
    TextMetrics {
        id: shortened

        font: measure.font
        text: "…/letter.txt"
    }

    WindowCase {
        name: "WindowCard"
        goalBoard: board

        function test_cards_are_list_items_named_by_owner_and_title() {
            tryVerify(() => card("Report") !== null);
            compare(card("Report").Accessible.name, "App 1000: Report");
            compare(card("Report").Accessible.role, Accessible.ListItem);
        }
        function test_a_card_survives_what_happens_to_its_neighbour() {
            tryVerify(() => card("Report") !== null);
            const before = card("Report");
            world.addWindow(9, "Newcomer");
            tryVerify(() => card("Newcomer") !== null);
            world.board.windows.moveWindow(9, world.columnOfGoal("First"));
            compare(card("Report"), before);
            world.removeWindow(9);
            tryVerify(() => card("Newcomer") === null);
            compare(card("Report"), before);
        }
        function test_a_click_switches_to_the_window() {
            tryVerify(() => card("Letter") !== null);
            mouseClick(card("Letter"), 60, 110);
            tryVerify(() => card("Letter")?.isSelected ?? false);
            world.runPending();
            verify(world.calls().includes("raise Letter"));
        }
        function test_a_card_too_narrow_for_a_path_shows_the_name_of_the_file() {
            const title = "/home/anna/Documents/2026/Taxes and insurance/letter.txt";
            world.addWindow(23, title);
            tryVerify(() => card(title) !== null);
            const caption = only(all(card(title), item => item instanceof CardCaption));
            const text = only(all(caption, item => item instanceof AppText && item.text.startsWith(title)));
            measure.font = text.font;
            verify(measure.advanceWidth > text.width);
            verify(caption.isElided);
            fuzzyCompare(text.contentWidth, shortened.advanceWidth, 1);
            compare(card(title).Accessible.name, "App 1000: " + title);
            world.removeWindow(23);
        }
        function marks(title) {
            return only(all(card(title), item => item instanceof CardMarks));
        }
        function test_a_window_of_another_desktop_has_a_badge_until_it_is_back() {
            tryVerify(() => card("Report") !== null);
            const help = card("Report").Accessible.description;
            const width = marks("Report").width;
            world.moveToDesktop(4294967295, "Web");
            const badge = only(all(marks("Report"), item => item.text === "Web"));
            verify(badge !== null && !badge.truncated);
            compare(card("Report").Accessible.description, help + "\nOn desktop “Web”");
            compare(all(card("Letter"), item => item.text === "Web").length, 0);
            world.moveToDesktop(4294967295, "desktop 2");
            compare(all(marks("Report"), item => item.truncated ?? false).length, 0);
            world.moveToDesktop(4294967295, "A desktop whose number no card has room for: 12");
            verify(only(all(marks("Report"), item => item.text === "12")) !== null);
            world.moveToDesktop(4294967295, "A desktop with a name that no card has room for");
            const cutOff = only(all(marks("Report"), item => item.truncated ?? false));
            verify(cutOff !== null);
            verify(marks("Report").x > marks("Report").parent.width / 4);
            world.moveToDesktop(4294967295, "");
            tryVerify(() => marks("Report").width === width);
            compare(card("Report").Accessible.description, help);
        }
        function test_a_window_whose_dialog_waits_says_so() {
            tryVerify(() => card("Letter") !== null);
            const help = card("Letter").Accessible.description;
            const symbols = () => all(marks("Letter"), item => item.name === "message-question");
            compare(symbols().length, 0);
            world.setAwaitingAnswer(8, true);
            compare(symbols().length, 1);
            compare(card("Letter").Accessible.description, help + "\nA dialog waits for an answer");
            world.setAwaitingAnswer(8, false);
            tryVerify(() => symbols().length === 0);
            compare(card("Letter").Accessible.description, help);
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
        function test_what_the_desktop_cannot_do_is_not_offered() {
            tryVerify(() => card("Letter") !== null);
            world.lack("quitting");
            compare(cardButton("Letter", "x").Accessible.name, "Close this window");
            world.lack("actions");
            verify(!cardButton("Letter", "x").visible);
            compare(card("Letter").Accessible.description, "Drag to another goal");
            world.lackNothing();
            verify(cardButton("Letter", "x").visible);
        }
        function test_the_buttons_of_a_card_are_reached_by_keyboard() {
            tryVerify(() => card("Letter") !== null);
            card("Letter").forceActiveFocus();
            const menu = cardButton("Letter", "ellipsis");
            const close = cardButton("Letter", "x");
            compare(close.Accessible.name, "Close this app process");
            keyClick(Qt.Key_Tab);
            verify(menu.activeFocus);
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
            const tap = () => {
                touchEvent(button).press(0, button, 11, 11).commit();
                touchEvent(button).release(0, button, 11, 11).commit();
                world.runPending();
            };
            // A person who did not see it meant something else.
            verify(!button.isShown);
            tap();
            verify(button.isShown);
            verify(!world.calls().slice(before).includes("quit 1000"));
            tap();
            verify(world.calls().slice(before).includes("quit 1000"));
        }
        function test_the_buttons_of_a_card_show_with_the_pointer_the_keyboard_and_the_selection() {
            mouseMove(root, 1090, 690);
            world.clearSelection();
            tryVerify(() => card("Report") !== null);
            const shown = () => card("Report") === null ? [] : ["ellipsis", "x"].map(symbol => {
                const button = cardButton("Report", symbol);
                compare(button.contentItem.visible, button.isShown);
                compare(button.background.visible, button.isShown);
                // Assistive programs find it all the same.
                verify(button.visible);
                return button.isShown;
            });
            tryVerify(() => shown().length === 2 && !shown().some(each => each));
            mouseMove(card("Report"), 60, 110);
            tryVerify(() => shown().length === 2 && shown().every(each => each));
            mouseMove(root, 1090, 690);
            tryVerify(() => shown().length === 2 && !shown().some(each => each));
            world.board.windows.selectWindow(card("Report").windowID);
            tryVerify(() => shown().length === 2 && shown().every(each => each));
            world.clearSelection();
            tryVerify(() => shown().length === 2 && !shown().some(each => each));
            const close = cardButton("Report", "x");
            close.forceActiveFocus(Qt.TabFocusReason);
            verify(close.isShown);
            close.focus = false;
            // An assistive program presses what does not show.
            world.clearSelection();
            tryVerify(() => shown().length === 2);
            const before = world.calls().length;
            cardButton("Report", "x").Accessible.pressAction();
            world.runPending();
            verify(world.calls().slice(before).includes("quit 1000"));
        }
        function test_a_card_shows_a_message_and_then_the_preview() {
            world.addWindow(11, "Fresh");
            tryVerify(() => card("Fresh") !== null);
            compare(card("Fresh").previewMessage, "");
            world.captureInVain();
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
        function test_the_tip_of_a_card_has_a_text_that_is_cut_off_data() {
            const longText = "A text that is far too long for any card of the board to show it";
            return [
                {tag: "title", title: longText, owner: "Mail"},
                {tag: "name of the application", title: "Short", owner: longText}
            ];
        }
        function test_the_tip_of_a_card_has_a_text_that_is_cut_off(data) {
            const help = "Click to switch to the window; drag to another goal";
            world.addWindow(12, data.title);
            world.nameOwner(12, data.owner);
            tryVerify(() => card(data.title) !== null);
            const tip = all(card(data.title), item => item instanceof HoverTip)
                .find(item => item.parent === card(data.title));
            tryCompare(tip, "text", data.title + "\n" + data.owner + "\n" + help);
            // Not where everything can be read.
            world.nameOwner(12, "Mail");
            if (data.title === "Short")
                tryCompare(tip, "text", help);
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
        function test_a_key_takes_the_tip_away_until_the_pointer_comes_again() {
            tryVerify(() => card("Report") !== null);
            const report = card("Report");
            const tip = all(report, item => item instanceof HoverTip)
                .find(item => item.parent === report);
            mouseMove(report, 60, 110);
            tryVerify(() => tip.active);
            keyClick(Qt.Key_Shift);
            verify(!tip.active);
            mouseMove(report, 62, 110);
            verify(!tip.active);
            mouseMove(root, 1090, 690);
            mouseMove(report, 60, 110);
            tryVerify(() => tip.active);
            mouseMove(root, 1090, 690);
        }
        function test_a_title_of_spaces_shows_as_a_window() {
            world.addWindow(10, "   ");
            tryVerify(() => card("Window") !== null);
            compare(card("Window").Accessible.name, "App 1000: Window");
            world.removeWindow(10);
        }
    }
}
