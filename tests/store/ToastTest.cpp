#include "store/Toast.h"
#include "support/ManualScheduler.h"

#include <gtest/gtest.h>

#include <chrono>
#include <optional>
#include <utility>
#include <vector>

namespace kelpa::test {
namespace {

using namespace std::chrono_literals;
using Offer = Toast::Offer;

/// The text and the offer of a toast after a change.
struct Shown
{
    std::optional<ToastText> text;
    bool offersUndo = false;

    friend bool operator==(const Shown&, const Shown&) = default;
};

constexpr Shown nothing;

class ToastTest : public testing::Test
{
protected:
    /// The changes reported since the last call.
    std::vector<Shown> takeChanges() { return std::exchange(m_changes, {}); }

    ManualScheduler scheduler;
    Toast toast{scheduler, [this] {
                    m_changes.push_back({toast.text(), (toast.offer() == Offer::undo)});
                }};

private:
    std::vector<Shown> m_changes;
};

TEST_F(ToastTest, Says_nothing_before_it_is_shown)
{
    EXPECT_EQ(toast.text(), std::nullopt);
    EXPECT_FALSE((toast.offer() == Offer::undo));
    EXPECT_EQ(scheduler.timersDue(), 0);
    EXPECT_TRUE(takeChanges().empty());
}

TEST_F(ToastTest, Shows_for_two_seconds)
{
    toast.show(CopyKey::TodoCopied, Offer::none);
    EXPECT_EQ(takeChanges(), (std::vector<Shown>{{CopyKey::TodoCopied, false}}));
    scheduler.advance(1999ms);
    EXPECT_EQ(toast.text(), ToastText(CopyKey::TodoCopied));
    scheduler.advance(1ms);
    EXPECT_EQ(takeChanges(), (std::vector<Shown>{nothing}));
    EXPECT_EQ(scheduler.timersDue(), 0);
}

TEST_F(ToastTest, Shows_for_six_seconds_when_it_offers_to_undo_and_ends_in_one_change)
{
    toast.show(CopyKey::GoalDeleted, Offer::undo);
    EXPECT_EQ(takeChanges(), (std::vector<Shown>{{CopyKey::GoalDeleted, true}}));
    scheduler.advance(5999ms);
    EXPECT_TRUE((toast.offer() == Offer::undo));
    scheduler.advance(1ms);
    EXPECT_EQ(takeChanges(), (std::vector<Shown>{nothing}));
}

TEST_F(ToastTest, One_that_takes_the_place_of_another_has_a_whole_time_of_its_own)
{
    toast.show(CopyKey::GoalDeleted, Offer::undo);
    scheduler.advance(5s);
    toast.show(CopyKey::TodoCopied, Offer::none);
    EXPECT_FALSE((toast.offer() == Offer::undo));
    scheduler.advance(1999ms);
    EXPECT_EQ(toast.text(), ToastText(CopyKey::TodoCopied));
    scheduler.advance(1ms);
    EXPECT_EQ(toast.text(), std::nullopt);
}

TEST_F(ToastTest, While_held_it_stays_and_has_its_whole_time_when_it_is_let_go)
{
    toast.show(CopyKey::GoalDeleted, Offer::undo);
    scheduler.advance(5900ms);
    toast.setHeld(true);
    EXPECT_EQ(scheduler.timersDue(), 0);
    scheduler.advance(60s);
    EXPECT_TRUE((toast.offer() == Offer::undo));
    toast.setHeld(false);
    scheduler.advance(5999ms);
    EXPECT_TRUE((toast.offer() == Offer::undo));
    scheduler.advance(1ms);
    EXPECT_EQ(toast.text(), std::nullopt);
}

TEST_F(ToastTest, One_that_is_shown_while_it_is_held_stays_too)
{
    toast.setHeld(true);
    toast.show(CopyKey::TodoCopied, Offer::none);
    scheduler.advance(60s);
    EXPECT_EQ(toast.text(), ToastText(CopyKey::TodoCopied));
    toast.setHeld(false);
    scheduler.advance(2s);
    EXPECT_EQ(toast.text(), std::nullopt);
}

TEST_F(ToastTest, Holding_and_letting_go_change_nothing_that_shows)
{
    toast.setHeld(true);
    toast.setHeld(false);
    EXPECT_EQ(scheduler.timersDue(), 0) << "there is nothing to hide";
    toast.show(CopyKey::TodoCopied, Offer::none);
    takeChanges();
    toast.setHeld(true);
    toast.setHeld(false);
    EXPECT_TRUE(takeChanges().empty());
}

TEST_F(ToastTest, An_offer_that_is_withdrawn_goes_at_once_even_while_it_is_held)
{
    toast.show(CopyKey::TodoDeleted, Offer::undo);
    toast.setHeld(true);
    takeChanges();
    toast.withdraw(Offer::undo);
    EXPECT_EQ(takeChanges(), (std::vector<Shown>{nothing}));
    toast.setHeld(false);
    EXPECT_EQ(scheduler.timersDue(), 0);
}

TEST_F(ToastTest, Withdrawing_leaves_a_toast_that_offers_nothing_and_its_time)
{
    toast.show(CopyKey::TodoCopied, Offer::none);
    takeChanges();
    scheduler.advance(1s);
    toast.withdraw(Offer::undo);
    EXPECT_TRUE(takeChanges().empty());
    EXPECT_EQ(toast.text(), ToastText(CopyKey::TodoCopied));
    scheduler.advance(1s);
    EXPECT_EQ(toast.text(), std::nullopt);
}

TEST_F(ToastTest, One_that_is_shown_as_the_last_one_goes_has_its_whole_time)
{
    bool isShownAgain = false;
    Toast again(scheduler, [&] {
        if (!again.text() && !std::exchange(isShownAgain, true))
            again.show(CopyKey::TodoDeleted, Offer::undo);
    });
    again.show(CopyKey::TodoCopied, Offer::none);
    scheduler.advance(2s);
    EXPECT_EQ(again.text(), ToastText(CopyKey::TodoDeleted));
    scheduler.advance(5999ms);
    EXPECT_EQ(again.text(), ToastText(CopyKey::TodoDeleted));
    scheduler.advance(1ms);
    EXPECT_EQ(again.text(), std::nullopt);
}

TEST_F(ToastTest, One_that_goes_away_leaves_nothing_due)
{
    {
        Toast other(scheduler, [] {});
        other.show(CopyKey::TodoCopied, Offer::none);
        EXPECT_EQ(scheduler.timersDue(), 1);
    }
    EXPECT_EQ(scheduler.timersDue(), 0);
}

} // namespace
} // namespace kelpa::test
