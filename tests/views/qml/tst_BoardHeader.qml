import QtQuick
import QtTest
import Kelpa

Item {
    id: root

    width: 1000
    height: 200

    BoardHeader {
        id: header

        anchors.fill: parent
        board: world.board
    }

    BoardCase {
        name: "BoardHeader"
        goalBoard: GoalBoard {
            board: world.board
        }

        function search() {
            return only(all(header, item => item instanceof SearchField));
        }
        function test_escape_clears_the_search_and_then_gives_the_keyboard_back() {
            mouseClick(search());
            verify(search().activeFocus);
            type("ab");
            keyClick(Qt.Key_Escape);
            compare(world.board.searchText, "");
            verify(search().activeFocus);
            keyClick(Qt.Key_Escape);
            verify(!search().activeFocus);
            verify(!all(header, item => item.visualFocus).length);
        }
    }
}
