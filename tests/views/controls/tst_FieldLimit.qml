import QtQuick
import QtTest
import Kelpa.Controls
import "../cases"

/// What happens in every kind of field with more than it takes.
FieldsView {
    id: root

    TextInput {
        id: source

        maximumLength: 100000
        visible: false
    }

    CompositionCase {
        name: "FieldLimit"
        scene: root

        readonly property string tooLong: "Too long: at most 50000 characters fit here. "
                                          + "Nothing was inserted."

        function offer(text) {
            source.text = text;
            source.selectAll();
            source.copy();
        }
        function paste() {
            keyClick(Qt.Key_V, Qt.ControlModifier);
        }
        function filled(open, length) {
            const field = opened(open);
            field.clear();
            field.text = "x".repeat(length);
            field.cursorPosition = length;
            compare(field.notice, "");
            return field;
        }
        function refused(field) {
            return field.notice === tooLong;
        }

        function test_a_paste_that_does_not_fit_is_refused_as_a_whole_and_told_data() {
            return fields();
        }
        function test_a_paste_that_does_not_fit_is_refused_as_a_whole_and_told(data) {
            const field = filled(data.open, 1);
            offer("y".repeat(50000));
            paste();
            compare(field.text, "x");
            verify(refused(field));
            // The keyboard stays in the field, and the notice goes with the next letter.
            keyClick("z");
            compare(field.text, "xz");
            compare(field.notice, "");
        }
        function test_a_paste_that_fits_is_pasted_data() {
            return fields();
        }
        function test_a_paste_that_fits_is_pasted(data) {
            const field = filled(data.open, 1);
            offer("y".repeat(49999));
            paste();
            compare(field.length, 50000);
            compare(field.notice, "");
        }
        function test_what_is_selected_gives_its_room_to_the_paste() {
            const field = filled(fields()[0].open, 50000);
            field.select(0, 9000);
            offer("y".repeat(9001));
            paste();
            compare(field.length, 50000);
            verify(refused(field));
            field.select(0, 9001);
            paste();
            compare(field.text, "y".repeat(9001) + "x".repeat(40999));
        }
        function test_a_paste_that_is_not_text_changes_nothing() {
            const field = filled(fields()[0].open, 3);
            field.selectAll();
            offer("");
            world.clearClipboard();
            paste();
            compare(field.text, "xxx");
            compare(field.notice, "");
        }
        function test_a_letter_too_many_is_refused_and_told() {
            const field = filled(fields()[0].open, 49999);
            keyClick("a");
            compare(field.notice, "");
            keyClick("b");
            compare(field.length, 50000);
            compare(field.text[49999], "a");
            verify(refused(field));
            // Other keys do what they do.
            keyClick(Qt.Key_Backspace);
            compare(field.length, 49999);
            field.selectAll();
            keyClick("c");
            compare(field.text, "c");
        }
        function test_a_composition_that_does_not_fit_ends_and_is_told() {
            const field = filled(fields()[0].open, 49999);
            world.compose("にほ");
            compare(field.notice, "");
            world.finishComposing("日本");
            compare(field.preeditText, "");
            compare(field.length, 49999);
            verify(refused(field));
            world.finishComposing("本");
            compare(field.length, 50000);
        }
        function test_the_entry_of_the_menu_refuses_as_well() {
            const field = filled(fields()[0].open, 1);
            offer("y".repeat(50000));
            mouseClick(field, 40, 14, Qt.RightButton);
            tryVerify(() => menuItems().length === 6);
            choose("Paste");
            tryVerify(() => field.activeFocus);
            compare(field.text, "x");
            verify(refused(field));
        }
        function test_the_notice_is_seen_and_read_out_while_the_field_has_the_keyboard() {
            const field = filled(fields()[0].open, 50000);
            const notices = () => all(root.Window.contentItem,
                item => item.visible && item.Accessible.role === Accessible.AlertMessage
                        && item.Accessible.name === tooLong);
            compare(notices().length, 0);
            keyClick("a");
            tryVerify(() => notices().length === 1);
            verify(notices()[0].height > 0);
            const [announcement] = all(notices()[0], item => item instanceof Announcement);
            let announced = 0;
            announcement.announced.connect(() => ++announced);
            // Whoever listens from now on is told as well.
            world.switchAccessibilityOn();
            tryVerify(() => announced > 0);
            compare(announcement.text, tooLong);
            root.goalBoard.forceActiveFocus();
            tryVerify(() => notices().length === 0);
        }
    }
}
