import QtQuick
import QtTest
import Kelpa.Appearance
import Kelpa.Goals

Item {
    id: root

    width: 900
    height: 620

    MouseArea {
        id: beneath

        property int clickCount: 0

        anchors.fill: parent
        onClicked: ++beneath.clickCount
    }
    TitleSheet {
        id: sheet

        goals: world.board.goals
        title: "Create a goal"
        explanation: "Describe it."
        placeholder: "e.g."
        fieldLabel: "Goal name"
        confirmLabel: "Create"
    }
    SignalSpy {
        id: confirmed

        target: sheet
        signalName: "confirmed"
    }

    TestCase {
        name: "TitleSheet"
        when: windowShown

        function init() {
            confirmed.clear();
            sheet.ask("");
            tryCompare(sheet, "opened", true);
        }
        function cleanup() {
            sheet.close();
            tryCompare(sheet, "visible", false);
        }

        function test_is_390_wide() {
            compare(sheet.width, 390);
        }
        function test_typing_goes_to_the_field_and_return_confirms() {
            keyClick("a");
            keyClick("b");
            keyClick(Qt.Key_Return);
            compare(confirmed.count, 1);
            compare(confirmed.signalArguments[0][0], "ab");
            tryCompare(sheet, "visible", false);
        }
        function test_return_on_a_blank_title_keeps_the_sheet_open() {
            keyClick(Qt.Key_Space);
            keyClick(Qt.Key_Return);
            compare(confirmed.count, 0);
            verify(sheet.opened);
        }
        function test_return_while_an_input_method_composes_confirms_nothing() {
            keyClick("a");
            world.compose("\u304b");
            keyClick(Qt.Key_Return);
            compare(confirmed.count, 0);
            verify(sheet.opened);
            world.compose("");
            // One that comes with the end of the composition would be the input method's.
            tryVerify(() => {
                keyClick(Qt.Key_Return);
                return confirmed.count === 1;
            });
        }
        function test_escape_closes_without_confirming() {
            keyClick("a");
            keyClick(Qt.Key_Escape);
            tryCompare(sheet, "visible", false);
            compare(confirmed.count, 0);
        }
        function test_the_confirming_button_is_reached_by_the_tab_key() {
            keyClick("a");
            keyClick(Qt.Key_Tab);
            keyClick(Qt.Key_Tab);
            keyClick(Qt.Key_Space);
            compare(confirmed.count, 1);
        }
        function test_a_long_title_comes_back_whole() {
            sheet.close();
            tryCompare(sheet, "visible", false);
            sheet.ask("x".repeat(100000));
            tryCompare(sheet, "opened", true);
            keyClick(Qt.Key_Return);
            compare(confirmed.signalArguments[0][0].length, 100000);
        }
        function test_dims_and_covers_what_lies_beneath_each_time_it_opens() {
            for (let times = 0; times < 2; ++times) {
                beneath.clickCount = 0;
                const dims = () => Array.from(sheet.parent.children).some(
                    item => item.visible && item.width === root.Window.width
                            && Qt.colorEqual(item.color ?? "transparent", Theme.scrim));
                tryVerify(dims);
                mouseClick(root, 10, 10);
                compare(beneath.clickCount, 0);
                sheet.close();
                mouseClick(root, 10, 10);
                compare(beneath.clickCount, 1);
                tryCompare(sheet, "visible", false);
                verify(!dims());
                sheet.ask("");
                tryCompare(sheet, "opened", true);
            }
        }
        function test_opens_with_the_title_to_be_changed_selected() {
            sheet.close();
            tryCompare(sheet, "visible", false);
            sheet.ask("Old");
            tryCompare(sheet, "opened", true);
            keyClick("n");
            keyClick(Qt.Key_Return);
            compare(confirmed.signalArguments[0][0], "n");
        }
    }
}
