// The signals of keyboard selection.

#include "store/signals/ChangeSignals.h"

namespace kelpa::test {
namespace {

using namespace operation_cases;
using enum NavigationDirection;
using Enter = EnterWindowLayer;

void enterB(Board& s)
{
    s.store.activateTarget(TargetSelection::goal(s.b), Enter::yes);
}

INSTANTIATE_TEST_SUITE_P(
    Navigation, ChangeSignals,
    testing::Values(
        OperationCase{
            "arrow", [](Board& s) { s.store.moveTargetSelection(up); }, {boardNavigation}, 0},
        OperationCase{
            "arrow_at_the_edge", [](Board& s) { s.store.moveTargetSelection(left); }, {}, 0},
        OperationCase{"arrow_among_windows_at_the_edge",
                      [](Board& s) { s.store.moveWindowSelection(down); },
                      {},
                      0,
                      enterB},
        OperationCase{
            "arrow_among_windows",
            [](Board& s) { s.store.moveWindowSelection(right); },
            {boardNavigation},
            0,
            [](Board& s) { s.store.activateTarget(TargetSelection::unassigned(), Enter::yes); }},
        OperationCase{"activate", enterB, {boardNavigation}, 0},
        OperationCase{"activate_what_is_active", enterB, {}, 0, enterB},
        OperationCase{"activate_an_unknown_goal",
                      [](Board& s) {
                          s.store.activateTarget(TargetSelection::goal(GoalID::create()),
                                                 Enter::no);
                      },
                      {},
                      0},
        OperationCase{"return",
                      [](Board& s) { s.store.returnToTargetSelection(); },
                      {boardNavigation},
                      0,
                      enterB},
        OperationCase{
            "return_on_a_target", [](Board& s) { s.store.returnToTargetSelection(); }, {}, 0},
        OperationCase{
            "clear", [](Board& s) { s.store.clearTargetSelection(); }, {boardNavigation}, 0},
        OperationCase{"column_count", [](Board& s) { s.store.setTargetGridColumnCount(3); }, {}, 0},
        OperationCase{"search_that_hides_the_selected_window",
                      [](Board& s) { s.store.setSearchText(QStringLiteral("nothing")); },
                      {searchText},
                      0,
                      enterB}),
    caseName);

} // namespace
} // namespace kelpa::test
