import QtQuick
import QtTest
import Kelpa.Appearance
import Kelpa.Controls
import Kelpa.Board
import "../cases/Search.js" as Search

/// Keys that are pressed while a sheet opens or fades away.
Item {
    width: 10
    height: 10

    Main {
        id: main

        width: 1000
        height: 700
        visible: true
        board: world.board

        SignalSpy {
            id: confirmations

            signalName: "confirmed"
        }
        TestCase {
            name: "SheetFading"
            when: windowShown

            function init() {
                main.requestActivate();
                tryVerify(() => main.active);
                tryVerify(() => !scrim());
                // Otherwise, nothing fades.
                verify(Theme.shortTime > 0);
            }
            function shown(accepts) {
                return Search.all(main.overlay, item => item.visible && accepts(item));
            }
            function scrim(): bool {
                return shown(() => true).length > 1;
            }
            function keys() {
                return main.sheets().keysSheet;
            }

            function test_F1_closes_the_keys_before_they_have_opened_and_opens_them_before_they_have_faded() {
                keyClick(Qt.Key_F1);
                verify(!keys().opened);
                keyClick(Qt.Key_F1);
                verify(keys().isFading);
                keyClick(Qt.Key_F1);
                verify(!keys().isFading);
                tryVerify(() => keys().opened);
                verify(keys().modal);
                verify(keys().opacity === 1);
                keyClick(Qt.Key_F1);
                keyClick(Qt.Key_F1);
                keyClick(Qt.Key_F1);
                tryVerify(() => !keys().visible);
            }
            function test_Escape_closes_the_keys_before_they_have_opened() {
                keyClick(Qt.Key_F1);
                verify(!keys().opened);
                keyClick(Qt.Key_Escape);
                verify(keys().isFading);
                tryVerify(() => !keys().visible);
                verify(keys().modal);
            }
            function test_a_click_on_a_sheet_that_fades_presses_none_of_its_buttons() {
                keyClick(Qt.Key_N, Qt.ControlModifier);
                const sheet = main.sheets().createSheet;
                tryVerify(() => sheet.opened);
                keyClick("a");
                const create = shown(item => item instanceof AppButton && item.text === sheet.confirmLabel)[0];
                verify(create.enabled);
                const place = create.mapToItem(main.contentItem, create.width / 2, create.height / 2);
                confirmations.target = sheet;
                confirmations.clear();
                keyClick(Qt.Key_Escape);
                verify(sheet.isFading);
                mouseClick(main.contentItem, place.x, place.y);
                compare(confirmations.count, 0);
                // It looks as before.
                verify(create.enabled);
                compare(create.opacity, 1);
                verify(sheet.isFading);
                tryVerify(() => !sheet.visible);
                // It can be used again.
                keyClick(Qt.Key_N, Qt.ControlModifier);
                tryVerify(() => sheet.opened);
                keyClick("a");
                mouseClick(main.contentItem, place.x, place.y);
                compare(confirmations.count, 1);
            }
            function test_a_sheet_opens_while_another_one_fades() {
                keyClick(Qt.Key_F1);
                keyClick(Qt.Key_Escape);
                verify(keys().isFading);
                keyClick(Qt.Key_N, Qt.ControlModifier);
                tryVerify(() => main.activeFocusItem instanceof TextInputField);
                keyClick("a");
                keyClick(Qt.Key_Escape);
                verify(main.sheets().createSheet.isFading);
                keyClick(Qt.Key_N, Qt.ControlModifier);
                verify(!main.sheets().createSheet.isFading);
                keyClick("b");
                tryVerify(() => main.sheets().createSheet.opened);
                compare((main.activeFocusItem as TextInputField).text, "b");
                verify(!keys().visible);
                keyClick(Qt.Key_Escape);
            }
        }
    }
}
