import QtQuick
import QtTest
import "../cases"

/// What the keys do while an input method composes, in every kind of field.
FieldsView {
    id: root

    CompositionCase {
        name: "Composition"
        scene: root

        function test_return_within_a_composition_commits_nothing_data() {
            return fields();
        }
        function test_return_within_a_composition_commits_nothing(data) {
            const field = opened(data.open);
            world.compose("にほん");
            keyClick(Qt.Key_Return);
            keyClick(Qt.Key_Enter);
            compare(committed.count, 0);
            verify(field.activeFocus);
            compare(field.preeditText, "にほん");
        }
        function test_return_that_comes_with_the_end_of_a_composition_commits_nothing_data() {
            return fields();
        }
        function test_return_that_comes_with_the_end_of_a_composition_commits_nothing(data) {
            const field = opened(data.open);
            field.clear();
            world.compose("한");
            world.finishComposing("한");
            keyClick(Qt.Key_Return);
            compare(committed.count, 0);
            compare(field.text, "한");
            verify(field.activeFocus);
        }
        function test_return_after_a_composition_commits_data() {
            return fields();
        }
        function test_return_after_a_composition_commits(data) {
            const field = opened(data.open);
            world.compose("本");
            world.finishComposing("本");
            // As a person who has read what was written.
            tryVerify(() => {
                keyClick(Qt.Key_Return);
                return committed.count > 0;
            });
        }
        function test_escape_within_a_composition_ends_it_alone_data() {
            return fields();
        }
        function test_escape_within_a_composition_ends_it_alone(data) {
            const field = opened(data.open);
            field.text = "ab";
            world.compose("にほん");
            keyClick(Qt.Key_Escape);
            compare(field.preeditText, "");
            compare(field.text, "ab");
            compare(cancelled.count, 0);
            verify(field.activeFocus);
            tryVerify(() => {
                keyClick(Qt.Key_Escape);
                return cancelled.count > 0;
            });
        }

        function test_where_nothing_is_left_of_a_composition_the_keys_are_the_fields_data() {
            return fields();
        }
        function test_where_nothing_is_left_of_a_composition_the_keys_are_the_fields(data) {
            const field = opened(data.open);
            world.compose("にほん");
            world.composeNothing();
            compare(field.preeditText, "");
            tryVerify(() => {
                keyClick(Qt.Key_Return);
                return committed.count > 0;
            });
            keyClick(Qt.Key_Escape);
            compare(cancelled.count, 1);
        }
    }
}
