import QtQuick
import QtQuick.Templates as T
import QtTest
import Kelpa.Appearance
import Kelpa.Controls
import Kelpa.Todos
import Kelpa.Windows
import Kelpa.Board
import "../cases"

/// Whatever menus, fields and sheets show, they follow the language at once.
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
            name: "LanguagesOfMenus"
            main: main

            function test_every_menu_that_a_button_opens() {
                const isMenuButton = item => item instanceof T.AbstractButton
                                             && item.Accessible.role === Accessible.ButtonMenu
                                             && (item.isShown !== false
                                                 || item instanceof CardButton);
                const buttons = shown(isMenuButton);
                // The language, for each goal its priority and its actions, and each window's.
                compare(buttons.length, 9);
                for (const button of buttons) {
                    // That of a window shows with the pointer.
                    mouseMove(button);
                    tryVerify(() => button.isShown !== false);
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
        }
    }
}
