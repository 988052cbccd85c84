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
        function test_a_title_of_spaces_shows_as_a_window() {
            world.addWindow(10, "   ");
            tryVerify(() => card("Window") !== null);
            compare(card("Window").Accessible.name, "App 1000: Window");
            world.removeWindow(10);
        }
    }
}
