import QtQuick
import QtQuick.Templates as T
import QtTest
import Kelpa.Appearance
import Kelpa.Controls
import Kelpa.Goals
import Kelpa.Todos
import Kelpa.Windows
import Kelpa.Board
import "../cases"

/// Whatever the size of texts, all of them have the height that they need, in each language and in the
/// smallest window; at the usual size all lengths are those that the board is made for.
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
            id: testCase

            name: "TextScale"
            main: main

            readonly property var scales: [0.75, 1, 1.25, 1.5, 2]

            function init() {
                ViewSettings.textScale = 1;
                world.offerDoubleTap(true);
                main.width = 900;
                main.height = 620;
                select("Taxes");
            }
            function select(goal) {
                world.board.goals.goToColumn(world.columnOfGoal(goal));
                settle();
            }
            function settle() {
                // The board scrolls after a pause.
                wait(100);
                tryVerify(() => !shown(item => item instanceof GoalBoard)[0].isMoving);
            }
            function texts() {
                return shown(item => item instanceof Text && item.opacity > 0 && item.text !== "");
            }
            function holds(item) {
                return item instanceof T.AbstractButton || item instanceof TodoRow || item instanceof TodoField
                       || item instanceof TextInputField || item instanceof BreadcrumbEntry
                       || item instanceof CardCaption || item instanceof CardPreview
                       || item instanceof ColumnHeader || item instanceof Toast || item instanceof CountBadge
                       || item instanceof WindowPickerRow || item instanceof AbsentWindowRow
                       || item instanceof FirstStepsPanel || item instanceof TroubleBanner
                       || item instanceof DesktopBanner || item instanceof PermissionBanner
                       || item instanceof BoardHeader || item instanceof EmptyWindowPlace
                       || item.Accessible.role === Accessible.Dialog;
            }
            /// How far a text extends beyond its own place, or beyond the upper or the lower end of what it
            /// is a part of.
            function excess(text) {
                let holder = text.parent;
                // What a list scrolls may be beyond whatever holds the list.
                while (holder !== null && !holds(holder))
                    holder = holder instanceof Flickable ? null : holder.parent;
                // As it is aligned.
                const room = text.height - text.topPadding - text.bottomPadding;
                const above = text.verticalAlignment === Text.AlignVCenter ? (room - text.contentHeight) / 2 : 0;
                const top = holder === null ? 0 : text.mapToItem(holder, 0, text.topPadding + above).y;
                const bottom = holder === null ? 0 : top + text.contentHeight - holder.height;
                return Math.max(text.contentHeight - room, -top, bottom);
            }
            function tooHigh() {
                return texts().filter(text => excess(text) > 1.5)
                              .map(text => text.text + " by " + excess(text));
            }
            function checkHeights(scale) {
                for (const name of [...world.board.languageNames, "English"]) {
                    setLanguage(name);
                    waitForRendering(main.contentItem);
                    compare([scale, name, ...tooHigh()], [scale, name]);
                }
            }
            /// Looks at it when the texts have their size, and while they get another one.
            function checkSheet(open, isOpen, close) {
                open();
                tryVerify(() => isOpen());
                for (const scale of scales) {
                    ViewSettings.textScale = scale;
                    checkHeights(scale);
                }
                close();
                tryVerify(() => !isOpen());
            }
            function isSheetOpen() {
                return main.overlay.visible;
            }
            function pressEscape() {
                keyClick(Qt.Key_Escape);
            }

            function test_the_usual_lengths_are_those_of_the_board() {
                compare([Theme.todoHeight, Theme.controlHeight, Theme.columnListY, Theme.sheetWidth,
                         Theme.collapsedCardHeight, Theme.windowCardHeight, Theme.railWidth,
                         Theme.badgeHeight, Theme.targetWidth, Theme.fadeHeight],
                        [34, 32, 60, 390, 292, 126, 116, 20, 320, 48]);
                compare([Theme.caption, Theme.body, Theme.heading, Theme.title].map(each => each.pixelSize),
                        [11, 13, 17, 22]);
                compare([Theme.captionGrowth, Theme.bodyGrowth, Theme.titleGrowth, Theme.railGrowth],
                        [0, 0, 0, 0]);
            }
            function test_lengths_follow_larger_texts_and_none_is_below_the_usual_one() {
                const usual = ["todoHeight", "controlHeight", "columnListY", "sheetWidth",
                               "collapsedCardHeight", "windowCardHeight", "railWidth", "badgeHeight"];
                const lengths = () => usual.map(each => Theme[each]);
                const before = lengths();
                ViewSettings.textScale = 0.75;
                compare(Theme.body.pixelSize, 10);
                compare(lengths(), before);
                ViewSettings.textScale = 1.25;
                compare(Theme.body.pixelSize, 16);
                compare(lengths(), [39, 37, 70, 488, 365, 136, 145, 25]);
                ViewSettings.textScale = 1.5;
                compare(Theme.body.pixelSize, 20);
                compare(lengths(), [45, 43, 80, 585, 438, 144, 174, 29]);
            }
            function test_rows_buttons_and_the_rail_grow_at_once_and_shrink_again() {
                const ownRow = () => shown(item => item instanceof TodoRow && !item.isUnified)[0];
                const parts = () => [ownRow(), button(CopyKey.NewGoal),
                                     shown(item => item instanceof BreadcrumbEntry)[0], card("Report")];
                const heights = () => parts().map(item => item?.height).join();
                const usual = "34,32,18,126";
                tryVerify(() => heights() === usual);
                const targets = world.board.targetAreaWidth;
                ViewSettings.textScale = 1.5;
                tryVerify(() => heights() === "45,43,27,144");
                compare(world.board.targetAreaWidth, targets - 58);
                ViewSettings.textScale = 1;
                tryVerify(() => heights() === usual);
                compare(world.board.targetAreaWidth, targets);
            }
            function test_the_board() {
                const targets = [() => world.board.todos.goToUnified(), () => select("Taxes"),
                                 () => select("Garden"),
                                 () => world.board.goals.goToColumn("kelpa-unassigned")];
                for (const scale of scales) {
                    ViewSettings.textScale = scale;
                    for (const goTo of targets) {
                        goTo();
                        settle();
                        checkHeights(scale);
                    }
                }
            }
            function test_the_fields_for_todos() {
                for (const scale of scales) {
                    ViewSettings.textScale = scale;
                    select("Garden");
                    world.board.todos.requestEditor(world.columnOfGoal("Garden"));
                    tryVerify(() => shown(item => item instanceof TodoField).length === 1);
                    checkHeights(scale);
                    world.board.todos.cancelEditor();
                }
            }
            function test_a_menu_closes_and_has_the_new_size_when_it_opens_again() {
                mouseMove(main.contentItem, 5, 5);
                for (const scale of [1.25, 1.5, 2, 1]) {
                    mouseClick(button(CopyKey.Language));
                    tryVerify(() => shown(isInPopup).length > 3);
                    ViewSettings.textScale = scale;
                    tryVerify(() => shown(isInPopup).length === 0);
                    mouseClick(button(CopyKey.Language));
                    tryVerify(() => shown(isInPopup).length > 3);
                    checkHeights(scale);
                    compare(shown(item => item instanceof AppMenuItem)[0].height, 30 + Theme.bodyGrowth);
                    pressEscape();
                    tryVerify(() => shown(isInPopup).length === 0);
                }
            }
            function test_sheets_data() {
                return [
                    {tag: "of a goal", open: () => world.board.newGoalRequested(), close: pressEscape},
                    {tag: "of the keys", open: () => keyClick(Qt.Key_F1), close: pressEscape},
                    {tag: "of windows", open: () => world.board.goals.requestWindows(world.columnOfGoal("Taxes")),
                     close: () => world.board.windows.picker.close()},
                    {tag: "of backups", open: () => {
                         world.offerBackups(["Proposal", "Taxes"]);
                         world.board.backups.open();
                         world.runPending();
                     }, close: pressEscape},
                    {tag: "of an export", open: () => world.board.exporting.open(""), close: pressEscape},
                    {tag: "of an import", open: () => world.board.importing.open(), close: pressEscape}
                ];
            }
            function test_sheets(data) {
                checkSheet(data.open, isSheetOpen, data.close);
            }
            function test_a_message() {
                world.board.todos.copyTodo(world.todoID("Buy seeds", ""), "kelpa-unassigned");
                checkSheet(() => {}, () => shown(item => item instanceof Toast).length === 1,
                           () => world.pass(60000));
            }
            function test_trouble_with_the_disk() {
                checkSheet(() => world.breakDisk("full"),
                           () => shown(item => item instanceof TroubleBanner).length === 1,
                           () => {
                               world.repairDisk();
                               world.pass(60000);
                           });
            }
            function test_what_the_desktop_lacks() {
                checkSheet(() => world.lack("extension"),
                           () => shown(item => item instanceof DesktopBanner).length === 1,
                           () => world.lackNothing());
            }
            function test_permissions() {
                checkSheet(() => world.denyPermissions(),
                           () => shown(item => item instanceof PermissionBanner).length === 1,
                           () => world.grantPermissions());
            }
        }
    }
}
