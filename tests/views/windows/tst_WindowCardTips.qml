import QtQuick
import QtTest
import Kelpa.Appearance
import Kelpa.Controls
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

    WindowCase {
        name: "WindowCardTips"
        goalBoard: board

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
        function test_the_tip_of_a_card_has_a_message_for_which_large_texts_leave_no_room() {
            world.addWindow(12, "Short");
            world.hideWindow(12);
            const message = () => card("Short")?.previewMessage ?? "";
            tryVerify(() => message() !== "");
            const tip = all(card("Short"), item => item instanceof HoverTip)
                .find(item => item.parent === card("Short"));
            const hasMessage = () => tip.text.split("\n").includes(message());
            verify(!hasMessage());
            ViewSettings.textScale = 2;
            tryVerify(() => hasMessage());
            ViewSettings.textScale = 1;
            tryVerify(() => !hasMessage());
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
    }
}
