import QtQuick
import QtTest
import Kelpa.Board
import "../cases/Search.js" as Search

Item {
    id: root

    width: 900
    height: 900

    KeysSheet {
        id: sheet

        parent: root
        isDoubleTapOffered: false
        canWorkOnGoals: true
        canPinGoals: true
        isNewTodoKeyKnown: false
    }

    TestCase {
        name: "KeysSheet"
        when: windowShown

        function cleanup() {
            sheet.close();
            sheet.isDoubleTapOffered = false;
            sheet.isNewTodoKeyKnown = false;
            sheet.canWorkOnGoals = true;
            sheet.canPinGoals = true;
        }
        function namesTheCommand(): bool {
            return Search.all(sheet.contentItem, item => item.visible
                              && item.Accessible.name.includes("kelpa --new-todo")).length > 0;
        }

        function test_names_the_key_for_working_on_goals_where_it_does_something() {
            const meanings = () => Search.all(sheet.contentItem, item => item.visible
                && item.Accessible.name === "Ctrl+G" && item.Accessible.description)
                .map(item => item.Accessible.description);
            sheet.open();
            tryVerify(() => sheet.opened);
            compare(meanings(), ["Work on a goal: minimise the other windows"]);
            sheet.canWorkOnGoals = false;
            compare(meanings(), ["Work on a pinned goal: go to its desktop"]);
            sheet.canPinGoals = false;
            compare(meanings(), []);
        }
        function test_has_the_keys_and_meanings_of_one_state_at_a_time() {
            failOnWarning(/Unable to assign/);
            sheet.open();
            tryVerify(() => sheet.opened);
            const rows = () => Search.all(sheet.contentItem, item => item.visible
                && item.Accessible.name && item.Accessible.description)
                .map(item => item.Accessible.description);
            const before = rows();
            verify(!before.includes("Bring Kelpa forward from any program"));
            for (const isOffered of [true, false]) {
                sheet.isDoubleTapOffered = isOffered;
                compare(rows().length, before.length + (isOffered ? 1 : 0));
                compare(rows().includes("Bring Kelpa forward from any program"), isOffered);
            }
            for (const canWork of [false, true]) {
                sheet.canPinGoals = canWork;
                sheet.canWorkOnGoals = canWork;
                compare(rows().length, before.length - (canWork ? 0 : 2));
            }
            compare(rows(), before);
        }
        function test_names_the_command_unless_a_key_for_the_new_todo_is_known() {
            sheet.open();
            tryVerify(() => sheet.opened);
            verify(namesTheCommand());
            sheet.isNewTodoKeyKnown = true;
            verify(!namesTheCommand());
            sheet.isNewTodoKeyKnown = false;
            sheet.isDoubleTapOffered = true;
            verify(!namesTheCommand());
        }
    }
}
