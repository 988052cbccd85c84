#include "GlobalKeysFixture.h"

#include <QProcess>

using namespace kelpa;
using namespace kelpa::test;

namespace {

TEST_F(GlobalKeysOnDisplay, Super_is_received_once_per_press_and_release_and_is_no_key_pressed)
{
    tap(XK_Super_L);
    tap(XK_Super_R);
    EXPECT_TRUE(receives({"command", "no command", "command", "no command"}));
}

TEST_F(GlobalKeysOnDisplay, A_key_typed_into_another_program_is_received_and_reaches_it)
{
    const std::uint32_t mask = XCB_EVENT_MASK_KEY_PRESS;
    TestClient typist(server.display());
    const xcb_window_t window = typist.open({.title = "typed into"});
    xcb_change_window_attributes(typist.connection(), window, XCB_CW_EVENT_MASK, &mask);
    xcb_set_input_focus(typist.connection(), XCB_INPUT_FOCUS_PARENT, window, XCB_CURRENT_TIME);
    typist.sync();
    tap(XK_a);
    tap(XK_Return);
    int reached = 0;
    EXPECT_TRUE(waitUntil([&] {
        while (auto* const event = xcb_poll_for_event(typist.connection())) {
            reached += (event->response_type & 0x7F) == XCB_KEY_PRESS ? 1 : 0;
            std::free(event);
        }
        return reached == 2;
    }));
    EXPECT_TRUE(receives({"key", "key"}));
}

TEST_F(GlobalKeysOnDisplay, Keys_are_received_while_another_client_has_grabbed_the_keyboard)
{
    std::free(xcb_grab_keyboard_reply(client.connection(),
                                      xcb_grab_keyboard(client.connection(), 0, client.root(),
                                                        XCB_CURRENT_TIME, XCB_GRAB_MODE_ASYNC,
                                                        XCB_GRAB_MODE_ASYNC),
                                      nullptr));
    press(XK_Super_L);
    tap(XK_a);
    release(XK_Super_L);
    EXPECT_TRUE(receives({"command", "key", "no command"}));
}

TEST_F(GlobalKeysOnDisplay, A_shortcut_that_changes_the_layout_is_a_key_pressed)
{
    subscription.reset();
    ASSERT_EQ(QProcess::execute(QStringLiteral("setxkbmap"),
                                {QStringLiteral("-display"), QString::fromUtf8(server.display()),
                                 QStringLiteral("us,de"), QStringLiteral("-option"),
                                 QStringLiteral("grp:win_space_toggle")}),
              0);
    isAvailable = false;
    subscribe();
    ASSERT_TRUE(waitUntil([this] { return isAvailable; }));
    for (int tap = 0; tap < 2; ++tap) {
        press(XK_Super_L);
        press(XK_space);
        release(XK_space);
        release(XK_Super_L);
    }
    EXPECT_TRUE(receives({"command", "key", "no command", "command", "key", "no command"}));
}

TEST_F(GlobalKeysOnDisplay, A_button_of_the_mouse_counts_once_as_a_key_pressed)
{
    constexpr xcb_keycode_t left = 1;
    constexpr xcb_keycode_t wheelDown = 5;
    for (const xcb_keycode_t button : {left, wheelDown}) {
        press(XK_Super_L);
        fakeInput(XCB_BUTTON_PRESS, button);
        fakeInput(XCB_BUTTON_RELEASE, button);
        release(XK_Super_L);
    }
    EXPECT_TRUE(receives({"command", "key", "no command", "command", "key", "no command"}));
}

TEST_F(GlobalKeysOnDisplay, A_button_is_received_while_another_client_has_grabbed_the_mouse)
{
    std::free(xcb_grab_pointer_reply(client.connection(),
                                     xcb_grab_pointer(client.connection(), 0, client.root(),
                                                      XCB_EVENT_MASK_BUTTON_PRESS,
                                                      XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC,
                                                      XCB_NONE, XCB_NONE, XCB_CURRENT_TIME),
                                     nullptr));
    fakeInput(XCB_BUTTON_PRESS, 1);
    fakeInput(XCB_BUTTON_RELEASE, 1);
    EXPECT_TRUE(receives({"key"}));
}

TEST_F(GlobalKeysOnDisplay, A_button_reaches_the_program_below_the_pointer)
{
    const std::uint32_t mask = XCB_EVENT_MASK_BUTTON_PRESS;
    TestClient clicked(server.display());
    xcb_change_window_attributes(clicked.connection(), clicked.root(), XCB_CW_EVENT_MASK, &mask);
    clicked.sync();
    fakeInput(XCB_BUTTON_PRESS, 3);
    fakeInput(XCB_BUTTON_RELEASE, 3);
    EXPECT_TRUE(waitUntil([&] {
        auto* const event = xcb_poll_for_event(clicked.connection());
        const bool isPress = event && (event->response_type & 0x7F) == XCB_BUTTON_PRESS;
        std::free(event);
        return isPress;
    }));
    EXPECT_TRUE(receives({"key"}));
}

TEST_F(GlobalKeysOnDisplay, A_modifier_beside_Super_is_reported)
{
    press(XK_Super_L);
    press(XK_Shift_L);
    release(XK_Shift_L);
    release(XK_Super_L);
    EXPECT_TRUE(receives({"command", "command other", "command", "no command"}));
}

TEST_F(GlobalKeysOnDisplay, Caps_Lock_that_is_on_counts_and_Num_Lock_does_not)
{
    tap(XK_Num_Lock);
    tap(XK_Super_L);
    ASSERT_TRUE(waitUntil([&] { return changes.size() >= 4; }));
    ASSERT_EQ(received, (Received{"no command", "no command", "command", "no command"}));
    tap(XK_Caps_Lock);
    tap(XK_Super_L);
    EXPECT_TRUE(receives({"no command", "no command", "command", "no command", "no command other",
                          "no command other", "command other", "no command other"}));
}

TEST_F(GlobalKeysOnDisplay, Times_are_on_the_servers_clock)
{
    tap(XK_Super_L);
    ASSERT_TRUE(waitUntil([&] { return changes.size() == 2; }));
    const double seconds = changes.at(1).timestamp - changes.at(0).timestamp;
    EXPECT_GE(seconds, 0);
    EXPECT_NEAR(seconds, (changes.at(1).inputTime - changes.at(0).inputTime) / 1000.0, 0.0001);
    const InputTime stamped = serverTime();
    EXPECT_GE(stamped, changes.at(1).inputTime);
    EXPECT_LT(stamped - changes.at(1).inputTime, 10'000U);
}

TEST_F(GlobalKeysOnDisplay, A_press_while_the_keyboard_was_frozen_keeps_its_length)
{
    {
        const FrozenKeyboard frozen(client);
        press(XK_Super_L);
        letPass(600);
        release(XK_Super_L);
        letPass(600);
        EXPECT_EQ(received, Received{});
    }
    ASSERT_TRUE(receives({"command", "no command"}));
    EXPECT_GE(changes.at(1).inputTime - changes.at(0).inputTime, 600U);
    EXPECT_GE(changes.at(1).timestamp - changes.at(0).timestamp, 0.5999);
    EXPECT_GE(serverTime() - changes.at(1).inputTime, 600U);
}

TEST_F(GlobalKeysOnDisplay, Keys_pressed_while_the_keyboard_was_frozen_keep_their_order)
{
    {
        const FrozenKeyboard frozen(client);
        tap(XK_Super_L);
        letPass(50);
        press(XK_Super_L);
        tap(XK_a);
        release(XK_Super_L);
    }
    ASSERT_TRUE(receives({"command", "no command", "command", "key", "no command"}));
    EXPECT_GE(changes.at(2).inputTime - changes.at(1).inputTime, 50U);
}

TEST_F(GlobalKeysOnDisplay, A_keyboard_without_Super_makes_it_unavailable_until_one_has_it)
{
    const xcb_keycode_t super = key(XK_Super_L);
    makeCommandKey(0);
    EXPECT_TRUE(waitUntil([this] { return !isAvailable; }));
    makeCommandKey(super);
    EXPECT_TRUE(waitUntil([this] { return isAvailable; }));
}

TEST_F(GlobalKeysOnDisplay, A_key_that_is_remapped_to_Super_is_Command_from_then_on)
{
    const xcb_keycode_t f5 = key(XK_F5);
    setSymbol(f5, XK_Super_L);
    makeCommandKey(f5);
    // Until the map is read again, it is an ordinary key.
    EXPECT_TRUE(waitUntil([&] {
        received.clear();
        fakeInput(XCB_KEY_PRESS, f5);
        fakeInput(XCB_KEY_RELEASE, f5);
        waitUntil([&] { return received.size() >= 2; }, std::chrono::milliseconds(100));
        return received == Received{"command", "no command"};
    }));
}

TEST_F(GlobalKeysOnDisplay, A_server_that_goes_away_makes_it_unavailable)
{
    server.kill();
    EXPECT_TRUE(waitUntil([this] { return !isAvailable; }));
}

TEST_F(GlobalKeysOnDisplay, Nothing_is_received_once_the_subscription_is_dropped)
{
    subscription.reset();
    int receivedByAnother = 0;
    bool isAnotherAvailable = false;
    const auto another =
        keys.watchKeys({.keyPressed = [&] { ++receivedByAnother; },
                        .modifiersChanged = [](const GlobalModifierChange&) {},
                        .availabilityChanged = [&](bool is) { isAnotherAvailable = is; }});
    ASSERT_TRUE(waitUntil([&] { return isAnotherAvailable; }));
    tap(XK_Super_L);
    tap(XK_a);
    EXPECT_TRUE(waitUntil([&] { return receivedByAnother == 1; }));
    EXPECT_TRUE(received.empty());
}

} // namespace
