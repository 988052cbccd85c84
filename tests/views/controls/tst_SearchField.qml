import QtQuick
import QtTest
import Kelpa.Controls

Item {
    id: root

    width: 300
    height: 60

    SearchField {
        id: field

        width: 260
        label: "Search"
        clearLabel: "Clear search"
        text: world.board.search.text
        onTextChanged: world.board.search.text = text
    }

    TestCase {
        name: "SearchField"
        when: windowShown

        function init() {
            world.board.search.text = "";
            field.forceActiveFocus();
        }

        function test_typing_searches_and_a_search_from_elsewhere_shows() {
            keyClick("r");
            compare(world.board.search.text, "r");
            world.board.search.text = "report";
            compare(field.text, "report");
        }
        function test_escape_clears() {
            keyClick("r");
            keyClick(Qt.Key_Escape);
            compare(field.text, "");
            compare(world.board.search.text, "");
        }
        function test_the_button_is_there_while_there_is_something_to_clear() {
            mouseClick(field, field.width - 16, field.height / 2);
            keyClick("r");
            mouseClick(field, field.width - 16, field.height / 2);
            compare(world.board.search.text, "");
            verify(field.activeFocus);
        }
        function test_the_field_has_the_keyboard_once_its_button_is_gone() {
            keyClick("r");
            keyClick(Qt.Key_Tab);
            verify(root.Window.activeFocusItem instanceof IconButton);
            world.board.search.text = "";
            verify(field.activeFocus);
            verify(root.Window.activeFocusItem.visible);
        }
    }
}
