// What is remembered of windows while they are there, and what of those that are gone.

#include "windows/memory/RememberedWindowsFixture.h"

#include "support/Seed.h"

#include <QHashFunctions>

#include <cstdint>
#include <optional>
#include <random>

namespace kelpa::test {
namespace {

TEST_F(RememberedWindowsTest, A_window_of_a_goal_is_remembered_when_it_is_gone)
{
    note({window(1, reportTitle, taxes), window(2, letterTitle, std::nullopt)});
    EXPECT_EQ(absentIDs(), QList<WindowID>());
    note({});
    EXPECT_EQ(absentIDs(), QList<WindowID>{1});
    EXPECT_EQ(memory.absent(assignments, goals).first().goalID, taxes);
    EXPECT_EQ(memory.find(1)->traits.title, reportTitle);
    EXPECT_EQ(memory.find(2), nullptr);
}

TEST_F(RememberedWindowsTest, What_is_stored_is_the_same_memory_after_a_start)
{
    note({window(1, reportTitle, taxes), window(2, letterTitle, garden),
          window(9, editorName, std::nullopt)});
    const RememberedWindows stored = memory.stored(assignments, goals);
    EXPECT_EQ(stored.newestWindow, 9U);
    EXPECT_EQ(storedIDs(), (QList<WindowID>{1, 2}));
    memory = WindowMemory(stored);
    EXPECT_EQ(absentIDs(), (QList<WindowID>{2, 1}));
    EXPECT_EQ(memory.stored(assignments, goals), stored);
    EXPECT_EQ(memory.absent(assignments, goals).first().newestWindow, 9U);
}

TEST_F(RememberedWindowsTest, What_is_taken_out_of_a_goal_is_forgotten_and_undo_brings_it_back)
{
    note({window(1, reportTitle, taxes)});
    note({window(1, reportTitle, std::nullopt)});
    EXPECT_EQ(storedIDs(), QList<WindowID>());
    note({});
    EXPECT_EQ(absentIDs(), QList<WindowID>());
    assignments.insert(QStringLiteral("1"), taxes);
    EXPECT_EQ(absentIDs(), QList<WindowID>{1});
    EXPECT_EQ(storedIDs(), QList<WindowID>{1});
}

TEST_F(RememberedWindowsTest, A_deleted_goal_takes_its_windows_along)
{
    note({window(1, reportTitle, taxes), window(2, letterTitle, garden)});
    note({});
    EXPECT_EQ(memory.stored(assignments, {garden}).windows.size(), 1);
    EXPECT_EQ(memory.absent(assignments, {garden}).size(), 1);
    EXPECT_EQ(storedIDs(), (QList<WindowID>{1, 2})) << "undo";
}

TEST_F(RememberedWindowsTest, Only_what_means_something_else_is_worth_storing)
{
    EXPECT_TRUE(note({window(1, reportTitle, taxes)}));
    EXPECT_FALSE(note({window(1, reportTitle, taxes)}));
    EXPECT_FALSE(note({window(1, QStringLiteral("*(3) ") + reportTitle, taxes)}));
    for (int i = 0; i < 50; ++i)
        EXPECT_FALSE(note({window(1, QStringLiteral("[%1%] ").arg(i) + reportTitle, taxes)}));
    EXPECT_TRUE(note({window(1, letterTitle, taxes)}));
    EXPECT_FALSE(note({window(1, letterTitle, taxes), window(2, reportTitle, std::nullopt)}))
        << "belongs to no goal";
    EXPECT_TRUE(note({window(1, letterTitle, garden), window(2, reportTitle, std::nullopt)}));
    EXPECT_TRUE(note({}));
    EXPECT_FALSE(note({}));
}

TEST_F(RememberedWindowsTest, When_a_window_was_seen_is_known_within_a_day)
{
    const Date start = now;
    note({window(1, reportTitle, taxes)});
    passDays(0.9);
    EXPECT_FALSE(note({window(1, reportTitle, taxes)}));
    EXPECT_EQ(memory.find(1)->seenAt, start);
    passDays(0.2);
    EXPECT_TRUE(note({window(1, reportTitle, taxes)}));
    EXPECT_EQ(memory.find(1)->seenAt, now);
    passDays(0.5);
    note({});
    EXPECT_EQ(memory.find(1)->seenAt, now);
}

TEST_F(RememberedWindowsTest, The_latest_title_counts_and_a_document_that_is_late_is_kept)
{
    WindowItem item = window(1, reportTitle, taxes);
    item.accessibilityDocument = QStringLiteral("/home/ada/reportTitle.odt");
    note({item});
    item.accessibilityDocument.reset();
    item.title = QStringLiteral("*") + reportTitle;
    note({item});
    EXPECT_EQ(memory.find(1)->traits.document, QStringLiteral("/home/ada/reportTitle.odt"));
    item.title = letterTitle;
    note({item});
    EXPECT_EQ(memory.find(1)->traits.document, QString());
    EXPECT_EQ(memory.find(1)->traits.title, letterTitle);
}

TEST_F(RememberedWindowsTest, A_look_alike_of_another_goal_or_none_is_never_forgotten_again)
{
    note({window(1, reportTitle, taxes), window(2, reportTitle, std::nullopt),
          window(3, letterTitle, garden)});
    EXPECT_TRUE(memory.find(1)->shared.title);
    EXPECT_FALSE(memory.find(3)->shared.title);
    note({window(1, reportTitle, taxes)});
    note({});
    EXPECT_TRUE(memory.find(1)->shared.title);
    memory = WindowMemory(memory.stored(assignments, goals));
    EXPECT_TRUE(memory.absent(assignments, goals).last().shared.title);
    note({window(1, reportTitle, taxes)});
    EXPECT_TRUE(memory.find(1)->shared.title);
    note({window(1, letterTitle, taxes)});
    EXPECT_FALSE(memory.find(1)->shared.title) << "it shows something else now";
}

TEST_F(RememberedWindowsTest, Look_alikes_of_one_goal_share_nothing_but_a_role)
{
    WindowItem first = window(1, reportTitle, taxes);
    WindowItem second = window(2, reportTitle, taxes);
    note({first, second});
    EXPECT_EQ(memory.find(1)->shared, SharedTraits());
    first.role = second.role = QStringLiteral("browser");
    first.sessionID = second.sessionID = QStringLiteral("10a1b2");
    note({first, second});
    EXPECT_EQ(memory.find(1)->shared, (SharedTraits{true, false, false}));
}

TEST_F(RememberedWindowsTest, A_new_window_is_no_look_alike_until_it_is_settled)
{
    note({window(1, reportTitle, taxes)});
    note({});
    note({window(2, reportTitle, std::nullopt)}, {2});
    EXPECT_FALSE(memory.find(1)->shared.title);
    note({window(2, reportTitle, std::nullopt)});
    EXPECT_TRUE(memory.find(1)->shared.title);
}

TEST_F(RememberedWindowsTest, A_new_window_that_goes_unplaced_was_another_one)
{
    note({window(1, reportTitle, taxes), window(2, reportTitle, std::nullopt)}, {2});
    EXPECT_FALSE(memory.find(1)->shared.title);
    note({});
    EXPECT_TRUE(memory.find(1)->shared.title);
}

TEST_F(RememberedWindowsTest, So_was_a_new_window_that_shows_something_else)
{
    note({window(1, reportTitle, taxes), window(2, reportTitle, std::nullopt)}, {2});
    note({window(1, reportTitle, taxes), window(2, letterTitle, std::nullopt)}, {2});
    EXPECT_TRUE(memory.find(1)->shared.title);
}

TEST_F(RememberedWindowsTest, At_the_end_no_window_is_new_any_more)
{
    note({window(1, reportTitle, taxes), window(2, reportTitle, std::nullopt)}, {2});
    EXPECT_TRUE(memory.settle(assignments));
    EXPECT_TRUE(memory.find(1)->shared.title);
    EXPECT_FALSE(memory.settle(assignments));
}

TEST_F(RememberedWindowsTest, A_window_takes_the_place_of_the_one_whose_page_it_shows)
{
    note({window(1, reportTitle, taxes), window(2, letterTitle, taxes)});
    note({window(2, letterTitle, taxes)});
    EXPECT_EQ(absentIDs(), QList<WindowID>{1});
    note({window(2, reportTitle, taxes)});
    EXPECT_EQ(absentIDs(), QList<WindowID>());
    note({window(2, reportTitle, taxes), window(3, letterTitle, garden)});
    note({window(3, letterTitle, garden)});
    note({window(3, reportTitle, garden)});
    EXPECT_EQ(absentIDs(), QList<WindowID>{2}) << "in another goal";
}

TEST_F(RememberedWindowsTest, An_absent_look_alike_of_the_goal_is_the_counterpart)
{
    note({window(1, reportTitle, taxes), window(2, letterTitle, garden)});
    note({window(3, reportTitle, std::nullopt)});
    EXPECT_EQ(memory.counterpart(3, taxes, assignments), 1U);
    EXPECT_EQ(memory.counterpart(3, garden, assignments), std::nullopt);
    EXPECT_EQ(memory.counterpart(4, taxes, assignments), std::nullopt);
}

TEST_F(RememberedWindowsTest, Of_alike_ones_the_counterpart_is_the_one_seen_last)
{
    constexpr WindowID alikeCount = 40;
    QList<WindowItem> windows;
    for (WindowID id = 1; id <= alikeCount; ++id)
        windows.append(window(id, reportTitle, taxes));
    note(windows);
    // The 17th is there for an hour longer than the others.
    note({windows.at(16)});
    passDays(1.0 / 24);
    note({});
    note({window(100, reportTitle, std::nullopt)});
    EXPECT_EQ(memory.counterpart(100, taxes, assignments), 17U);
    for (WindowID id = alikeCount; id > 17; --id) {
        assignments.remove(QStringLiteral("17"));
        EXPECT_EQ(memory.counterpart(100, taxes, assignments), id) << "of those seen at one time";
        assignments.remove(QString::number(id));
    }
}

class RandomCounterparts : public RememberedWindowsTest
{
protected:
    /// Windows of few titles and documents come and go at random; the counterparts of the last
    /// ones.
    QList<std::optional<WindowID>> counterpartsOfRandomWindows(std::uint64_t seed)
    {
        std::mt19937_64 random(seed);
        memory = {};
        assignments.clear();
        const auto randomWindow = [&](WindowID id, std::optional<GoalID> goalID) {
            WindowItem item = window(id, random() % 2 == 0 ? reportTitle : letterTitle, goalID);
            if (random() % 3 == 0)
                item.accessibilityDocument = QStringLiteral("/home/ada/%1.odt").arg(random() % 2);
            return item;
        };
        QList<WindowItem> windows;
        for (WindowID id = 1; id <= 30; ++id) {
            windows.append(randomWindow(id, random() % 2 == 0 ? taxes : garden));
            note(windows);
            if (random() % 2 == 0)
                windows.removeAt(
                    static_cast<qsizetype>(random() % static_cast<std::uint64_t>(windows.size())));
            if (random() % 4 == 0)
                passDays(0.01);
        }
        note({});
        QList<std::optional<WindowID>> counterparts;
        for (WindowID id = 100; id < 110; ++id) {
            note({randomWindow(id, std::nullopt)});
            counterparts.append(memory.counterpart(id, taxes, assignments));
            if (counterparts.back())
                assignments.remove(QString::number(*counterparts.back()));
        }
        return counterparts;
    }
};

TEST_F(RandomCounterparts, Are_the_same_whatever_the_order_of_the_hash_tables)
{
    const std::uint64_t seed = test::seed();
    for (std::uint64_t i = 0; i < 20; ++i) {
        QHashSeed::setDeterministicGlobalSeed();
        const QList<std::optional<WindowID>> expected = counterpartsOfRandomWindows(seed + i);
        QHashSeed::resetRandomGlobalSeed();
        EXPECT_EQ(counterpartsOfRandomWindows(seed + i), expected) << seedText(seed);
    }
}

TEST_F(RememberedWindowsTest, After_ninety_days_a_window_is_forgotten)
{
    note({window(1, reportTitle, taxes)});
    note({});
    passDays(90);
    memory.prune(assignments, now);
    EXPECT_EQ(absentIDs(), QList<WindowID>{1});
    passDays(0.01);
    memory.prune(assignments, now);
    EXPECT_EQ(absentIDs(), QList<WindowID>());
}

TEST_F(RememberedWindowsTest, A_clock_that_was_set_back_makes_nothing_older_and_forgets_nothing)
{
    note({window(1, reportTitle, taxes), window(2, letterTitle, taxes)});
    note({window(2, letterTitle, taxes)});
    passDays(-5000);
    note({window(2, letterTitle, taxes)});
    memory.prune(assignments, now);
    EXPECT_EQ(absentIDs(), QList<WindowID>{1});
    EXPECT_EQ(memory.find(2)->seenAt, now);
}

TEST_F(RememberedWindowsTest, What_was_seen_by_a_clock_without_a_battery_is_not_old)
{
    const Date present = now;
    // 1970, until the computer asks the network for the time.
    now = Date{-978'307'200};
    note({window(1, reportTitle, taxes)});
    note({});
    memory.prune(assignments, now);
    memory = WindowMemory(memory.stored(assignments, goals));
    now = present;
    memory.prune(assignments, now);
    ASSERT_EQ(absentIDs(), QList<WindowID>{1});
    EXPECT_EQ(memory.find(1)->seenAt, present);
    passDays(91);
    memory.prune(assignments, now);
    EXPECT_EQ(absentIDs(), QList<WindowID>());
}

TEST_F(RememberedWindowsTest, A_thousand_windows_are_remembered_the_latest)
{
    for (WindowID id = 1; id <= 1010; ++id) {
        note({window(id, QStringLiteral("Page %1").arg(id), taxes)});
        passDays(0.001);
    }
    note({});
    memory.prune(assignments, now);
    EXPECT_EQ(absentIDs().size(), 1000);
    EXPECT_EQ(absentIDs().first(), 1010U);
    EXPECT_EQ(absentIDs().last(), 11U);
}

TEST_F(RememberedWindowsTest, No_more_than_a_thousand_are_stored_however_many_are_listed)
{
    QList<WindowItem> windows;
    for (WindowID id = 1; id <= 1010; ++id)
        windows.append(window(id, QStringLiteral("Page %1").arg(id), taxes));
    note(windows);
    EXPECT_EQ(storedIDs().size(), 1000);
    memory.prune(assignments, now);
    EXPECT_NE(memory.find(1), nullptr);
}

TEST_F(RememberedWindowsTest, Of_two_entries_for_one_window_the_last_one_counts)
{
    const RememberedWindow first{7, traits(editorName, reportTitle), {}, now};
    const RememberedWindow second{7, traits(editorName, letterTitle), {}, now};
    memory = WindowMemory({9, {first, second}});
    assignments.insert(QStringLiteral("7"), taxes);
    EXPECT_EQ(absentIDs(), QList<WindowID>{7});
    EXPECT_EQ(memory.find(7)->traits.title, letterTitle);
}

TEST_F(RememberedWindowsTest, Of_an_assignment_to_a_goal_that_is_gone_nothing_is_remembered)
{
    note({window(1, reportTitle, GoalID::create())});
    note({});
    EXPECT_EQ(absentIDs(), QList<WindowID>());
    EXPECT_EQ(storedIDs(), QList<WindowID>());
}

} // namespace
} // namespace kelpa::test
