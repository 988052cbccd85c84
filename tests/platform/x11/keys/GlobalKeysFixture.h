// A display on which another program has the focus, and the global keys received there.
#pragma once

#include "platform/x11/keys/X11GlobalKeys.h"

#include "support/ProgramArguments.h"
#include "support/desktop/LoopScheduler.h"
#include "support/desktop/Programs.h"
#include "support/desktop/TestClient.h"
#include "support/desktop/WaitUntil.h"

#define XK_MISCELLANY
#define XK_LATIN1
#include <X11/keysymdef.h>

#include <gtest/gtest.h>

#include <QCoreApplication>

#include <xcb/xtest.h>

#include <algorithm>
#include <cstdlib>
#include <memory>
#include <string>
#include <vector>

namespace kelpa::test {

/// Subscribed from the start.
class GlobalKeysOnDisplay : public testing::Test
{
protected:
    void SetUp() override
    {
        const xcb_window_t window = client.open({.title = "other"});
        xcb_set_input_focus(client.connection(), XCB_INPUT_FOCUS_PARENT, window, XCB_CURRENT_TIME);
        client.sync();
        subscribe();
        ASSERT_TRUE(waitUntil([this] { return isAvailable; }));
    }

    void subscribe()
    {
        subscription = keys.watchKeys(
            {.keyPressed = [this] { received.emplace_back("key"); },
             .modifiersChanged =
                 [this](const GlobalModifierChange& change) {
                     changes.push_back(change);
                     received.push_back(
                         std::string(change.commandIsDown ? "command" : "no command") +
                         (change.hasOtherModifiers ? " other" : ""));
                 },
             .availabilityChanged = [this](bool is) { isAvailable = is; }});
    }

    /// The key with the symbol on its first level.
    xcb_keycode_t key(xcb_keysym_t symbol)
    {
        const xcb_setup_t& setup = *xcb_get_setup(client.connection());
        auto* const reply = xcb_get_keyboard_mapping_reply(
            client.connection(),
            xcb_get_keyboard_mapping(
                client.connection(), setup.min_keycode,
                static_cast<std::uint8_t>(setup.max_keycode - setup.min_keycode + 1)),
            nullptr);
        const xcb_keysym_t* const symbols = xcb_get_keyboard_mapping_keysyms(reply);
        xcb_keycode_t found = 0;
        for (int i = xcb_get_keyboard_mapping_keysyms_length(reply) - 1; i >= 0; --i) {
            if (i % reply->keysyms_per_keycode == 0 && symbols[i] == symbol)
                found =
                    static_cast<xcb_keycode_t>(setup.min_keycode + i / reply->keysyms_per_keycode);
        }
        std::free(reply);
        EXPECT_NE(found, 0);
        return found;
    }

    void fakeInput(std::uint8_t type, xcb_keycode_t which)
    {
        xcb_test_fake_input(client.connection(), type, which, 0, client.root(), 0, 0, 0);
        client.sync();
    }
    void press(xcb_keysym_t symbol) { fakeInput(XCB_KEY_PRESS, key(symbol)); }
    void release(xcb_keysym_t symbol) { fakeInput(XCB_KEY_RELEASE, key(symbol)); }
    void tap(xcb_keysym_t symbol)
    {
        press(symbol);
        release(symbol);
    }

    void setSymbol(xcb_keycode_t which, xcb_keysym_t symbol)
    {
        xcb_change_keyboard_mapping(client.connection(), 1, which, 1, &symbol);
        client.sync();
    }

    /// Makes `which` the only key of the fourth modifier; 0 for none.
    void makeCommandKey(xcb_keycode_t which)
    {
        xcb_connection_t* const connection = client.connection();
        auto* const table = xcb_get_modifier_mapping_reply(
            connection, xcb_get_modifier_mapping(connection), nullptr);
        const std::ptrdiff_t length = table->keycodes_per_modifier;
        xcb_keycode_t* const keycodes = xcb_get_modifier_mapping_keycodes(table);
        constexpr int fourth = 6;
        std::fill_n(keycodes + fourth * length, length, xcb_keycode_t{0});
        keycodes[fourth * length] = which;
        auto* const answer = xcb_set_modifier_mapping_reply(
            connection,
            xcb_set_modifier_mapping(connection, static_cast<std::uint8_t>(length), keycodes),
            nullptr);
        EXPECT_EQ(answer->status, XCB_MAPPING_STATUS_SUCCESS);
        std::free(answer);
        std::free(table);
    }

    /// The server's time, which the event of a property change carries.
    InputTime serverTime()
    {
        const std::uint32_t mask = XCB_EVENT_MASK_PROPERTY_CHANGE;
        xcb_change_window_attributes(client.connection(), client.root(), XCB_CW_EVENT_MASK, &mask);
        client.setCardinals(client.root(), "_KELPA_TEST", {1});
        InputTime stamped = 0;
        EXPECT_TRUE(waitUntil([&] {
            while (auto* const event = xcb_poll_for_event(client.connection())) {
                if ((event->response_type & 0x7F) == XCB_PROPERTY_NOTIFY) {
                    const void* bytes = event;
                    stamped = static_cast<const xcb_property_notify_event_t*>(bytes)->time;
                }
                std::free(event);
            }
            return stamped != 0;
        }));
        return stamped;
    }

    /// Waits until the server's clock has advanced by `time`, in milliseconds.
    void letPass(InputTime time)
    {
        const InputTime begin = serverTime();
        EXPECT_TRUE(waitUntil([&] { return serverTime() - begin >= time; }));
    }

    /// Freezes the keyboard while it lives: the server queues key events and processes them all at
    /// its end.
    class FrozenKeyboard
    {
    public:
        explicit FrozenKeyboard(TestClient& client) : m_client(client)
        {
            std::free(xcb_grab_keyboard_reply(
                client.connection(),
                xcb_grab_keyboard(client.connection(), 0, client.root(), XCB_CURRENT_TIME,
                                  XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_SYNC),
                nullptr));
        }
        FrozenKeyboard(const FrozenKeyboard&) = delete;
        FrozenKeyboard& operator=(const FrozenKeyboard&) = delete;
        ~FrozenKeyboard()
        {
            xcb_ungrab_keyboard(m_client.connection(), XCB_CURRENT_TIME);
            m_client.sync();
        }

    private:
        TestClient& m_client;
    };

    using Received = std::vector<std::string>;

    bool receives(const Received& expected)
    {
        // Superfluous events would arrive before this one.
        tap(XK_F12);
        Received all = expected;
        all.emplace_back("key");
        waitUntil([&] { return received.size() >= all.size() && received.back() == "key"; });
        EXPECT_EQ(received, all);
        return received == all;
    }

    ProgramArguments arguments;
    QCoreApplication application{arguments.count, arguments.values.data()};
    XServer server;
    TestClient client{server.display()};
    LoopScheduler scheduler;
    x11::X11GlobalKeys keys{std::make_shared<x11::DisplayConnector>(server.display()), scheduler};
    Received received;
    std::vector<GlobalModifierChange> changes;
    bool isAvailable = false;
    std::unique_ptr<Subscription> subscription;
};

} // namespace kelpa::test
