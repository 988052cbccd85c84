import QtQuick
import QtTest
import Kelpa.Controls
import Kelpa.Board

Item {
    id: root

    width: 900
    height: 300

    FirstStepsPlace {
        id: place

        width: parent.width
        steps: world.board.firstSteps
    }
    BoardHeader {
        id: header

        y: 150
        width: parent.width
        board: world.board
    }
    SignalSpy {
        id: left

        target: place
        signalName: "boardRequested"
    }

    TestCase {
        name: "FirstSteps"
        when: windowShown

        function all(item, matches) {
            return Array.from(item.children).reduce((found, each) => found.concat(all(each, matches)),
                                                    item.visible && matches(item) ? [item] : []);
        }
        function stepNames() {
            return all(place, item => item instanceof FirstStep).map(step =>
                step.Accessible.name
                + (step.Accessible.description ? " (" + step.Accessible.description + ")" : ""));
        }
        function nextStep() {
            return all(place, item => item instanceof FirstStep && item.isNext)[0].text;
        }
        /// Of the panel, at widths at which its texts wrap and at such at which they do not.
        function heightsAtEachWidth() {
            const heights = [];
            for (place.width = 700; place.width <= 1400; place.width += 5) {
                // What is within another has its height first.
                all(place, item => item.forceLayout !== undefined).reverse()
                    .forEach(item => item.forceLayout());
                heights.push(all(place, item => item instanceof FirstStepsPanel)[0].implicitHeight);
            }
            place.width = Qt.binding(() => root.width);
            return heights;
        }
        function field() {
            return all(place, item => item instanceof TextInputField)[0];
        }
        function hints() {
            return all(header, item => item instanceof BoardHints)[0].children;
        }
        function hintsShown() {
            return Array.from(hints()).filter(hint => hint.visible && hint.text).map(hint => hint.text);
        }
        function test_after_the_language_the_first_goal_is_typed() {
            const language = world.board.languageIndex;
            verify(!field().activeFocus);
            world.board.languageOffer.take(0);
            verify(field().activeFocus);
            keyClick(Qt.Key_Escape);
            root.forceActiveFocus();
            left.clear();
            world.board.setLanguageIndex(language);
        }
        function test_each_step_is_ticked_off_and_the_last_one_takes_all_away() {
            world.offerDoubleTap(true);
            compare(stepNames(), ["Type what you are working on",
                                  "Drag a window’s card onto the goal",
                                  "Press ⌘ twice to bring Kelpa forward instantly"]);
            // What a step teaches is not said above it as well.
            compare(hintsShown(), ["Arrows Select & Expand · Space Enter / Open · Esc Back"]);
            mouseClick(field());
            verify(field().activeFocus);
            keyClick(Qt.Key_Space);
            keyClick(Qt.Key_Return);
            compare(world.goalTitles(), []);
            keyClick(Qt.Key_Escape);
            compare(left.count, 1);
            keyClick("T");
            keyClick(Qt.Key_Return);
            compare(world.goalTitles(), ["T"]);
            compare(left.count, 2);
            compare(field(), undefined);
            compare(stepNames()[0], "Type what you are working on (Completed)");
            // A window cannot be dragged to a goal that has gone: the first step is to be done again.
            world.board.goals.deleteGoal(world.columnOfGoal("T"));
            compare(stepNames()[0], "Type what you are working on");
            compare(nextStep(), "Type what you are working on");
            mouseClick(field());
            keyClick("T");
            keyClick(Qt.Key_Return);
            compare(world.goalTitles(), ["T"]);
            compare(nextStep(), "Drag a window’s card onto the goal");
            world.addWindow(7, "Notes");
            // The board below stays where it is, whatever becomes the next step.
            const heights = heightsAtEachWidth();
            verify(new Set(heights).size > 1);
            world.board.drops.drop("7", world.columnOfGoal("T"));
            compare(heightsAtEachWidth(), heights);
            compare(stepNames()[1], "Drag a window’s card onto the goal (Completed)");
            world.board.goals.deleteGoal(world.columnOfGoal("T"));
            compare(stepNames()[0], "Type what you are working on (Completed)");
            verify(place.height > 0);
            world.board.firstSteps.dismiss();
            compare(stepNames(), []);
            compare(hintsShown(), ["Arrows Select & Expand · Space Enter / Open · Esc Back",
                                   "Press ⌘ twice to bring Kelpa forward instantly"]);
            tryCompare(place, "height", 0);
        }
    }
}
