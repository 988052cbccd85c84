import QtQuick
import QtTest
import Kelpa.Appearance
import Kelpa.Controls
import Kelpa.Transfer

/// The sheets of exports and imports, by keyboard alone.
Item {
    id: root

    width: 900
    height: 640

    Component {
        id: exportType

        ExportSheet {
            exporting: world.board.exporting
        }
    }
    Component {
        id: importType

        ImportSheet {
            importing: world.board.importing
        }
    }

    TestCase {
        id: test

        name: "TransferSheets"
        when: windowShown

        property Sheet sheet: null

        readonly property string list: "# Home\n\n- Paint\n- [x] Sweep\n\nwords\n"

        function initTestCase() {
            world.board.goals.createGoal("Garden");
            world.addTodo("Dig", "Garden");
        }
        function cleanup() {
            world.board.setLanguageIndex(world.board.languageNames.indexOf("English"));
            if (sheet !== null && sheet.visible)
                sheet.close();
            tryVerify(() => sheet === null || !sheet.visible);
            sheet?.destroy();
            sheet = null;
            world.board.importing.close();
            world.board.exporting.close();
            world.board.exporting.format = 0;
        }

        function openExport(columnID) {
            world.board.exporting.open(columnID ?? "");
            sheet = exportType.createObject(root) as Sheet;
            tryVerify(() => sheet.opened);
        }
        function openImport() {
            world.board.importing.open();
            sheet = importType.createObject(root) as Sheet;
            tryVerify(() => sheet.opened);
        }
        function all(item, accepts) {
            let found = accepts(item) ? [item] : [];
            for (let i = 0; i < item.children.length; ++i)
                found = found.concat(all(item.children[i], accepts));
            return found;
        }
        function texts() {
            return all(sheet.contentItem, item => item instanceof AppText && item.visible)
                .map(item => item.text);
        }
        function button(text) {
            return all(sheet.contentItem, item => item instanceof AppButton && item.visible)
                .find(item => item.text === text) ?? null;
        }
        function field() {
            return all(sheet.contentItem, item => item instanceof TextInputField && item.visible)[0];
        }
        function focusItem() {
            return sheet.contentItem.Window.activeFocusItem;
        }
        function typePath(text) {
            field().selectAll();
            keyClick(Qt.Key_Delete);
            for (const letter of text)
                keyClick(letter);
        }
        /// The texts of what reaches beyond the sheet at its sides.
        function beyond() {
            const content = sheet.contentItem;
            return all(content, item => item.visible && (item instanceof AppButton
                                                         || item instanceof AppText))
                .filter(item => {
                    const left = item.mapToItem(content, 0, 0).x;
                    return left < -1 || left + item.width > content.width + 1;
                }).map(item => item.text.substring(0, 40));
        }

        function test_the_arrow_keys_choose_and_Return_exports() {
            openExport();
            compare(focusItem().Accessible.name, "Kelpa (JSON)");
            keyClick(Qt.Key_Down);
            keyClick(Qt.Key_Backtab, Qt.ShiftModifier);
            compare(focusItem().Accessible.name, "The whole board");
            keyClick(Qt.Key_End);
            compare(world.board.exporting.content, 1);
            compare(world.board.exporting.format, 1);
            keyClick(Qt.Key_Return);
            verify(world.isFileDialogShown());
            verify(texts().includes("Choose the file in the desktop’s dialog."));
            verify(!button("Export").enabled);
            world.answerFileDialog("/tmp/g.md");
            world.finishFileWork();
            verify(world.file("/tmp/g.md").includes("Dig"));
            tryVerify(() => !sheet.visible);
            verify(!world.board.exporting.isOpen);
        }
        function test_another_language_keeps_the_choice_of_an_export() {
            failOnWarning(/.?/);
            openExport();
            keyClick(Qt.Key_Down);
            keyClick(Qt.Key_Backtab, Qt.ShiftModifier);
            keyClick(Qt.Key_Down);
            for (const name of ["Deutsch", "English"]) {
                world.board.setLanguageIndex(world.board.languageNames.indexOf(name));
                compare(world.board.exporting.content, 1);
                compare(world.board.exporting.format, 1);
                compare(focusItem().Accessible.name, "Garden");
                verify(texts().includes(world.board.exporting.contentNames[0]));
            }
        }
        function test_Escape_closes_an_export_and_its_dialog() {
            openExport();
            keyClick(Qt.Key_Return);
            keyClick(Qt.Key_Escape);
            tryVerify(() => !sheet.visible);
            verify(!world.isFileDialogShown());
        }
        function test_without_a_dialog_the_path_of_an_export_is_typed() {
            world.putFile("/home/ada/old.json", "old");
            openExport();
            keyClick(Qt.Key_Return);
            world.loseFileDialog();
            tryVerify(() => field() !== undefined && field().activeFocus);
            verify(field().text.startsWith("~/"));
            typePath("old.json");
            keyClick(Qt.Key_Return);
            world.finishFileWork();
            verify(texts().includes("There is a file of that name already. Replace it?"));
            compare(world.file("/home/ada/old.json"), "old");
            verify(button("Replace") !== null);
            // Whoever goes on typing means another file.
            keyClick("x");
            compare(button("Replace"), null);
            keyClick(Qt.Key_Backspace);
            keyClick(Qt.Key_Return);
            world.finishFileWork();
            keyClick(Qt.Key_Return);
            world.finishFileWork();
            verify(world.file("/home/ada/old.json") !== "old");
            tryVerify(() => !sheet.visible);
        }
        function test_an_import_shows_what_would_come_and_Return_adds_it() {
            world.putFile("/lists/home.md", list);
            openImport();
            verify(world.isFileDialogShown());
            world.answerFileDialog("/lists/home.md");
            verify(texts().includes("Reading the file…"));
            world.finishFileWork();
            for (const text of ["home.md · Markdown", "Goals: 1 · Todos: 2 · Unfinished todos: 1",
                                "Home", "Paint", "Sweep", "Lines left out: 1",
                                "Line 6, not a todo: words"])
                tryVerify(() => texts().includes(text), 5000, text);
            tryVerify(() => beyond().length === 0);
            tryVerify(() => button("Add to the board").visualFocus);
            keyClick(Qt.Key_Return);
            world.finishFileWork();
            tryVerify(() => !sheet.visible);
            compare(world.todos("Home"), ["Paint (todo)", "Sweep (completed)"]);
            compare(world.todos("Garden"), ["Dig (todo)"]);
            verify(world.board.toastOffersUndo);
            world.board.undo();
            compare(world.todos("Home"), []);
        }
        function test_the_Tab_key_reaches_replacing_the_board() {
            world.putFile("/lists/home.md", list);
            openImport();
            world.answerFileDialog("/lists/home.md");
            world.finishFileWork();
            tryVerify(() => button("Add to the board").visualFocus);
            keyClick(Qt.Key_Backtab, Qt.ShiftModifier);
            verify(button("Replace the board").activeFocus);
            keyClick(Qt.Key_Return);
            world.finishFileWork();
            tryVerify(() => !sheet.visible);
            compare(world.goalTitles(), ["Home"]);
            world.board.undo();
            compare(world.goalTitles(), ["Garden"]);
        }
        function test_a_refused_file_leads_to_another_one() {
            world.putFile("/lists/empty.md", "");
            openImport();
            world.answerFileDialog("/lists/empty.md");
            world.finishFileWork();
            verify(texts().includes("The file is empty."));
            tryVerify(() => button("Choose another file…").visualFocus);
            keyClick(Qt.Key_Return);
            verify(world.isFileDialogShown());
            world.answerFileDialog("");
            tryVerify(() => !sheet.visible);
        }
        function test_without_a_dialog_the_path_of_an_import_is_typed() {
            world.putFile("/home/ada/home.md", list);
            openImport();
            world.loseFileDialog();
            tryVerify(() => field() !== undefined && field().activeFocus);
            typePath("none.md");
            keyClick(Qt.Key_Return);
            world.finishFileWork();
            verify(texts().includes("The file does not exist or cannot be read."));
            tryVerify(() => field().activeFocus);
            typePath("~/home.md");
            keyClick(Qt.Key_Return);
            world.finishFileWork();
            tryVerify(() => button("Add to the board").visualFocus);
            compare(field(), undefined);
        }
        function test_long_texts_stay_within_their_sheets_data() {
            return world.board.languageNames.map((name, index) => ({ tag: name, index: index }));
        }
        function test_long_texts_stay_within_their_sheets(data) {
            world.board.setLanguageIndex(data.index);
            world.putFile("/lists/" + "long ".repeat(60) + ".md",
                          "# " + "Goal ".repeat(200) + "\n\n- " + "todo".repeat(2000) + "\n\n"
                          + "words ".repeat(500) + "\n");
            openImport();
            world.answerFileDialog("/lists/" + "long ".repeat(60) + ".md");
            world.finishFileWork();
            tryVerify(() => beyond().length === 0);
            sheet.close();
            tryVerify(() => !sheet.visible);
            openExport();
            tryVerify(() => beyond().length === 0);
            keyClick(Qt.Key_Return);
            world.loseFileDialog();
            tryVerify(() => field() !== undefined);
            tryVerify(() => beyond().length === 0);
        }
    }
}
