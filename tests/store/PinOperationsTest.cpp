// Goals that are pinned to virtual desktops.
#include "store/PinFixture.h"
#include "store/board/BoardPersistence.h"

#include <chrono>
#include <utility>

namespace kelpa::test {
namespace {

using namespace std::chrono_literals;

using PinOperations = PinFixture;

TEST_F(PinOperations, Pinning_sends_the_goals_windows_in_one_step)
{
    open(3);
    takeSignals();
    takeWriteCount();
    store().pinGoal(goalID, 3);
    EXPECT_EQ(store().pinOf(goalID), 3);
    EXPECT_EQ(takeSignals().value(QStringLiteral("pins")), 1);
    EXPECT_EQ(takeWriteCount(), 1);
    EXPECT_EQ(settings.document(goalPinsKey), encodeGoalPins({{goalID, 3}}));
    EXPECT_EQ(takeRequests(),
              (QStringList{QStringLiteral("send to 3: 1"), QStringLiteral("send to 3: 2")}));
    EXPECT_EQ(takeRequests(), QStringList());
}

TEST_F(PinOperations, A_window_that_joins_is_sent_and_one_that_the_person_moves_stays)
{
    open(3);
    store().pinGoal(goalID, 3);
    takeRequests();
    store().assign(3, goalID);
    EXPECT_EQ(takeRequests(), QStringList{QStringLiteral("send to 3: 3")});
    setDesktop(3, 2);
    EXPECT_EQ(takeRequests(), QStringList());
    store().pinGoal(goalID, 3);
    EXPECT_EQ(takeRequests(), QStringList{QStringLiteral("send to 3: 3")}) << "gathered";
}

TEST_F(PinOperations, What_the_desktop_refuses_is_sent_once_more)
{
    open(3);
    isRefusing = true;
    store().pinGoal(goalID, 3);
    const QStringList both{QStringLiteral("send to 3: 1"), QStringLiteral("send to 3: 2")};
    EXPECT_EQ(takeRequests(), both);
    QStringList later;
    for (int pass = 0; pass < 12; ++pass)
        later += takeRequests();
    EXPECT_EQ(later, both);
}

TEST_F(PinOperations, Choosing_the_same_desktop_again_is_no_step)
{
    open(2);
    store().pinGoal(goalID, 3);
    store().undo();
    takeWriteCount();
    store().redo();
    takeWriteCount();
    store().pinGoal(goalID, 3);
    EXPECT_EQ(takeWriteCount(), 0);
    store().undo();
    EXPECT_EQ(store().pinOf(goalID), std::nullopt);
}

TEST_F(PinOperations, Undo_takes_the_pin_back_and_sends_windows_only_to_another_pin)
{
    open(2);
    store().pinGoal(goalID, 2);
    takeRequests();
    store().pinGoal(goalID, 3);
    takeRequests();
    store().undo();
    EXPECT_EQ(store().pinOf(goalID), 2);
    EXPECT_EQ(settings.document(goalPinsKey), encodeGoalPins({{goalID, 2}}));
    EXPECT_EQ(takeRequests(),
              (QStringList{QStringLiteral("send to 2: 1"), QStringLiteral("send to 2: 2")}));
    store().undo();
    EXPECT_EQ(store().pinOf(goalID), std::nullopt);
    EXPECT_EQ(settings.document(goalPinsKey), encodeGoalPins({}));
    EXPECT_EQ(takeRequests(), QStringList());
    EXPECT_EQ(store().boardNavigation().target, TargetSelection::goal(goalID));
}

TEST_F(PinOperations, A_deleted_goal_takes_its_pin_along_and_undo_brings_both_back)
{
    open(2);
    store().pinGoal(goalID, 2);
    takeRequests();
    store().deleteGoal(goalID);
    EXPECT_EQ(settings.document(goalPinsKey), encodeGoalPins({}));
    store().undo();
    EXPECT_EQ(store().pinOf(goalID), 2);
}

TEST_F(PinOperations, Undoing_a_deletion_leaves_windows_where_the_person_has_put_them)
{
    open(3);
    store().pinGoal(goalID, 2);
    takeRequests();
    const auto deleteAndUndo = [this] {
        setDesktop(1, 4);
        takeRequests();
        store().deleteGoal(goalID);
        QStringList requests = takeRequests();
        store().undo();
        requests += takeRequests();
        return requests;
    };
    EXPECT_EQ(deleteAndUndo(), QStringList());
    const GoalID other = makeGoal();
    store().assign(3, other);
    store().pinGoal(other, 3);
    EXPECT_EQ(takeRequests(), QStringList{QStringLiteral("send to 3: 3")});
    EXPECT_EQ(deleteAndUndo(), QStringList()) << "with another pinned goal";
    EXPECT_EQ(store().pins(), (GoalPins{{goalID, 2}, {other, 3}}));
}

TEST_F(PinOperations, Nothing_is_pinned_to_what_is_not_there)
{
    open(2);
    for (const int number : {-1, 0, 5})
        store().pinGoal(goalID, number);
    store().pinGoal(GoalID::create(), 2);
    EXPECT_TRUE(store().pins().isEmpty());
    EXPECT_FALSE(settings.values.contains(goalPinsKey)) << "most boards have no such value";
}

TEST_F(PinOperations, A_desktop_that_goes_keeps_its_pin_and_gets_what_has_joined_when_it_is_back)
{
    open(3);
    store().pinGoal(goalID, 4);
    takeRequests();
    const QStringList four = std::exchange(desktop.virtualDesktops, {QString(), QString()});
    store().refresh();
    takeSignals();
    store().assign(3, goalID);
    EXPECT_EQ(takeRequests(), QStringList());
    EXPECT_EQ(store().pinOf(goalID), 4);
    store().workOn(goalID);
    EXPECT_FALSE(takeRequests().contains(QStringLiteral("show desktop 4")));
    desktop.virtualDesktops = four;
    store().refresh();
    EXPECT_EQ(takeSignals().value(QStringLiteral("pins")), 1);
    EXPECT_EQ(takeRequests(), QStringList{QStringLiteral("send to 4: 3")});
}

TEST_F(PinOperations, After_a_restart_windows_stay_where_they_are)
{
    open(3);
    store().pinGoal(goalID, 3);
    takeRequests();
    setDesktop(2, 1);
    restartedStore();
    EXPECT_EQ(store().pinOf(goalID), 3);
    store().refresh();
    EXPECT_EQ(takeRequests(), QStringList());
    store().assign(3, goalID);
    EXPECT_EQ(takeRequests(), QStringList{QStringLiteral("send to 3: 3")});
}

TEST_F(PinOperations, Where_the_desktop_cannot_nothing_is_sent_but_a_pin_can_be_taken_off)
{
    open(3);
    store().pinGoal(goalID, 3);
    takeRequests();
    desktop.lack(DesktopAbility::virtualDesktops);
    store().startObserving();
    EXPECT_FALSE(store().canPinGoals());
    store().assign(3, goalID);
    store().pinGoal(goalID, 2);
    EXPECT_EQ(takeRequests(), QStringList());
    EXPECT_EQ(store().pinOf(goalID), 3);
    desktop.lackNothing();
    EXPECT_EQ(takeRequests(), QStringList{QStringLiteral("send to 3: 3")});
    desktop.lack(DesktopAbility::virtualDesktops);
    store().pinGoal(goalID, std::nullopt);
    EXPECT_EQ(store().pinOf(goalID), std::nullopt);
}

TEST_F(PinOperations, Working_on_a_pinned_goal_goes_to_its_desktop)
{
    open(4);
    setDesktop(4, 3);
    store().pinGoal(goalID, 3);
    // Not waiting for the pass that shows them there.
    store().workOn(goalID);
    EXPECT_EQ(takeRequests(),
              (QStringList{QStringLiteral("send to 3: 1"), QStringLiteral("send to 3: 2"),
                           QStringLiteral("show desktop 3"), QStringLiteral("raise 2"),
                           QStringLiteral("raise 1")}));
    store().workOn(goalID);
    EXPECT_EQ(takeRequests(),
              (QStringList{QStringLiteral("show desktop 3"), QStringLiteral("raise 2"),
                           QStringLiteral("raise 1"), QStringLiteral("minimize 4")}))
        << "the board has learnt that 4 is there";
    store().assign(1, std::nullopt);
    store().assign(2, std::nullopt);
    EXPECT_TRUE(store().hasWorkplace(goalID));
    takeRequests();
    store().workOn(goalID);
    EXPECT_EQ(takeRequests(), QStringList{QStringLiteral("show desktop 3")});
    store().pinGoal(goalID, std::nullopt);
    EXPECT_FALSE(store().hasWorkplace(goalID));
}

TEST_F(PinOperations, Where_nothing_is_minimised_only_a_pinned_goal_is_worked_on)
{
    open(4);
    desktop.lack(DesktopAbility::minimizing);
    store().refresh();
    EXPECT_FALSE(store().canWorkOn(goalID));
    store().workOn(goalID);
    EXPECT_EQ(takeRequests(), QStringList());
    setDesktop(4, 3);
    store().pinGoal(goalID, 3);
    takeRequests();
    EXPECT_TRUE(store().canWorkOn(goalID));
    EXPECT_FALSE(store().canWorkOn(makeGoal()));
    store().workOn(goalID);
    EXPECT_EQ(takeRequests(), (QStringList{QStringLiteral("show desktop 3"),
                                           QStringLiteral("raise 2"), QStringLiteral("raise 1")}));
    EXPECT_FALSE(store().canGoBack());
    desktop.virtualDesktops.resize(2);
    store().refresh();
    EXPECT_FALSE(store().canWorkOn(goalID)) << "its desktop is gone";
}

TEST_F(PinOperations, A_window_on_a_desktop_without_a_number_is_sent)
{
    open(2);
    setDesktop(1, unnumberedVirtualDesktop);
    store().refresh();
    store().pinGoal(goalID, 3);
    EXPECT_EQ(takeRequests(),
              (QStringList{QStringLiteral("send to 3: 1"), QStringLiteral("send to 3: 2")}));
}

TEST_F(PinOperations, A_window_that_the_person_opens_for_the_goal_is_followed_to_its_desktop)
{
    open(2);
    store().pinGoal(goalID, 3);
    takeRequests();
    desktop.launchedIdentifier = QStringLiteral("org.example.App1007");
    const auto opened = [this](int number) {
        store().createTerminal(goalID);
        scheduler.advance(0ms);
        const auto id = static_cast<WindowID>(desktop.windowList->size() + 5);
        desktop.addAccessibleWindow(id, 1007, QString::number(id)).desktopNumber = number;
        scheduler.advance(250ms);
        EXPECT_EQ(goalOf(id), goalID);
        return takeRequests();
    };
    EXPECT_EQ(opened(1),
              (QStringList{QStringLiteral("send to 3: 7"), QStringLiteral("show desktop 3"),
                           QStringLiteral("raise 7")}));
    EXPECT_EQ(opened(3), QStringList()) << "there already";
    EXPECT_EQ(opened(everyVirtualDesktop), QStringList());
    desktop.virtualDesktops = {QString(), QString()};
    EXPECT_EQ(opened(1), QStringList()) << "that desktop is not there";
}

TEST_F(PinOperations, What_does_not_decode_counts_as_no_pin_and_is_copied_aside)
{
    settings.values.insert(goalPinsKey, QByteArray(R"({"version":2})"));
    EXPECT_TRUE(store().pins().isEmpty());
    EXPECT_EQ(settings.copiesAside(goalPinsKey).size(), 1);
    EXPECT_EQ(settings.document(goalPinsKey), encodeGoalPins({}));
}

} // namespace
} // namespace kelpa::test
