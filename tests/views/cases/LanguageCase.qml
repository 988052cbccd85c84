import QtQuick
import QtQuick.Templates as T
import QtTest
import Kelpa.Appearance
import Kelpa.Controls
import Kelpa.Todos
import Kelpa.Windows
import Kelpa.Board
import "Search.js" as Search

/// A main window with goals, todos and windows, and what it says in each language.
TestCase {
    id: root

    required property Main main

    when: windowShown

    // What people and programs wrote, the longest first.
    readonly property var names: ["Draft of Monday", "Buy seeds", "App 1000", "Garden",
                                  "Report", "Letter", "Taxes", "Read", "Sign", "File"]

    function initTestCase() {
        // Larger than the window has made itself for the screen.
        root.main.width = 1400;
        root.main.height = 900;
        root.main.requestActivate();
        tryVerify(() => root.main.active);
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
        // The selection stays in view while a test resizes the window.
        tryVerify(() => !shown(item => item instanceof GoalBoard)[0].isMoving);
        setLanguage("English");
    }

    function setLanguage(name) {
        world.board.setLanguageIndex(world.board.languageNames.indexOf(name));
    }
    function shown(accepts) {
        return Search.all(root.main.contentItem.parent,
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
        const found = new Set([root.main.title]);
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
        root.main.width = 900;
        root.main.height = 620;
        for (const name of [...world.board.languageNames, "English"]) {
            setLanguage(name);
            // Texts find their lines in the next frame.
            waitForRendering(root.main.contentItem);
            compare([name, ...cutTexts()], [name]);
        }
        root.main.width = 1400;
        root.main.height = 900;
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
}
