#include "shell/GlobalDoubleTap.h"

#include <gtest/gtest.h>

#include <utility>
#include <vector>

namespace kelpa::test {
namespace {

/// A keyboard driven by the test.
class FakeKeys : public GlobalKeys
{
public:
    std::unique_ptr<Subscription> watchKeys(GlobalKeyHandlers given) override
    {
        handlers = std::move(given);
        return std::make_unique<Subscription>();
    }

    /// `milliseconds` on the server's clock.
    void command(bool isDown, std::uint32_t milliseconds, bool hasOther = false)
    {
        handlers.modifiersChanged({.commandIsDown = isDown,
                                   .hasOtherModifiers = hasOther,
                                   .timestamp = milliseconds / 1000.0,
                                   .inputTime = milliseconds});
    }
    void tap(std::uint32_t begin, std::uint32_t end)
    {
        command(true, begin);
        command(false, end);
    }

    GlobalKeyHandlers handlers;
};

class GlobalDoubleTapTest : public testing::Test
{
protected:
    GlobalDoubleTapTest()
    {
        QObject::connect(&doubleTap, &GlobalDoubleTap::doubleTapped, &doubleTap,
                         [this](InputTime time) { times.push_back(time); });
        keys.handlers.availabilityChanged(true);
    }

    using Times = std::vector<InputTime>;

    FakeKeys keys;
    GlobalDoubleTap doubleTap{keys};
    Times times;
};

TEST_F(GlobalDoubleTapTest, Reports_when_the_second_tap_was_released)
{
    keys.tap(1000, 1080);
    EXPECT_EQ(times, Times{});
    keys.tap(1180, 1260);
    EXPECT_EQ(times, Times{1260});
}

TEST_F(GlobalDoubleTapTest, A_key_pressed_in_any_program_between_the_taps_cancels)
{
    keys.tap(1000, 1080);
    keys.handlers.keyPressed();
    keys.tap(1180, 1260);
    EXPECT_EQ(times, Times{});
}

TEST_F(GlobalDoubleTapTest, A_key_pressed_while_Command_is_held_makes_it_a_shortcut)
{
    keys.tap(1000, 1080);
    keys.command(true, 1180);
    keys.handlers.keyPressed();
    keys.command(false, 1260);
    EXPECT_EQ(times, Times{});
}

TEST_F(GlobalDoubleTapTest, Another_modifier_cancels)
{
    keys.tap(1000, 1080);
    keys.command(true, 1180);
    keys.command(true, 1200, true);
    keys.command(true, 1220);
    keys.command(false, 1260);
    EXPECT_EQ(times, Times{});
}

TEST_F(GlobalDoubleTapTest, Is_available_while_key_events_are_received)
{
    FakeKeys silent;
    const GlobalDoubleTap deaf(silent);
    EXPECT_FALSE(deaf.isAvailable());
    int changes = 0;
    QObject::connect(&deaf, &GlobalDoubleTap::isAvailableChanged, &deaf, [&] { ++changes; });
    silent.handlers.availabilityChanged(true);
    EXPECT_TRUE(deaf.isAvailable());
    silent.handlers.availabilityChanged(true);
    EXPECT_EQ(changes, 1);
    silent.handlers.availabilityChanged(false);
    EXPECT_FALSE(deaf.isAvailable());
    EXPECT_EQ(changes, 2);
}

TEST_F(GlobalDoubleTapTest, A_tap_before_an_interruption_does_not_pair)
{
    keys.tap(1000, 1080);
    keys.handlers.availabilityChanged(false);
    keys.handlers.availabilityChanged(true);
    keys.tap(1180, 1260);
    EXPECT_EQ(times, Times{});
}

} // namespace
} // namespace kelpa::test
