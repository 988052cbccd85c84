#include "platform/wayland/toplevels/ToplevelList.h"

#include <gtest/gtest.h>

namespace kelpa::test {
namespace {

using wayland::Toplevel;
using wayland::ToplevelID;
using wayland::ToplevelList;

std::vector<ToplevelID> order(const ToplevelList& list)
{
    std::vector<ToplevelID> ids;
    for (const Toplevel& toplevel : list.mostRecentFirst())
        ids.push_back(toplevel.id);
    return ids;
}

void open(ToplevelList& list, ToplevelID window, bool isActivated = false)
{
    list.open(window);
    list.pending(window).isActivated = isActivated;
    EXPECT_TRUE(list.commit(window));
}

void setActivated(ToplevelList& list, ToplevelID window, bool isActivated)
{
    list.pending(window).isActivated = isActivated;
    EXPECT_TRUE(list.commit(window));
}

TEST(ToplevelList, A_window_is_listed_from_its_first_commit_on)
{
    ToplevelList list;
    list.open(1);
    list.pending(1).title = QStringLiteral("a");
    EXPECT_TRUE(list.mostRecentFirst().empty());
    EXPECT_TRUE(list.commit(1));
    list.pending(1).title = QStringLiteral("b");
    ASSERT_EQ(list.mostRecentFirst().size(), 1U);
    EXPECT_EQ(list.mostRecentFirst().front().title, QStringLiteral("a"));
    EXPECT_TRUE(list.commit(1));
    EXPECT_EQ(list.mostRecentFirst().front().title, QStringLiteral("b"));
}

TEST(ToplevelList, A_commit_that_repeats_changes_nothing)
{
    ToplevelList list;
    open(list, 1, true);
    EXPECT_FALSE(list.commit(1));
    list.pending(1).title = QStringLiteral("a");
    list.pending(1).title.clear();
    EXPECT_FALSE(list.commit(1));
}

TEST(ToplevelList, The_most_recently_activated_comes_first)
{
    ToplevelList list;
    open(list, 1, true);
    open(list, 2);
    open(list, 3);
    EXPECT_EQ(order(list), (std::vector<ToplevelID>{1, 3, 2}));
    setActivated(list, 1, false);
    setActivated(list, 2, true);
    EXPECT_EQ(order(list), (std::vector<ToplevelID>{2, 1, 3}));
    // On a second seat.
    setActivated(list, 3, true);
    EXPECT_EQ(order(list), (std::vector<ToplevelID>{3, 2, 1}));
    // Being still active is not being activated again.
    list.pending(2).title = QStringLiteral("renamed");
    EXPECT_TRUE(list.commit(2));
    EXPECT_EQ(order(list), (std::vector<ToplevelID>{3, 2, 1}));
}

TEST(ToplevelList, A_closed_window_is_gone_and_no_dialogue_is_its)
{
    ToplevelList list;
    open(list, 1);
    open(list, 2);
    list.pending(2).parent = 1;
    EXPECT_TRUE(list.commit(2));
    EXPECT_TRUE(list.close(1));
    EXPECT_EQ(order(list), (std::vector<ToplevelID>{2}));
    EXPECT_EQ(list.mostRecentFirst().front().parent, std::nullopt);
    EXPECT_FALSE(list.commit(2));
    EXPECT_FALSE(list.close(1));
    // One that was never listed.
    list.open(3);
    EXPECT_FALSE(list.close(3));
}

} // namespace
} // namespace kelpa::test
