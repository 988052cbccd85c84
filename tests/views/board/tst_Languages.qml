import QtQuick
import QtQuick.Templates as T
import QtTest
import Kelpa.Appearance
import Kelpa.Controls
import Kelpa.Windows
import Kelpa.Board
import "../cases"
import "../cases/Search.js" as Search

/// Whatever the board shows, it follows the language at once.
Item {
    width: 10
    height: 10

    Main {
        id: main

        width: 1400
        height: 900
        visible: true
        board: world.board

        LanguageCase {
            name: "Languages"
            main: main

            function test_the_board() {
                checkEveryLanguage(35);
                checkNothingIsCut();
            }
            function test_both_hints_are_read_in_every_language_however_narrow_the_window() {
                world.offerDoubleTap(true);
                main.width = 900;
                for (const name of world.board.languageNames) {
                    setLanguage(name);
                    const hint = key => shown(item => item instanceof Text
                                              && item.text === ViewSettings.copy.text(key))[0];
                    waitForRendering(main.contentItem);
                    const keys = hint(CopyKey.KeyboardHint);
                    const tap = hint(CopyKey.DoubleTapHint);
                    verify(!keys.truncated && !tap.truncated);
                    verify(tap.x >= keys.x + keys.width || tap.y >= keys.y + keys.height);
                    verify(tap.y + tap.height <= tap.parent.height);
                }
                main.width = 1400;
            }
            function test_the_permission_banner() {
                world.denyPermissions();
                tryVerify(() => shown(item => item instanceof WindowCard).length === 0);
                checkEveryLanguage(25);
                checkNothingIsCut();
                world.grantPermissions();
                tryVerify(() => card("Report") !== undefined);
            }
            function test_the_filters_of_the_header() {
                world.board.toggleHidingGoalsWithoutOpenTodos();
                world.board.search.text = "Report";
                tryVerify(() => shown(item => item instanceof WindowCard).length === 1);
                verify(button(CopyKey.ShowAll) !== undefined);
                verify(button(CopyKey.ClearSearch) !== undefined);
                checkEveryLanguage(25);
                checkNothingIsCut();
                world.board.search.text = "";
                world.board.toggleHidingGoalsWithoutOpenTodos();
                tryVerify(() => card("Report") !== undefined);
            }
            function test_a_message_over_the_board() {
                world.board.todos.copyTodo(world.todoID("Buy seeds", ""), "kelpa-unassigned");
                tryVerify(() => shown(item => item instanceof Toast).length === 1);
                checkEveryLanguage(35);
                const toast = shown(item => item instanceof Toast)[0];
                compare(toast.Accessible.name, "Todo copied to clipboard");
                world.rest();
            }
            function test_a_tip() {
                const report = card("Report");
                const tip = Search.all(report, item => item instanceof HoverTip
                                                       && item.parent === report)[0];
                mouseMove(report, 60, 110);
                tryVerify(() => tip.item !== null && tip.item.opened);
                setLanguage("Deutsch");
                compare(tip.item.text, "Klicken zum Wechseln; zum Verschieben auf ein anderes Ziel ziehen");
                checkEveryLanguage(35);
                mouseMove(main.contentItem, 700, 890);
                tryVerify(() => tip.item === null);
            }
        }
    }
}
