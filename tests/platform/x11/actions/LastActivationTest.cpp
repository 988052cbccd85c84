#include "platform/x11/actions/LastActivation.h"

#include <gtest/gtest.h>

using namespace kelpa::x11;

namespace {

constexpr std::uint32_t dialog = 77;
const WindowTarget target{.window = 5, .number = 3, .process = 40};

TEST(LastActivation, Is_of_no_window_at_first)
{
    const LastActivation last;
    EXPECT_FALSE(last.isOf(target));
    EXPECT_FALSE(last.isOf(40));
    EXPECT_FALSE(last.isConfirmed());
    EXPECT_FALSE(last.keepsFocus(0));
}

TEST(LastActivation, Keeps_the_focus_while_the_window_that_got_it_is_active)
{
    LastActivation last;
    last.begin(target);
    EXPECT_FALSE(last.isConfirmed());
    EXPECT_FALSE(last.keepsFocus(5)) << "not confirmed yet";
    last.confirm(dialog);
    EXPECT_TRUE(last.isConfirmed());
    EXPECT_TRUE(last.keepsFocus(dialog));
    EXPECT_FALSE(last.keepsFocus(5));
}

TEST(LastActivation, Is_of_one_window_and_its_process)
{
    LastActivation last;
    last.begin(target);
    EXPECT_TRUE(last.isOf(target));
    EXPECT_TRUE(last.isOf(40));
    EXPECT_FALSE(last.isOf(41));
    EXPECT_FALSE(last.isOf({.window = 5, .number = 4, .process = 40})) << "a reused server id";
}

TEST(LastActivation, Is_unconfirmed_again_with_the_next_window)
{
    LastActivation last;
    last.begin(target);
    last.confirm(5);
    last.begin({.window = 6, .number = 4, .process = 41});
    EXPECT_FALSE(last.isConfirmed());
    EXPECT_FALSE(last.keepsFocus(5));
    EXPECT_FALSE(last.isOf(target));
}

TEST(LastActivation, Is_forgotten_with_the_connection)
{
    LastActivation last;
    last.begin(target);
    last.confirm(5);
    last.forget();
    EXPECT_FALSE(last.isOf(target));
    EXPECT_FALSE(last.keepsFocus(5));
}

} // namespace
