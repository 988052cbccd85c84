import QtQuick
import QtTest
import Kelpa.Scene

Item {
    id: root

    width: 300
    height: 400

    property bool areItemsRestless: false

    ListModel {
        id: cards
    }
    WaterfallView {
        id: view

        width: 210
        height: implicitHeight
        minimumColumnWidth: 100
        spacing: 10
        assumedHeight: 50
        visibleTo: 200
        motionTime: 80
        model: cards

        WaterfallDelegate {
            Item {
                required property string name
                required property int length
                required property int index
                WaterfallDelegate.isPinned: false
                WaterfallDelegate.isRestless: root.areItemsRestless

                implicitHeight: length
                height: length
            }
        }
    }

    TestCase {
        name: "WaterfallView"
        when: windowShown

        function init() {
            view.motionTime = 80;
            view.visibleFrom = 0;
            cards.clear();
            for (const [name, length] of [["a", 50], ["b", 80], ["c", 50], ["d", 50]])
                cards.append({name: name, length: length});
            view.layOut();
        }
        /// "name x y" of the rows, where they are now; "-" of one without an item.
        function places() {
            let result = [];
            for (let row = 0; row < cards.count; ++row) {
                const item = view.itemAtRow(row);
                result.push(item ? item.name + " " + item.x + " " + item.y : "-");
            }
            return result;
        }
        function settle() {
            view.layOut();
            tryVerify(() => !view.isMoving);
            view.layOut();
        }

        function test_rows_stand_in_the_lowest_column() {
            compare(places(), ["a 0 0", "b 110 0", "c 0 60", "d 110 90"]);
            compare(view.implicitHeight, 140);
            compare(view.itemAtRow(0).width, 100);
            verify(!view.isMoving);
        }
        function test_a_row_that_is_moved_keeps_its_item_and_goes_to_its_place() {
            const item = view.itemAtRow(3);
            cards.move(3, 0, 1);
            view.layOut();
            compare(view.itemAtRow(0), item);
            compare(item.index, 0);
            verify(view.isMoving);
            compare(item.x, 110);
            settle();
            compare(places(), ["d 0 0", "a 110 0", "b 0 60", "c 110 60"]);
        }
        function test_rows_move_in_no_list_around_one_whose_rows_change_places_all_the_time() {
            root.areItemsRestless = true;
            cards.move(3, 0, 1);
            view.layOut();
            verify(!view.isMoving);
            root.areItemsRestless = false;
            cards.move(3, 0, 1);
            view.layOut();
            verify(view.isMoving);
            settle();
        }
        function test_rows_that_change_places_all_the_time_are_there_at_once_until_they_rest() {
            view.fixedItemHeight = 50;
            view.layOut();
            settle();
            // The changes follow each other for certain, and outlast the view's patience.
            view.motionTime = 100000;
            view.patience = 20;
            const isStill = () => {
                cards.move(3, 0, 1);
                view.layOut();
                return !view.isMoving;
            };
            verify(!isStill());
            tryVerify(() => view.isRestless);
            verify(isStill());
            for (let row = 0; row < cards.count; ++row) {
                const item = view.itemAtRow(row);
                compare(Qt.point(item.x, item.y), Qt.point(view.rowRect(row).x, view.rowRect(row).y));
            }
            verify(view.isRestless);
            // The last change for now.
            view.motionTime = 1;
            isStill();
            tryVerify(() => !view.isRestless);
            view.motionTime = 80;
            view.patience = 100000;
            verify(!isStill());
            settle();
            view.fixedItemHeight = 0;
        }
        function test_a_row_that_comes_is_at_its_place_at_once() {
            cards.insert(1, {name: "new", length: 30});
            view.layOut();
            compare(view.itemAtRow(1).x, 110);
            compare(view.itemAtRow(1).y, 0);
            settle();
            compare(places(), ["a 0 0", "new 110 0", "b 110 40", "c 0 60", "d 0 120"]);
        }
        function test_a_row_that_goes_leaves_no_gap() {
            cards.remove(0);
            settle();
            compare(places(), ["b 0 0", "c 110 0", "d 110 60"]);
            compare(view.itemCount, 3);
        }
        function test_without_motion_rows_are_at_their_places_at_once() {
            view.motionTime = 0;
            cards.move(3, 0, 1);
            view.layOut();
            verify(!view.isMoving);
            compare(places(), ["d 0 0", "a 110 0", "b 0 60", "c 110 60"]);
        }
        function test_a_new_height_moves_what_lies_below() {
            cards.setProperty(0, "length", 100);
            settle();
            compare(places(), ["a 0 0", "b 110 0", "c 110 90", "d 0 110"]);
            compare(view.implicitHeight, 160);
        }
        function test_only_rows_in_the_visible_range_have_items() {
            for (let i = 0; i < 500; ++i)
                cards.append({name: "row " + i, length: 50});
            view.layOut();
            verify(view.itemCount <= 8, view.itemCount);
            const far = view.rowRect(400);
            verify(far.y > 10000);
            view.visibleTo = far.y + 200;
            view.visibleFrom = far.y;
            view.layOut();
            verify(view.itemAtRow(400) !== null);
            compare(view.itemAtRow(400).name, "row 396");
            compare(view.itemAtRow(400).y, far.y);
            compare(view.itemAtRow(0), null);
            verify(view.itemCount <= 12, view.itemCount);
            view.visibleFrom = 0;
            view.visibleTo = 200;
        }
        function test_a_row_that_is_far_away_keeps_the_height_that_it_had() {
            for (let i = 0; i < 100; ++i)
                cards.append({name: "row " + i, length: 50});
            cards.setProperty(0, "length", 120);
            view.layOut();
            view.visibleTo = 2200;
            view.visibleFrom = 2000;
            view.layOut();
            compare(view.itemAtRow(0), null);
            compare(view.rowRect(0).height, 120);
            view.visibleFrom = 0;
            view.visibleTo = 200;
        }
        function test_a_pinned_row_has_an_item_wherever_it_is() {
            for (let i = 0; i < 100; ++i)
                cards.append({name: "row " + i, length: 50});
            view.pinnedRow = 80;
            view.layOut();
            compare(view.itemAtRow(80).name, "row 76");
            view.pinnedRow = -1;
            view.layOut();
            compare(view.itemAtRow(80), null);
        }
        function test_an_item_that_is_pinned_stays_until_it_is_not() {
            for (let i = 0; i < 100; ++i)
                cards.append({name: "row " + i, length: 50});
            view.layOut();
            view.itemAtRow(0).WaterfallDelegate.isPinned = true;
            view.visibleTo = 2200;
            view.visibleFrom = 2000;
            view.layOut();
            compare(view.itemAtRow(1), null);
            compare(view.itemAtRow(0).name, "a");
            view.itemAtRow(0).WaterfallDelegate.isPinned = false;
            tryVerify(() => view.itemAtRow(0) === null);
            view.visibleFrom = 0;
            view.visibleTo = 200;
        }
        function test_a_row_that_there_is_not_has_no_place() {
            compare(view.rowRect(-1), Qt.rect(0, 0, 0, 0));
            compare(view.rowRect(4), Qt.rect(0, 0, 0, 0));
        }
    }
}
