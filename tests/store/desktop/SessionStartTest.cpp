#include "store/desktop/SessionStart.h"

#include "platform/Autostart.h"
#include "support/ManualScheduler.h"

#include <gtest/gtest.h>

namespace kelpa::test {
namespace {

using namespace std::chrono_literals;

class FakeAutostart : public Autostart
{
public:
    bool isOn() const override { return state; }
    AutostartOutcome set(bool isOn, const std::stop_token& /*stop*/) override
    {
        ++calls;
        if (outcome == AutostartOutcome::done)
            state = isOn;
        return outcome;
    }

    bool state = false;
    AutostartOutcome outcome = AutostartOutcome::done;
    int calls = 0;
};

class SessionStartTest : public testing::Test
{
protected:
    SessionStartTest()
    {
        QObject::connect(&start, &SessionStart::isOnChanged, &start, [this] { ++changes; });
        QObject::connect(&start, &SessionStart::failed, &start, [this](AutostartOutcome outcome) {
            ++failures;
            told = outcome;
        });
    }

    FakeAutostart autostart;
    ManualScheduler scheduler;
    SessionStart start{autostart, scheduler};
    int changes = 0;
    int failures = 0;
    AutostartOutcome told = AutostartOutcome::done;
};

TEST_F(SessionStartTest, Is_what_the_configuration_says)
{
    autostart.state = true;
    EXPECT_FALSE(start.isOn());
    start.read();
    EXPECT_FALSE(start.isOn()) << "nothing waits for the disk";
    scheduler.advance(0ms);
    EXPECT_TRUE(start.isOn());
    EXPECT_EQ(changes, 1);
}

TEST_F(SessionStartTest, Shows_at_once_what_was_asked_for)
{
    start.set(true);
    EXPECT_TRUE(start.isOn());
    scheduler.advance(0ms);
    EXPECT_TRUE(start.isOn());
    EXPECT_TRUE(autostart.state);
    EXPECT_EQ(failures, 0);
}

TEST_F(SessionStartTest, What_was_asked_for_last_counts)
{
    start.set(true);
    start.set(false);
    start.set(true);
    start.set(false);
    scheduler.advance(0ms);
    scheduler.advance(0ms);
    EXPECT_FALSE(autostart.state);
    EXPECT_FALSE(start.isOn());
    EXPECT_EQ(autostart.calls, 2) << "one change at a time, and what lies between is left out";
}

TEST_F(SessionStartTest, A_refusal_is_told_and_shown)
{
    for (const AutostartOutcome outcome : {AutostartOutcome::failed, AutostartOutcome::refused}) {
        failures = 0;
        autostart.outcome = outcome;
        start.set(true);
        scheduler.advance(0ms);
        EXPECT_FALSE(start.isOn());
        EXPECT_EQ(failures, 1);
        EXPECT_EQ(told, outcome);
    }
}

} // namespace
} // namespace kelpa::test
