#include "platform/x11/keys/GrabFocusFilter.h"

#include "support/CaseName.h"
#include "support/ProgramArguments.h"

#include <gtest/gtest.h>

#include <QCoreApplication>

#include <xcb/xcb.h>

namespace kelpa::x11 {
namespace {

struct FocusCase
{
    const char* name;
    std::uint8_t type;
    std::uint8_t mode;
    bool isReceived;
};

class FocusEvents : public testing::TestWithParam<FocusCase>
{
protected:
    test::ProgramArguments arguments;
    QCoreApplication application{arguments.count, arguments.values.data()};
    GrabFocusFilter filter;
};

TEST_P(FocusEvents, Reach_the_toolkit_unless_a_grab_causes_them)
{
    xcb_focus_in_event_t event = {};
    event.response_type = GetParam().type;
    event.mode = GetParam().mode;
    EXPECT_EQ(!filter.nativeEventFilter("xcb_generic_event_t", &event, nullptr),
              GetParam().isReceived);
    EXPECT_FALSE(filter.nativeEventFilter("another_window_system", &event, nullptr));
}

constexpr std::uint8_t sent = 0x80;

INSTANTIATE_TEST_SUITE_P(
    GrabFocusFilter, FocusEvents,
    testing::Values(
        FocusCase{"another_window_gets_it", XCB_FOCUS_OUT, XCB_NOTIFY_MODE_NORMAL, true},
        FocusCase{"the_window_gets_it", XCB_FOCUS_IN, XCB_NOTIFY_MODE_NORMAL, true},
        FocusCase{"a_grab_begins", XCB_FOCUS_OUT, XCB_NOTIFY_MODE_GRAB, false},
        FocusCase{"a_grab_ends", XCB_FOCUS_IN, XCB_NOTIFY_MODE_UNGRAB, false},
        FocusCase{"another_window_gets_it_during_a_grab", XCB_FOCUS_OUT,
                  XCB_NOTIFY_MODE_WHILE_GRABBED, true},
        FocusCase{"the_window_gets_it_during_a_grab", XCB_FOCUS_IN, XCB_NOTIFY_MODE_WHILE_GRABBED,
                  true},
        FocusCase{"sent_by_a_program", XCB_FOCUS_OUT | sent, XCB_NOTIFY_MODE_GRAB, false},
        FocusCase{"the_pointer_leaves", XCB_LEAVE_NOTIFY, XCB_NOTIFY_MODE_GRAB, true},
        FocusCase{"a_key", XCB_KEY_PRESS, XCB_NOTIFY_MODE_GRAB, true}),
    test::caseName);

constexpr std::uint32_t ownWindow = 7;

TEST(GrabFocusFilter, Knows_which_window_has_lost_the_focus_by_anything_but_a_grab_or_the_pointer)
{
    test::ProgramArguments arguments;
    const QCoreApplication application(arguments.count, arguments.values.data());
    GrabFocusFilter filter;
    const auto hasLostFocusAfter = [&](std::uint8_t type, std::uint8_t mode, std::uint8_t detail,
                                       std::uint32_t of = ownWindow) {
        xcb_focus_in_event_t event = {};
        event.response_type = type;
        event.mode = mode;
        event.detail = detail;
        event.event = of;
        filter.nativeEventFilter("xcb_generic_event_t", &event, nullptr);
        return filter.hasLostFocus(ownWindow);
    };
    constexpr std::uint8_t normal = XCB_NOTIFY_MODE_NORMAL;
    constexpr std::uint8_t other = XCB_NOTIFY_DETAIL_NONLINEAR;
    EXPECT_FALSE(filter.hasLostFocus(ownWindow));
    EXPECT_FALSE(hasLostFocusAfter(XCB_FOCUS_IN, normal, other));
    EXPECT_FALSE(hasLostFocusAfter(XCB_FOCUS_OUT, XCB_NOTIFY_MODE_GRAB, other));
    EXPECT_FALSE(hasLostFocusAfter(XCB_FOCUS_OUT, normal, XCB_NOTIFY_DETAIL_POINTER));
    EXPECT_FALSE(hasLostFocusAfter(XCB_FOCUS_OUT, normal, XCB_NOTIFY_DETAIL_INFERIOR));
    EXPECT_FALSE(hasLostFocusAfter(XCB_FOCUS_OUT, normal, other, 8));
    EXPECT_TRUE(hasLostFocusAfter(XCB_FOCUS_OUT, XCB_NOTIFY_MODE_WHILE_GRABBED, other));
    EXPECT_TRUE(hasLostFocusAfter(XCB_FOCUS_IN, XCB_NOTIFY_MODE_UNGRAB, other));
    EXPECT_TRUE(hasLostFocusAfter(XCB_FOCUS_IN, normal, XCB_NOTIFY_DETAIL_POINTER));
    EXPECT_TRUE(hasLostFocusAfter(XCB_FOCUS_IN, normal, other, 8));
    EXPECT_FALSE(hasLostFocusAfter(XCB_FOCUS_IN, normal, other));
}

} // namespace
} // namespace kelpa::x11
