#include "platform/x11/actions/ActivationRetry.h"

#include <gtest/gtest.h>

#include <vector>

using kelpa::x11::ActivationLimits;
using kelpa::x11::ActivationRetry;
using namespace std::chrono_literals;

namespace {

using Timestamps = std::vector<std::uint32_t>;

constexpr ActivationLimits limits{250ms, 1000ms, 1000ms};
constexpr std::uint32_t currentTime = ActivationRetry::currentTime;

class ActivationRetryTest : public ::testing::Test
{
protected:
    /// Requests one activation until no further request is due, and returns the timestamps. The
    /// server's time is 500, then 501, ... The window manager confirms the request with the given
    /// number; absent: none of them.
    Timestamps activate(std::optional<std::uint32_t> inputTime = std::nullopt,
                        std::optional<std::size_t> confirmed = std::nullopt)
    {
        retry.begin(now, inputTime);
        Timestamps sent;
        while (retry.mayRequest()) {
            sent.push_back(retry.nextTimestamp(500 + static_cast<std::uint32_t>(sent.size())));
            if (retry.timeout() == 0ms) {
                break;
            }
            if (sent.size() == confirmed) {
                retry.recordConfirmation(true);
            } else {
                now += retry.timeout();
                retry.recordTimeout(retry.timeout());
            }
        }
        retry.end(now);
        return sent;
    }

    ActivationRetry::Clock::time_point now{1h};
    ActivationRetry retry{limits};
};

} // namespace

TEST_F(ActivationRetryTest, A_confirmed_request_is_the_only_one)
{
    EXPECT_EQ(activate(std::nullopt, 1), Timestamps({500}));
    EXPECT_EQ(activate(std::nullopt, 1), Timestamps({500}));
}

TEST_F(ActivationRetryTest, The_second_request_has_the_current_time_and_is_the_last)
{
    EXPECT_EQ(activate(), Timestamps({500, currentTime}));
}

TEST_F(ActivationRetryTest, The_input_time_is_sent_before_the_servers_time)
{
    EXPECT_EQ(activate(400, 1), Timestamps({400}));
    EXPECT_EQ(activate(400), Timestamps({400, 501, currentTime}));
}

TEST_F(ActivationRetryTest, Without_a_server_time_the_current_time_is_sent)
{
    retry.begin(now, std::nullopt);
    EXPECT_EQ(retry.nextTimestamp(std::nullopt), currentTime);
    EXPECT_EQ(retry.nextTimestamp(500), currentTime);
}

TEST_F(ActivationRetryTest, After_the_current_time_no_other_is_sent_until_a_request_is_confirmed)
{
    activate();
    EXPECT_EQ(activate(400, 1), Timestamps({currentTime}));
    EXPECT_EQ(activate(400, 1), Timestamps({400}));
}

TEST_F(ActivationRetryTest, A_confirmation_after_two_requests_may_be_that_of_the_first)
{
    activate();
    EXPECT_EQ(activate(400, 2), Timestamps({currentTime, currentTime}));
    EXPECT_EQ(activate(400, 1), Timestamps({currentTime})) << "the second may not have been read";
    EXPECT_EQ(activate(400, 1), Timestamps({400}));
}

TEST_F(ActivationRetryTest, A_window_that_was_active_before_confirms_that_no_request_was_read)
{
    activate();
    retry.begin(now, std::nullopt);
    EXPECT_EQ(retry.nextTimestamp(500), currentTime);
    retry.recordConfirmation(false);
    EXPECT_FALSE(retry.mayRequest());
    EXPECT_EQ(activate(std::nullopt, 1), Timestamps({currentTime}));
    EXPECT_EQ(activate(std::nullopt, 1), Timestamps({500}));
}

TEST_F(ActivationRetryTest, After_a_confirmation_the_servers_time_is_sent_again)
{
    activate(std::nullopt, 2);
    EXPECT_EQ(activate(std::nullopt, 1), Timestamps({currentTime}));
    EXPECT_EQ(activate(std::nullopt, 1), Timestamps({500}));
}

TEST_F(ActivationRetryTest, The_confirmation_of_a_request_is_awaited_for_a_quarter_of_a_second)
{
    retry.begin(now, std::nullopt);
    EXPECT_EQ(retry.timeout(), 250ms);
}

TEST_F(ActivationRetryTest, A_batch_waits_one_second_in_all_and_then_sends_one_request_per_window)
{
    const auto begun = now;
    activate();
    activate();
    EXPECT_EQ(now - begun, 1000ms);
    EXPECT_EQ(activate().size(), 1U);
    EXPECT_EQ(activate().size(), 1U);
    EXPECT_EQ(now - begun, 1000ms);
}

TEST_F(ActivationRetryTest, No_request_waits_longer_than_its_batch_has_left)
{
    retry.begin(now, std::nullopt);
    retry.recordTimeout(900ms);
    EXPECT_EQ(retry.timeout(), 100ms);
    retry.recordTimeout(150ms);
    EXPECT_EQ(retry.timeout(), 0ms);
}

TEST_F(ActivationRetryTest, A_confirmation_restores_the_whole_time_of_the_batch)
{
    retry.begin(now, std::nullopt);
    retry.recordTimeout(900ms);
    retry.recordConfirmation(true);
    retry.recordTimeout(800ms);
    EXPECT_EQ(retry.timeout(), 200ms);
}

TEST_F(ActivationRetryTest, A_pause_of_more_than_a_second_ends_the_batch)
{
    activate();
    activate();
    now += 1000ms;
    EXPECT_EQ(activate().size(), 1U) << "the pause is not longer yet";
    now += 1001ms;
    EXPECT_EQ(activate().size(), 2U);
}

TEST_F(ActivationRetryTest, An_activation_is_pending_for_a_second)
{
    EXPECT_FALSE(retry.isPending(now)) << "nothing was requested";
    activate();
    EXPECT_TRUE(retry.isPending(now));
    EXPECT_TRUE(retry.isPending(now + 999ms));
    EXPECT_FALSE(retry.isPending(now + 1000ms));
}
