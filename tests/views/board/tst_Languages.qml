import QtQuick
import QtQuick.Templates as T
import QtTest
import Kelpa.Appearance
import Kelpa.Controls
import Kelpa.Todos
import Kelpa.Windows
import Kelpa.Board
import "../cases/Search.js" as Search

/// Whatever is on the screen, it follows the language at once.
Item {
    width: 10
    height: 10

    Main {
        id: main

        width: 1400
        height: 900
        visible: true
        board: world.board

        TestCase {
            name: "Languages"
            when: windowShown

            // What people and programs wrote, the longest first.
            readonly property var names: ["Draft of Monday", "Buy seeds", "App 1000", "Garden",
                                          "Report", "Letter", "Taxes", "Read", "Sign", "File"]

            function initTestCase() {
                main.requestActivate();
                tryVerify(() => main.active);
                world.board.goals.createGoal("Taxes");
                world.board.goals.createGoal("Garden");
                world.addTodo("Read", "Taxes");
                world.addTodo("Sign", "Taxes");
                world.addTodo("File", "Taxes");
                world.addTodo("Buy seeds", "");
                for (const title of ["Sign", "File", "File"])
                    world.board.todos.toggle(world.todoID(title, "Taxes"),
                                             world.columnOfGoal("Taxes"));
                world.addWindow(1, "Report");
                world.addWindow(2, "");
                world.addWindow(3, "Letter");
                world.hideWindow(3);
                world.addWindow(4, "Draft of Monday");
                world.board.windows.moveWindow(1, world.columnOfGoal("Taxes"));
                tryVerify(() => shown(item => item instanceof WindowCard).length === 4);
            }
            function cleanup() {
                for (let i = 0; i < 3; ++i)
                    keyClick(Qt.Key_Escape);
                tryVerify(() => shown(isInPopup).length === 0);
                setLanguage("English");
            }

            function setLanguage(name) {
                world.board.setLanguageIndex(world.board.languageNames.indexOf(name));
            }
            function shown(accepts) {
                return Search.all(main.contentItem.parent,
                                  item => item.visible && accepts(item));
            }
            function isInPopup(item) {
                return item instanceof AppMenuItem || item instanceof T.ToolTip
                        || item.Accessible.role === Accessible.Dialog;
            }
            function button(key) {
                return shown(item => item instanceof T.AbstractButton
                                     && item.text === ViewSettings.copy.text(key))[0];
            }
            function actionsButton() {
                return button(CopyKey.MoreGoalActions);
            }
            function row(title) {
                return shown(item => item instanceof TodoRow && item.title === title)[0];
            }
            function card(title) {
                return shown(item => item instanceof WindowCard && item.title === title)[0];
            }

            /// What a person reads there, and what an assistive program says.
            function textsOf(item) {
                const isText = item instanceof Text || item instanceof TextInput
                               || item instanceof TextEdit;
                return [isText ? item.text : "", item.placeholderText ?? "", item.Accessible.name,
                        item.Accessible.description];
            }
            /// Without the parts that are not of the interface.
            function plain(text) {
                for (const name of names)
                    text = text.split(name).join("");
                return text.replace(/[0-9]+/g, "").replace(/\s+/g, " ").trim();
            }
            function shownTexts() {
                const found = new Set([main.title]);
                for (const item of shown(item => item.opacity > 0))
                    for (const text of textsOf(item))
                        for (const line of text.split("\n"))
                            found.add(plain(line));
                const letter = /[A-Za-z\u00c0-\u2fff\u3040-\ufaff]/;
                return Array.from(found).filter(text => letter.test(text));
            }
            /// Those of the interface that have not the room that they need.
            function cutTexts() {
                const isCut = item => item.truncated || item.contentHeight > item.height + 1
                                      || item.contentWidth > item.width + 1;
                return shown(item => item instanceof Text && item.opacity > 0 && isCut(item))
                    .map(item => item.text).filter(text => plain(text) === text);
            }
            /// In the smallest window of a screen that has room for it, in each language.
            function checkNothingIsCut() {
                main.width = 900;
                main.height = 620;
                for (const name of [...world.board.languageNames, "English"]) {
                    setLanguage(name);
                    // Texts find their lines in the next frame.
                    waitForRendering(main.contentItem);
                    compare([name, ...cutTexts()], [name]);
                }
                main.width = 1400;
                main.height = 900;
            }
            /// Every text that is shown is one of the language's, in each language right after it
            /// was chosen.
            function checkEveryLanguage(expectedCount) {
                for (const name of [...world.board.languageNames, "English"]) {
                    setLanguage(name);
                    const known = new Set(world.knownTexts().map(plain)
                                          .concat(world.board.languageNames));
                    const texts = shownTexts();
                    compare([name, ...texts.filter(text => !known.has(text))], [name]);
                    verify(texts.length >= expectedCount);
                }
            }

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
                world.board.searchText = "Report";
                tryVerify(() => shown(item => item instanceof WindowCard).length === 1);
                verify(button(CopyKey.ShowAll) !== undefined);
                verify(button(CopyKey.ClearSearch) !== undefined);
                checkEveryLanguage(25);
                checkNothingIsCut();
                world.board.searchText = "";
                world.board.toggleHidingGoalsWithoutOpenTodos();
                tryVerify(() => card("Report") !== undefined);
            }
            function test_every_menu_that_a_button_opens() {
                const isMenuButton = item => item instanceof T.AbstractButton
                                             && item.Accessible.role === Accessible.ButtonMenu
                                             && item.isShown !== false;
                const buttons = shown(isMenuButton);
                // The language, for each goal its priority and its actions, and each window's.
                compare(buttons.length, 9);
                for (const button of buttons) {
                    mouseClick(button);
                    tryVerify(() => shown(isInPopup).length > 3);
                    checkEveryLanguage(35);
                    keyClick(Qt.Key_Escape);
                    tryVerify(() => shown(isInPopup).length === 0);
                }
            }
            function test_the_menu_of_a_window() {
                mouseClick(card("Report"), 20, 20, Qt.RightButton);
                tryVerify(() => shown(isInPopup).length === 4);
                checkEveryLanguage(35);
            }
            function test_the_menu_of_a_todo_and_its_goals() {
                mouseClick(row("Read"), 60, 10, Qt.RightButton);
                tryVerify(() => button(CopyKey.DeleteTodo) !== undefined);
                checkEveryLanguage(35);
                mouseClick(shown(item => item instanceof AppMenuItem && item.subMenu !== null)[0]);
                tryVerify(() => shown(isInPopup).length > 2);
                checkEveryLanguage(35);
            }
            function test_the_fields_for_todos() {
                world.board.todos.requestEditor(world.columnOfGoal("Garden"));
                tryVerify(() => shown(item => item instanceof TodoField).length === 1);
                checkEveryLanguage(35);
                world.board.todos.cancelEditor();
                mouseClick(row("Read"), 60, 10);
                tryVerify(() => shown(item => item instanceof TodoField).length === 1);
                checkEveryLanguage(35);
            }
            function test_the_sheet_for_a_goal() {
                mouseClick(button(CopyKey.NewGoal));
                tryVerify(() => button(CopyKey.Create) !== undefined);
                checkEveryLanguage(35);
                checkNothingIsCut();
            }
            function test_the_sheet_that_renames_a_goal() {
                mouseClick(actionsButton());
                tryVerify(() => button(CopyKey.RenameGoal) !== undefined);
                mouseClick(button(CopyKey.RenameGoal));
                tryVerify(() => button(CopyKey.Save) !== undefined);
                checkEveryLanguage(35);
                checkNothingIsCut();
            }
            function test_the_sheet_that_selects_windows() {
                const count = number => ViewSettings.copy.selectedWindowCount(number);
                mouseClick(actionsButton());
                // A button on the card has the same name.
                const text = ViewSettings.copy.text(CopyKey.AddWindowsToGoal);
                const entry = () => shown(item => item instanceof AppMenuItem && item.text === text)[0];
                tryVerify(() => entry() !== undefined);
                mouseClick(entry());
                tryVerify(() => shown(item => item.text === count(0)).length === 1);
                world.board.windows.picker.toggle(4);
                tryVerify(() => shown(item => item.text === count(1)).length === 1);
                checkEveryLanguage(45);
                checkNothingIsCut();
                world.removeWindow(4);
                world.board.windows.picker.confirm();
                verify(world.board.windows.picker.isRefused);
                world.board.windows.picker.searchText = "Garden";
                tryVerify(() => shown(item => item instanceof WindowPickerRow).length === 0);
                checkEveryLanguage(40);
                checkNothingIsCut();
                world.addWindow(4, "Draft of Monday");
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
