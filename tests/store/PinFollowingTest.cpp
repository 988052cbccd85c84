// Goals that are pinned to virtual desktops whose numbers shift as others go.
#include "store/PinFixture.h"
#include "store/board/BoardPersistence.h"

namespace kelpa::test {
namespace {

class PinFollowing : public PinFixture
{
protected:
    /// Four desktops that are told apart, windows 1 to `count` on the first, 1 and 2 in the goal,
    /// which is pinned to the third.
    void openPinned(WindowID count)
    {
        desktop.desktopIDs = {11, 12, 13, 14};
        open(count);
        store().pinGoal(goalID, 3);
        takeRequests();
        takeRequests();
    }

    QByteArray linksTo(DesktopID id) const
    {
        return encodeDesktopLinks({{goalID, {.pin = 3, .desktop = id}}});
    }

    /// The second of four goes.
    void removeSecond()
    {
        desktop.virtualDesktops.removeAt(1);
        desktop.desktopIDs.removeAt(1);
        for (WindowListEntry& entry : *desktop.windowList) {
            if (entry.desktopNumber > 2)
                entry.desktopNumber = *entry.desktopNumber - 1;
        }
        store().refresh();
    }
};

TEST_F(PinFollowing, A_pin_follows_its_desktop_without_a_step_or_a_word)
{
    openPinned(3);
    takeSignals();
    takeWriteCount();
    removeSecond();
    EXPECT_EQ(store().pinOf(goalID), 2);
    EXPECT_EQ(store().pins(), (GoalPins{{goalID, 2}}));
    EXPECT_EQ(takeSignals().value(QStringLiteral("pins")), 1);
    EXPECT_EQ(takeWriteCount(), 0);
    EXPECT_EQ(store().toastMessage(), std::nullopt);
    EXPECT_EQ(takeRequests(), QStringList()) << "its windows are there";
    store().assign(3, goalID);
    EXPECT_EQ(takeRequests(), QStringList{QStringLiteral("send to 2: 3")});
    store().undo();
    store().undo();
    EXPECT_EQ(store().pinOf(goalID), std::nullopt) << "the step before is that of the pin";
}

TEST_F(PinFollowing, Working_on_a_goal_goes_to_its_desktop_whatever_its_number)
{
    openPinned(4);
    setDesktop(3, 4);
    setDesktop(4, 3);
    store().refresh();
    removeSecond();
    takeRequests();
    store().workOn(goalID);
    EXPECT_EQ(takeRequests(),
              (QStringList{QStringLiteral("show desktop 2"), QStringLiteral("raise 2"),
                           QStringLiteral("raise 1"), QStringLiteral("minimize 4")}));
}

TEST_F(PinFollowing, Windows_and_the_person_go_to_the_desktop_itself)
{
    openPinned(2);
    EXPECT_EQ(desktop.requestedDesktops,
              (QList<NumberedDesktop>{{.number = 3, .id = 13}, {.number = 3, .id = 13}}));
    removeSecond();
    desktop.requestedDesktops.clear();
    store().workOn(goalID);
    takeRequests();
    EXPECT_EQ(desktop.requestedDesktops, (QList<NumberedDesktop>{{.number = 2, .id = 13}}));
}

TEST_F(PinFollowing, A_pin_whose_desktop_goes_means_its_number_again)
{
    openPinned(3);
    removeSecond();
    desktop.virtualDesktops.removeAt(1);
    desktop.desktopIDs.removeAt(1);
    setDesktop(1, 1);
    setDesktop(2, 1);
    store().refresh();
    EXPECT_EQ(store().pinOf(goalID), 3);
    store().assign(3, goalID);
    EXPECT_EQ(takeRequests(), QStringList());
    desktop.virtualDesktops.append(QString());
    desktop.desktopIDs.append(15);
    store().refresh();
    EXPECT_EQ(takeRequests(), QStringList{QStringLiteral("send to 3: 3")});
}

TEST_F(PinFollowing, Undo_leads_to_the_desktop_that_was_pinned_to)
{
    openPinned(3);
    store().pinGoal(goalID, 4);
    takeRequests();
    removeSecond();
    EXPECT_EQ(store().pinOf(goalID), 3);
    store().undo();
    EXPECT_EQ(store().pinOf(goalID), 2);
    EXPECT_EQ(takeRequests(),
              (QStringList{QStringLiteral("send to 2: 1"), QStringLiteral("send to 2: 2")}));
    store().redo();
    EXPECT_EQ(store().pinOf(goalID), 3);
}

TEST_F(PinFollowing, Choosing_a_number_means_the_desktop_that_has_it_now)
{
    openPinned(3);
    removeSecond();
    takeWriteCount();
    setDesktop(2, 1);
    store().refresh();
    store().pinGoal(goalID, 2);
    EXPECT_EQ(takeWriteCount(), 1) << "the number that was chosen is stored";
    EXPECT_EQ(takeRequests(), QStringList{QStringLiteral("send to 2: 2")}) << "gathered";
    store().pinGoal(goalID, 3);
    EXPECT_EQ(store().pinOf(goalID), 3);
    EXPECT_EQ(takeRequests(),
              (QStringList{QStringLiteral("send to 3: 1"), QStringLiteral("send to 3: 2")}));
}

TEST_F(PinFollowing, A_window_that_is_on_its_way_as_its_desktop_shifts_is_sent_once)
{
    openPinned(3);
    setDesktop(3, 2);
    store().refresh();
    store().assign(3, goalID);
    scheduler.advance(std::chrono::milliseconds(0));
    desktop.calls.clear();
    setDesktop(3, 3);
    // It was alone on the second.
    removeSecond();
    QStringList later;
    for (int pass = 0; pass < 12; ++pass)
        later += takeRequests();
    EXPECT_EQ(later, QStringList());
    EXPECT_EQ(store().pinOf(goalID), 2);
}

TEST_F(PinFollowing, While_the_desktop_tells_nothing_pins_mean_what_they_did)
{
    openPinned(3);
    removeSecond();
    takeSignals();
    const QStringList names = std::exchange(desktop.virtualDesktops, {});
    const DesktopIDs ids = std::exchange(desktop.desktopIDs, {});
    store().refresh();
    EXPECT_EQ(store().pinOf(goalID), 2);
    store().assign(3, goalID);
    EXPECT_EQ(takeRequests(), QStringList());
    desktop.virtualDesktops = names;
    desktop.desktopIDs = ids;
    store().refresh();
    EXPECT_EQ(takeRequests(), QStringList{QStringLiteral("send to 2: 3")});
}

TEST_F(PinFollowing, Where_desktops_are_not_told_apart_a_pin_is_a_number)
{
    openPinned(3);
    removeSecond();
    desktop.desktopIDs.clear();
    store().refresh();
    EXPECT_EQ(store().pinOf(goalID), 3);
    EXPECT_EQ(takeRequests(), QStringList());
}

TEST_F(PinFollowing, After_a_restart_the_pin_means_the_same_desktop)
{
    openPinned(3);
    removeSecond();
    restartedStore();
    store().refresh();
    EXPECT_EQ(store().pinOf(goalID), 2);
    EXPECT_EQ(takeRequests(), QStringList());
    EXPECT_EQ(settings.document(desktopLinksKey),
              encodeDesktopLinks({{goalID, {.pin = 3, .desktop = 13}}}));
    store().assign(3, goalID);
    EXPECT_EQ(takeRequests(), QStringList{QStringLiteral("send to 2: 3")});
}

TEST_F(PinFollowing, After_another_login_the_pin_means_its_number)
{
    openPinned(3);
    removeSecond();
    desktop.virtualDesktops.append(QString());
    desktop.desktopIDs = {21, 22, 23, 24};
    restartedStore();
    store().refresh();
    EXPECT_EQ(store().pinOf(goalID), 3);
    removeSecond();
    EXPECT_EQ(store().pinOf(goalID), 2) << "and follows the desktop that has it now";
}

TEST_F(PinFollowing, Links_that_are_for_another_pin_or_do_not_decode_count_as_none)
{
    openPinned(3);
    const GoalID pinned = goalID;
    for (const QByteArray& links :
         {encodeDesktopLinks({{pinned, {.pin = 2, .desktop = 11}}}), QByteArray("{}")}) {
        settings.values.insert(desktopLinksKey, links);
        restartedStore();
        store().refresh();
        EXPECT_EQ(store().pinOf(pinned), 3) << links.constData();
        EXPECT_EQ(settings.document(desktopLinksKey),
                  encodeDesktopLinks({{pinned, {.pin = 3, .desktop = 13}}}));
    }
}

TEST_F(PinFollowing, A_choice_of_the_same_number_is_stored_at_once_with_its_desktop)
{
    openPinned(3);
    removeSecond();
    takeWriteCount();
    store().pinGoal(goalID, 3);
    EXPECT_EQ(takeWriteCount(), 1);
    EXPECT_EQ(settings.document(desktopLinksKey),
              encodeDesktopLinks({{goalID, {.pin = 3, .desktop = 14}}}));
    // No pass comes between.
    restartedStore();
    store().refresh();
    EXPECT_EQ(store().pinOf(goalID), 3);
}

TEST_F(PinFollowing, A_choice_of_the_same_number_is_a_step_of_its_own)
{
    openPinned(3);
    removeSecond();
    store().pinGoal(goalID, 3);
    EXPECT_EQ(takeRequests(),
              (QStringList{QStringLiteral("send to 3: 1"), QStringLiteral("send to 3: 2")}));
    store().activateTarget(TargetSelection::unassigned(), EnterWindowLayer::no);
    takeSignals();
    takeWriteCount();
    store().undo();
    EXPECT_EQ(store().pinOf(goalID), 2);
    EXPECT_EQ(takeSignals().value(QStringLiteral("pins")), 1);
    EXPECT_EQ(takeWriteCount(), 1);
    EXPECT_EQ(settings.document(desktopLinksKey), linksTo(13)) << "without another pass";
    EXPECT_EQ(store().boardNavigation().target, TargetSelection::goal(goalID)) << "it shows where";
    EXPECT_EQ(takeRequests(),
              (QStringList{QStringLiteral("send to 2: 1"), QStringLiteral("send to 2: 2")}));
    store().redo();
    EXPECT_EQ(store().pinOf(goalID), 3);
    EXPECT_EQ(settings.document(desktopLinksKey), linksTo(14));
    EXPECT_EQ(takeRequests(),
              (QStringList{QStringLiteral("send to 3: 1"), QStringLiteral("send to 3: 2")}));
    store().undo();
    store().undo();
    EXPECT_EQ(store().pinOf(goalID), std::nullopt) << "the step before is that of the first pin";
}

TEST_F(PinFollowing, Undoing_a_choice_whose_desktop_is_gone_leads_to_its_number)
{
    openPinned(3);
    removeSecond();
    store().pinGoal(goalID, 3);
    takeRequests();
    // What the first choice meant goes, and a new one comes at the end.
    desktop.desktopIDs = {11, 14, 15};
    setDesktop(1, 2);
    setDesktop(2, 2);
    store().refresh();
    EXPECT_EQ(store().pinOf(goalID), 2);
    store().undo();
    EXPECT_EQ(store().pinOf(goalID), 3);
    EXPECT_EQ(settings.document(desktopLinksKey), linksTo(15));
}

TEST_F(PinFollowing, What_a_desktop_did_is_no_part_of_the_next_step)
{
    openPinned(3);
    // The pin's desktop goes, and another one has its number.
    desktop.desktopIDs = {11, 12, 14, 15};
    setDesktop(1, 1);
    setDesktop(2, 1);
    store().refresh();
    EXPECT_EQ(settings.document(desktopLinksKey), linksTo(14));
    // A setting, which is a step only where it changes the order of the goals.
    store().setAutoSortingGoals(!store().isAutoSortingGoals());
    store().undo();
    EXPECT_EQ(store().pinOf(goalID), std::nullopt) << "the step is that of the pin";
}

TEST_F(PinFollowing, Links_are_stored_with_the_deletion_of_a_goal_and_with_its_undoing)
{
    openPinned(3);
    removeSecond();
    const GoalID pinned = goalID;
    takeWriteCount();
    store().deleteGoal(pinned);
    EXPECT_EQ(takeWriteCount(), 1);
    EXPECT_EQ(settings.document(desktopLinksKey), encodeDesktopLinks({}));
    store().undo();
    EXPECT_EQ(takeWriteCount(), 1);
    EXPECT_EQ(settings.document(desktopLinksKey), linksTo(13));
    // No pass comes between.
    restartedStore();
    store().refresh();
    EXPECT_EQ(store().pinOf(pinned), 2);
}

TEST_F(PinFollowing, Until_the_stored_board_is_loaded_its_links_stay)
{
    openPinned(3);
    removeSecond();
    const GoalID stored = goalID;
    const QMap<QString, SettingsValue> before = settings.values;
    settings.isUnreadable = true;
    restartedStore();
    goalID = makeGoal();
    store().refresh();
    store().pinGoal(goalID, 2);
    store().refresh();
    EXPECT_EQ(settings.values, before);
    settings.isUnreadable = false;
    scheduler.advance(std::chrono::seconds(5));
    EXPECT_EQ(store().pins(), (GoalPins{{stored, 2}, {goalID, 2}}));
    EXPECT_EQ(settings.document(desktopLinksKey),
              encodeDesktopLinks(
                  {{stored, {.pin = 3, .desktop = 13}}, {goalID, {.pin = 2, .desktop = 13}}}));
}

TEST_F(PinFollowing, Choosing_the_number_that_shows_stores_it_as_a_step)
{
    openPinned(3);
    removeSecond();
    store().pinGoal(goalID, 2);
    EXPECT_EQ(settings.document(goalPinsKey), encodeGoalPins({{goalID, 2}}));
    EXPECT_EQ(settings.document(desktopLinksKey),
              encodeDesktopLinks({{goalID, {.pin = 2, .desktop = 13}}}));
    takeWriteCount();
    store().pinGoal(goalID, 2);
    EXPECT_EQ(takeWriteCount(), 0) << "it is stored already";
    store().undo();
    EXPECT_EQ(store().pinOf(goalID), 2) << "the same desktop";
    EXPECT_EQ(settings.document(goalPinsKey), encodeGoalPins({{goalID, 3}}));
    store().undo();
    EXPECT_EQ(store().pinOf(goalID), std::nullopt) << "the step before is that of the first pin";
}

TEST_F(PinFollowing, The_board_stores_the_number_that_was_chosen)
{
    openPinned(3);
    removeSecond();
    store().assign(3, goalID);
    EXPECT_EQ(settings.document(goalPinsKey), encodeGoalPins({{goalID, 3}}));
}

} // namespace
} // namespace kelpa::test
