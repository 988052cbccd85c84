import QtQuick
import QtQuick.Window
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
    Window {
        id: elsewhere

        width: 100
        height: 100
    }

    TestCase {
        name: "BoardNotices"
        when: windowShown

        function texts() {
            const found = item => (item.visible && item instanceof Text ? [item.text] : [])
                .concat(...Array.from(item.children).map(found));
            return found(notices);
        }
        function goElsewhereAndBack() {
            elsewhere.show();
            elsewhere.requestActivate();
            tryVerify(() => elsewhere.active);
            elsewhere.hide();
            root.Window.window.requestActivate();
            tryVerify(() => root.Window.active);
        }

        function test_a_board_that_comes_forward_says_that_it_is_searched() {
            compare(notices.height, 0);
            goElsewhereAndBack();
            compare(notices.height, 0);
            world.board.search.text = "bank";
            compare(texts(), []);
            goElsewhereAndBack();
            compare(texts(), ["Only windows that match “bank” are shown", "Clear search"]);
            verify(notices.height > 0);
            const button = item => item instanceof AppButton ? item
                : Array.from(item.children).map(button).find(each => each) ?? null;
            mouseClick(button(notices));
            compare(world.board.search.text, "");
            compare([...texts(), notices.height], [0]);
        }
    }
}
