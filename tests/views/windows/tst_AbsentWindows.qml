import QtQuick
import QtTest
import Kelpa.Appearance
import Kelpa.Controls
import Kelpa.Windows
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
    BoardSheets {
        id: sheets

        anchors.fill: parent
        board: world.board
    }
    // As the board's window does.
    Connections {
        target: world.board.windows.memory

        function onListChanged(): void {
            if (world.board.windows.memory.isListOpen)
                sheets.showAbsentWindows();
        }
    }

    WindowCase {
        name: "AbsentWindows"
        goalBoard: board

        function initTestCase() {
            world.board.goals.createGoal("Taxes");
            let windowID = 40;
            for (const title of ["Ledger", "Letter", "Receipts"]) {
                world.addWindow(++windowID, title);
                world.board.windows.moveWindow(windowID, world.columnOfGoal("Taxes"));
            }
            world.pass(1000);
            while (windowID > 40)
                world.removeWindow(windowID--);
        }
        function line() {
            return only(all(root, item => item instanceof AbsentWindowsLine && item.visible));
        }
        function rows() {
            return all(root.Window.contentItem, item => item instanceof AbsentWindowRow
                                                        && item.visible);
        }
        function open() {
            mouseClick(line());
            tryVerify(() => rows().length > 0);
        }
        function button(text) {
            return only(all(root.Window.contentItem, item => item.isButton === true && item.visible
                                                             && item.text === text));
        }
        function closed() {
            return rows().length === 0;
        }
        function cleanup() {
            world.board.windows.memory.closeList();
            tryVerify(() => closed());
        }
        function init() {
            tryVerify(() => line()?.count === 3);
        }
        function test_a_line_in_the_goal_opens_the_list() {
            compare(line().text, "3 closed windows");
            open();
            compare(rows().map(row => row.title).sort(), ["Ledger", "Letter", "Receipts"]);
            const row = rows().find(each => each.title === "Ledger");
            compare(row.Accessible.name, "App 1000: Ledger");
            verify(row.Accessible.description.startsWith("Last seen: "));
            mouseClick(button("Close"));
            tryVerify(() => closed());
            // By the keyboard as well.
            line().forceActiveFocus(Qt.TabFocusReason);
            keyClick(Qt.Key_Return);
            tryVerify(() => rows().length === 3);
            keyClick(Qt.Key_Escape);
            tryVerify(() => closed());
        }
        function test_each_window_is_opened_again_by_its_button() {
            open();
            const before = world.calls().length;
            const row = rows().find(each => each.title === "Letter");
            mouseClick(only(all(row, item => item.text === "Open again" && item.isButton === true)));
            world.runPending();
            compare(world.calls().slice(before).filter(call => call.startsWith("reopen")),
                    ["reopen org.example.App1000"]);
            world.pass(60000);
        }
        function test_all_windows_are_opened_again() {
            open();
            const before = world.calls().length;
            mouseClick(button("Open all again"));
            world.runPending();
            compare(world.calls().slice(before).filter(call => call.startsWith("reopen")).length, 3);
            world.pass(60000);
        }
        function test_keys_walk_the_list_open_and_forget() {
            open();
            const current = () => only(rows().filter(row => row.isCurrent));
            tryVerify(() => current() !== null);
            const first = current().title;
            keyClick(Qt.Key_Down);
            tryVerify(() => current().title !== first);
            const before = world.calls().length;
            keyClick(Qt.Key_Return);
            world.runPending();
            compare(world.calls().slice(before).filter(call => call.startsWith("reopen")).length, 1);
            world.pass(60000);
            const forgotten = current().title;
            keyClick(Qt.Key_Delete);
            tryVerify(() => rows().length === 2);
            verify(!rows().some(row => row.title === forgotten));
            compare(line().text, "2 closed windows");
            compare(world.board.toastMessage, "1 window is forgotten");
            world.board.undo();
            tryVerify(() => rows().length === 3);
        }
        function test_its_buttons_stand_beside_each_other_in_every_language() {
            const before = world.board.languageIndex;
            for (let language = 0; language < world.board.languageNames.length; ++language) {
                world.board.setLanguageIndex(language);
                open();
                const copy = ViewSettings.copy;
                const [forget, close] = [CopyKey.ForgetAllWindows, CopyKey.Close].map(key =>
                    button(copy.text(key)));
                const left = button => button.mapToItem(null, 0, 0).x;
                verify(left(forget) + forget.width < left(close),
                       world.board.languageNames[language]);
                world.board.windows.memory.closeList();
                tryVerify(() => closed());
            }
            world.board.setLanguageIndex(before);
        }
        function test_all_are_forgotten_and_undo_brings_them_back() {
            open();
            mouseClick(button("Forget all"));
            tryVerify(() => closed() && line() === null);
            compare(world.board.toastMessage, "3 windows are forgotten");
            world.board.undo();
            tryVerify(() => line() !== null);
        }
        function test_the_list_goes_with_its_goal_and_opens_nothing_of_it() {
            open();
            const before = world.calls().length;
            world.board.goals.deleteGoal(world.columnOfGoal("Taxes"));
            tryVerify(() => !world.board.windows.memory.isListOpen);
            // As its button does while the sheet fades away.
            world.board.windows.memory.reopenAll();
            world.runPending();
            compare(world.calls().slice(before).filter(call => call.startsWith("reopen")), []);
            tryVerify(() => closed());
            world.board.undo();
        }
        function test_an_assistive_program_opens_and_forgets() {
            line().Accessible.pressAction();
            tryVerify(() => rows().length === 3);
            const row = rows().find(each => each.title === "Receipts");
            const before = world.calls().length;
            row.Accessible.pressAction();
            world.runPending();
            verify(world.calls().slice(before).includes("reopen org.example.App1000"));
            world.pass(60000);
            only(all(row, item => item instanceof IconButton)).Accessible.pressAction();
            tryVerify(() => rows().length === 2);
            world.board.undo();
        }
    }
}
