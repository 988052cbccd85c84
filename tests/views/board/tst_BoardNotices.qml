import QtQuick
import QtTest
import Kelpa.Controls
import Kelpa.Board

Item {
    id: root

    width: 800
    height: 200

    BoardNotices {
        id: notices

        width: parent.width
        board: world.board
    }

    TestCase {
        name: "BoardNotices"
        when: windowShown

        function texts() {
            const found = item => (item.visible && item instanceof Text ? [item.text] : [])
                .concat(...Array.from(item.children).map(found));
            return found(notices);
        }
        function test_a_board_that_comes_forward_says_that_it_is_searched() {
            compare(notices.height, 0);
            world.board.search.noteForward();
            compare(notices.height, 0);
            world.board.search.text = "bank";
            compare(texts(), []);
            world.board.search.noteForward();
            compare(texts(), ["Only windows that match “bank” are shown", "Clear search"]);
            tryVerify(() => notices.height > 0);
            const button = item => item instanceof AppButton ? item
                : Array.from(item.children).map(button).find(each => each) ?? null;
            mouseClick(button(notices));
            compare(world.board.search.text, "");
            compare(texts(), []);
            tryCompare(notices, "height", 0);
        }
    }
}
