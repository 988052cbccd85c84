#include "platform/x11/actions/ActivationRetry.h"

#include <gtest/gtest.h>

#include <vector>

using kelpa::x11::ActivationLimits;
using kelpa::x11::ActivationRetry;
using namespace std::chrono_literals;

namespace {

using NamedTimes = std::vector<std::uint32_t>;

constexpr ActivationLimits limits{250ms, 1000ms, 1000ms};
constexpr std::uint32_t atReading = ActivationRetry::timeOfReading;

class ForwardPolicies : public ::testing::Test
{
protected:
    /// Asks until nothing more may be asked or waited for; the server's time is 500, then 501, ...
    /// The window manager confirms the request with the given number; with none, none of them.
    NamedTimes ask(std::optional<std::uint32_t> inputTime = std::nullopt,
                   std::optional<std::size_t> confirmed = std::nullopt)
    {
        policy.begin(now, inputTime);
        NamedTimes named;
        while (policy.mayAsk()) {
            named.push_back(policy.timeToName(500 + static_cast<std::uint32_t>(named.size())));
            if (policy.wait() == 0ms) {
                break;
            }
            if (named.size() == confirmed) {
                policy.noteConfirmed();
            } else {
                now += policy.wait();
                policy.noteUnanswered(policy.wait());
            }
        }
        policy.end(now);
        return named;
    }

    ActivationRetry::Moment now{1h};
    ActivationRetry policy{limits};
};

} // namespace

TEST_F(ForwardPolicies, A_confirmed_request_is_the_only_one)
{
    EXPECT_EQ(ask(std::nullopt, 1), NamedTimes({500}));
    EXPECT_EQ(ask(std::nullopt, 1), NamedTimes({500}));
}

TEST_F(ForwardPolicies, The_second_request_leaves_its_time_to_who_reads_it_and_is_the_last)
{
    EXPECT_EQ(ask(), NamedTimes({500, atReading}));
}

TEST_F(ForwardPolicies, The_time_of_the_person_is_named_before_the_servers)
{
    EXPECT_EQ(ask(400, 1), NamedTimes({400}));
    EXPECT_EQ(ask(400), NamedTimes({400, 501, atReading}));
}

TEST_F(ForwardPolicies, A_server_that_tells_no_time_leaves_it_to_who_reads_it)
{
    policy.begin(now, std::nullopt);
    EXPECT_EQ(policy.timeToName(std::nullopt), atReading);
    EXPECT_EQ(policy.timeToName(500), atReading);
}

TEST_F(ForwardPolicies, No_time_is_named_after_one_that_was_left_open_until_a_request_is_confirmed)
{
    ask();
    EXPECT_EQ(ask(400, 2), NamedTimes({atReading, atReading}));
    EXPECT_EQ(ask(400, 1), NamedTimes({400}));
}

TEST_F(ForwardPolicies, A_confirmation_closes_a_time_that_was_left_open)
{
    ask(std::nullopt, 2);
    EXPECT_EQ(ask(std::nullopt, 1), NamedTimes({500}));
}

TEST_F(ForwardPolicies, A_request_is_waited_for_a_quarter_of_a_second)
{
    policy.begin(now, std::nullopt);
    EXPECT_EQ(policy.wait(), 250ms);
}

TEST_F(ForwardPolicies, A_row_is_waited_for_a_second_and_then_asked_once_each)
{
    const auto begun = now;
    ask();
    ask();
    EXPECT_EQ(now - begun, 1000ms);
    EXPECT_EQ(ask().size(), 1U);
    EXPECT_EQ(ask().size(), 1U);
    EXPECT_EQ(now - begun, 1000ms);
}

TEST_F(ForwardPolicies, What_is_left_of_a_row_is_all_that_is_waited)
{
    policy.begin(now, std::nullopt);
    policy.noteUnanswered(900ms);
    EXPECT_EQ(policy.wait(), 100ms);
    policy.noteUnanswered(150ms);
    EXPECT_EQ(policy.wait(), 0ms);
}

TEST_F(ForwardPolicies, A_confirmation_gives_the_row_its_whole_time_again)
{
    policy.begin(now, std::nullopt);
    policy.noteUnanswered(900ms);
    policy.noteConfirmed();
    policy.noteUnanswered(800ms);
    EXPECT_EQ(policy.wait(), 200ms);
}

TEST_F(ForwardPolicies, A_pause_of_more_than_a_second_ends_the_row)
{
    ask();
    ask();
    now += 1000ms;
    EXPECT_EQ(ask().size(), 1U) << "the pause is not longer yet";
    now += 1001ms;
    EXPECT_EQ(ask().size(), 2U);
}

TEST_F(ForwardPolicies, What_was_asked_for_may_still_come_within_a_second)
{
    EXPECT_FALSE(policy.isUnderWay(now)) << "nothing was asked for";
    ask();
    EXPECT_TRUE(policy.isUnderWay(now));
    EXPECT_TRUE(policy.isUnderWay(now + 999ms));
    EXPECT_FALSE(policy.isUnderWay(now + 1000ms));
}
