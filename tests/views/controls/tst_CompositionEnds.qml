import QtQuick
import QtTest
import Kelpa.Controls
import "../cases"

/// What becomes of a composition that ends with its field, by a click, or by the end of the program.
FieldsView {
    id: root

    CompositionCase {
        name: "CompositionEnds"
        scene: root

        function test_what_the_end_of_the_program_leaves_composed_is_kept() {
            const field = opened(fields()[3].open);
            field.text = "ab";
            field.cursorPosition = 1;
            world.compose("글");
            world.finishWriting();
            compare(world.todos("First"), ["a글b (todo)"]);
        }
        function test_what_the_end_of_the_program_leaves_composed_in_a_title_is_kept() {
            const field = opened(fields()[4].open);
            field.text = "ab";
            world.compose("글");
            world.finishWriting();
            compare(world.todos("First"), ["ab글 (todo)"]);
            compare(field.preeditText, "");
        }
        /// An input method that is asked to forget what was composed writes it once more.
        function test_what_was_kept_is_not_written_again_in_the_next_field() {
            opened(fields()[3].open);
            world.compose("글");
            // As the toolkit does before another field gets the keyboard.
            world.finishComposing("글");
            root.search.clear();
            root.search.forceActiveFocus();
            world.finishComposing("글");
            compare(root.search.text, "");
            // But whatever comes then is written.
            world.finishComposing("글");
            compare(root.search.text, "글");
            root.search.clear();
        }
        function test_what_was_kept_by_a_click_is_not_written_again_in_the_same_field() {
            const field = opened(fields()[3].open);
            field.clear();
            world.compose("글");
            mouseClick(field, field.width - 10, field.height / 2);
            if (field.preeditText.length > 0)
                world.finishComposing("글");
            world.finishComposing("글");
            compare(field.text, "글");
        }
        function test_what_was_given_up_is_not_written_again_data() {
            return [
                {tag: "by Escape", give: () => keyClick(Qt.Key_Escape)},
                {tag: "by the button", give: () => {
                    mouseClick(all(root.search, item => item instanceof IconButton && item.visible)[0]);
                }}
            ];
        }
        function test_what_was_given_up_is_not_written_again(data) {
            const field = opened(() => root.search.forceActiveFocus());
            field.text = "ab";
            world.compose("글");
            data.give();
            compare(field.preeditText, "");
            const left = field.text;
            world.finishComposing("글");
            compare(field.text, left);
            field.clear();
        }
        function test_what_is_written_twice_is_there_twice() {
            const field = opened(() => root.search.forceActiveFocus());
            field.clear();
            for (let i = 0; i < 2; ++i) {
                world.compose("하");
                world.finishComposing("하");
            }
            compare(field.text, "하하");
            // By its own will.
            wait(0);
            // One that composes nothing first, in the next field.
            const next = opened(fields()[3].open);
            next.clear();
            world.finishComposing("하");
            compare(next.text, "하");
            root.search.clear();
        }
    }
}
