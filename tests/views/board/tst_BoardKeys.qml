import QtQuick
import QtTest
import Kelpa.Controls
import Kelpa.Goals
import Kelpa.Windows
import Kelpa.Board
import "../cases"

Item {
    id: root

    width: 1300
    height: 700

    BoardHeader {
        id: header

        width: parent.width
        board: world.board
    }
    GoalBoard {
        id: board

        anchors.fill: parent
        anchors.topMargin: 100
        board: world.board
    }
    SignalSpy {
        id: renames

        target: world.board.goals
        signalName: "renameRequested"
    }

    TodoCase {
        name: "BoardKeys"
        goalBoard: board

        function init() {
            renames.clear();
            world.clearSelection();
            header.forceActiveFocus();
            header.focus = false;
            tryVerify(() => !isMoving());
        }
        function search() {
            return only(all(header, item => item instanceof SearchField));
        }
        function holder() {
            return root.Window.activeFocusItem;
        }
        function card(title) {
            return only(all(board, item => item instanceof WindowCard && item.visible
                                           && item.title === title));
        }

        function test_F2_and_a_double_click_ask_for_another_title_of_the_goal() {
            keyClick(Qt.Key_F2);
            compare(renames.count, 0);
            world.board.goals.goToColumn(world.columnOfGoal("Second"));
            tryVerify(() => !isMoving());
            keyClick(Qt.Key_F2);
            compare(renames.count, 1);
            compare(renames.signalArguments[0][0], world.columnOfGoal("Second"));
            tryVerify(() => !isMoving());
            view().contentY = 0;
            const title = only(all(column("First"), item => item instanceof MarqueeGoalTitle));
            mouseClick(title, 10, 8);
            tryCompare(world.board, "selectedTarget", 2);
            compare(world.selectedGoal(), "First");
            compare(renames.count, 1);
            tryVerify(() => !isMoving());
            mouseDoubleClickSequence(title, 10, 8);
            compare(renames.count, 2);
            compare(renames.signalArguments[1][0], world.columnOfGoal("First"));
            // The press is over.
            mouseMove(root, 640, 690);
            verify(!all(column("First"), item => item instanceof MouseArea && item.pressed).length);
        }
        function test_F2_belongs_to_the_todo_that_has_the_keyboard() {
            const first = column("First");
            world.board.goals.goToColumn(world.columnOfGoal("First"));
            show(first, "First", ["Read"]);
            content(first, "Read").forceActiveFocus(Qt.TabFocusReason);
            keyClick(Qt.Key_F2);
            tryVerify(() => field(first) !== null && field(first).activeFocus);
            keyClick(Qt.Key_F2);
            compare(renames.count, 0);
            keyClick(Qt.Key_Escape);
        }
        function test_Delete_deletes_the_todo_that_has_the_keyboard() {
            const first = column("First");
            show(first, "First", ["Read", "Write", "Walk"]);
            content(first, "Write").forceActiveFocus(Qt.TabFocusReason);
            keyClick(Qt.Key_Delete);
            compare(world.todos("First"), ["Read (todo)", "Walk (todo)"]);
            verify(world.board.toastOffersUndo);
            tryVerify(() => content(first, "Walk")?.activeFocus ?? false);
            // Held, it does no more; nor does it with another key.
            world.repeatKey(content(first, "Walk"), Qt.Key_Delete);
            keyClick(Qt.Key_Delete, Qt.ShiftModifier);
            compare(world.todos("First"), ["Read (todo)", "Walk (todo)"]);
        }
        function test_Control_with_F_goes_to_the_search_and_selects_what_is_there() {
            world.board.search.text = "mail";
            keyClick(Qt.Key_F, Qt.ControlModifier);
            verify(search().activeFocus);
            compare(search().selectedText, "mail");
            world.board.search.text = "";
        }
        function test_Return_and_Down_lead_from_the_search_to_what_it_has_found() {
            world.addWindow(21, "Report");
            world.addWindow(22, "Letter");
            world.addWindow(23, "Letter too");
            world.board.windows.moveWindow(22, world.columnOfGoal("Second"));
            world.board.windows.moveWindow(23, world.columnOfGoal("First"));
            for (const key of [Qt.Key_Return, Qt.Key_Down]) {
                keyClick(Qt.Key_F, Qt.ControlModifier);
                type("letter");
                keyClick(key);
                verify(!search().activeFocus);
                tryVerify(() => holder() !== null && holder() === card("Letter too"));
                verify(card("Letter too").isSelected);
                world.clearSelection();
                world.board.search.text = "nobody";
                keyClick(Qt.Key_F, Qt.ControlModifier);
                keyClick(key);
                verify(search().activeFocus);
                compare(world.board.selectedTarget, -1);
                world.board.search.text = "";
                // Where nothing is looked for, nothing is found.
                keyClick(key);
                compare(world.board.selectedTarget, -1);
            }
            for (const id of [21, 22, 23])
                world.removeWindow(id);
        }
        function raised() {
            world.runPending();
            return world.calls().filter(call => call.startsWith("raise "));
        }
        function test_Return_on_the_selected_window_brings_it_forward_and_ends_the_search() {
            world.addWindow(21, "Letter");
            const before = raised().length;
            keyClick(Qt.Key_F, Qt.ControlModifier);
            type("letter");
            keyClick(Qt.Key_Return);
            tryVerify(() => holder() === card("Letter"));
            world.repeatKey(card("Letter"), Qt.Key_Return);
            compare(raised().length, before);
            keyClick(Qt.Key_Return);
            compare(raised().slice(before), ["raise Letter"]);
            compare(world.board.search.text, "");
            keyClick(Qt.Key_Enter, Qt.KeypadModifier);
            compare(raised().slice(before), ["raise Letter", "raise Letter"]);
            world.removeWindow(21);
        }
        function test_Control_with_Return_opens_what_is_searched_at_once() {
            world.addWindow(21, "Letter");
            const before = raised().length;
            for (const key of [Qt.Key_Return, Qt.Key_Enter]) {
                keyClick(Qt.Key_F, Qt.ControlModifier);
                type("letter");
                keyClick(key, Qt.ControlModifier);
                verify(!search().activeFocus);
                compare(world.board.search.text, "");
            }
            compare(raised().slice(before), ["raise Letter", "raise Letter"]);
            keyClick(Qt.Key_F, Qt.ControlModifier);
            type("nobody");
            keyClick(Qt.Key_Return, Qt.ControlModifier);
            verify(search().activeFocus);
            compare(raised().length, before + 2);
            world.board.search.text = "";
            world.removeWindow(21);
        }
        function test_Return_and_Down_show_what_was_found_before_and_is_out_of_sight() {
            world.addWindow(21, "Letter");
            world.board.windows.moveWindow(21, world.columnOfGoal("First"));
            for (let i = 0; i < 60; ++i)
                world.addTodo("Todo " + i, "First");
            world.board.goals.goToColumn(world.columnOfGoal("First"));
            tryVerify(() => !isMoving() && view().contentHeight > 2 * view().height);
            for (const key of [Qt.Key_Return, Qt.Key_Down]) {
                keyClick(Qt.Key_F, Qt.ControlModifier);
                type("letter");
                keyClick(key);
                tryVerify(() => holder() === card("Letter") && !isMoving());
                view().contentY = 0;
                tryVerify(() => !isMoving());
                verify(card("Letter").mapToItem(view(), 0, 0).y > view().height);
                keyClick(Qt.Key_F, Qt.ControlModifier);
                keyClick(key);
                verify(!search().activeFocus);
                tryVerify(() => holder() === card("Letter") && !isMoving());
                const top = card("Letter").mapToItem(view(), 0, 0).y;
                verify(top >= 0 && top + card("Letter").height <= view().height, top);
                world.board.search.text = "";
            }
            world.removeWindow(21);
        }
        function test_the_keys_for_pages_scroll_the_board() {
            const titles = [];
            for (let i = 0; i < 100; ++i)
                titles.push("Todo " + i);
            world.board.goals.goToColumn(world.columnOfGoal("First"));
            for (const title of titles)
                world.addTodo(title, "First");
            tryVerify(() => !isMoving() && view().contentHeight > 4 * view().height);
            keyClick(Qt.Key_Home);
            tryVerify(() => view().contentY === 0 && !isMoving());
            keyClick(Qt.Key_PageDown);
            tryVerify(() => view().contentY > 0 && !isMoving());
            const page = view().contentY;
            verify(page > 0.7 * view().height && page < view().height);
            // Twice at once is twice as far.
            keyClick(Qt.Key_PageDown);
            keyClick(Qt.Key_PageDown);
            tryVerify(() => view().contentY === 3 * page);
            keyClick(Qt.Key_PageUp);
            tryVerify(() => view().contentY === 2 * page);
            keyClick(Qt.Key_End);
            tryVerify(() => view().contentY === view().contentHeight - view().height);
            const end = view().contentY;
            search().forceActiveFocus();
            for (const key of [Qt.Key_Home, Qt.Key_PageUp])
                keyClick(key);
            wait(0);
            verify(!isMoving());
            compare(view().contentY, end);
            search().focus = false;
        }
    }
}
