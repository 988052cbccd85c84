#include "platform/x11/settings/XSettings.h"

#include "support/ProgramArguments.h"
#include "support/desktop/LoopScheduler.h"
#include "support/desktop/Programs.h"
#include "support/desktop/TestClient.h"
#include "support/desktop/WaitUntil.h"

#include <gtest/gtest.h>

#include <QCoreApplication>

#include <chrono>
#include <memory>
#include <optional>
#include <vector>

using namespace kelpa;
using namespace kelpa::test;

namespace {

/// A number of a settings manager's property, little-endian.
QByteArray bytes(std::uint64_t value, int count)
{
    QByteArray result;
    for (int i = 0; i < count; ++i)
        result.append(static_cast<char>(value >> (8 * i) & 0xFF));
    return result;
}

QByteArray padded(QByteArray text)
{
    while (text.size() % 4 != 0)
        text.append('\0');
    return text;
}

QByteArray head(char type, const QByteArray& name)
{
    return QByteArray(1, type) + '\0' + bytes(static_cast<std::uint64_t>(name.size()), 2) +
           padded(name) + bytes(7, 4);
}

QByteArray integer(const QByteArray& name, std::uint32_t value)
{
    return head(0, name) + bytes(value, 4);
}

QByteArray settings(const std::vector<QByteArray>& all)
{
    QByteArray result = bytes(0, 4) + bytes(3, 4) + bytes(all.size(), 4);
    for (const QByteArray& each : all)
        result += each;
    return result;
}

const QByteArray text = head(1, "Net/ThemeName") + bytes(7, 4) + padded("Adwaita");
const QByteArray colour = head(2, "Gtk/Colour") + bytes(0, 8);

TEST(SettingsInteger, Is_found_among_others_of_every_kind)
{
    const QByteArray all =
        settings({text, colour, integer("Xft/DPI", 98304), integer("Gtk/EnableAnimations", 1)});
    EXPECT_EQ(x11::settingsInteger(all, "Gtk/EnableAnimations"), 1);
    EXPECT_EQ(x11::settingsInteger(all, "Xft/DPI"), 98304);
    EXPECT_EQ(x11::settingsInteger(all, "Net/ThemeName"), std::nullopt);
    EXPECT_EQ(x11::settingsInteger(all, "Gtk/Enable"), std::nullopt);
}

TEST(SettingsInteger, Is_read_in_the_given_byte_order)
{
    const QByteArray name = padded("A");
    const QByteArray big = QByteArray::fromHex("01000000000000030000000100000001") + name +
                           QByteArray::fromHex("0000000700000102");
    EXPECT_EQ(x11::settingsInteger(big, "A"), 0x102);
}

TEST(SettingsInteger, Is_absent_wherever_the_bytes_end_too_early)
{
    const QByteArray all = settings({text, colour, integer("Gtk/EnableAnimations", 1)});
    for (qsizetype length = 0; length < all.size(); ++length)
        EXPECT_EQ(x11::settingsInteger(all.first(length), "Gtk/EnableAnimations"), std::nullopt);
}

TEST(SettingsInteger, Is_absent_in_malformed_settings)
{
    EXPECT_EQ(x11::settingsInteger(QByteArray(64, '\xFF'), "A"), std::nullopt);
    EXPECT_EQ(x11::settingsInteger(settings({head(9, "A") + bytes(1, 4)}), "A"), std::nullopt);
    QByteArray huge = head(1, "B") + bytes(0xFFFFFFFF, 4);
    EXPECT_EQ(x11::settingsInteger(settings({huge, integer("A", 1)}), "A"), std::nullopt);
}

/// A display with or without a settings manager.
class AnimationSetting : public testing::Test
{
protected:
    /// Makes a settings manager and announces it to all clients; returns its window.
    xcb_window_t manage(TestClient& client, const QByteArray& all)
    {
        const xcb_window_t window = client.create({});
        write(client, window, all);
        xcb_set_selection_owner(client.connection(), window, client.atom("_XSETTINGS_S0"),
                                XCB_CURRENT_TIME);
        xcb_client_message_event_t message{};
        message.response_type = XCB_CLIENT_MESSAGE;
        message.format = 32;
        message.window = client.root();
        message.type = client.atom("MANAGER");
        const void* const event = &message;
        xcb_send_event(client.connection(), 0, client.root(), XCB_EVENT_MASK_STRUCTURE_NOTIFY,
                       static_cast<const char*>(event));
        client.sync();
        return window;
    }
    static void write(TestClient& client, xcb_window_t window, const QByteArray& all)
    {
        client.setProperty(window, "_XSETTINGS_SETTINGS", client.atom("_XSETTINGS_SETTINGS"), 8,
                           all);
        client.sync();
    }
    void watch()
    {
        subscription = setting.watchAnimations(
            [this](std::optional<bool> areWanted) { received.push_back(areWanted); });
    }
    bool receives(const std::vector<std::optional<bool>>& expected)
    {
        return waitUntil([&] { return received == expected; });
    }

    ProgramArguments arguments;
    QCoreApplication application{arguments.count, arguments.values.data()};
    XServer server;
    LoopScheduler scheduler;
    x11::X11MotionSetting setting{std::make_shared<x11::DisplayConnector>(server.display()),
                                  scheduler};
    std::vector<std::optional<bool>> received;
    std::unique_ptr<Subscription> subscription;
    const QByteArray still = settings({text, integer("Gtk/EnableAnimations", 0)});
    const QByteArray moving = settings({text, integer("Gtk/EnableAnimations", 1)});
};

TEST_F(AnimationSetting, Is_reported_and_its_changes_too)
{
    TestClient manager(server.display());
    const xcb_window_t window = manage(manager, still);
    watch();
    EXPECT_TRUE(receives({false}));
    write(manager, window, moving);
    EXPECT_TRUE(receives({false, true}));
    write(manager, window, settings({text}));
    EXPECT_TRUE(receives({false, true, std::nullopt}));
}

TEST_F(AnimationSetting, Is_reported_for_a_manager_that_starts_later_and_ends_again)
{
    watch();
    {
        TestClient manager(server.display());
        const xcb_window_t window = manage(manager, still);
        // Whether the subscription or the manager began first, it is reported.
        EXPECT_TRUE(receives({false}));
        manager.destroy(window);
        manager.sync();
        EXPECT_TRUE(receives({false, std::nullopt}));
    }
    TestClient manager(server.display());
    manage(manager, moving);
    EXPECT_TRUE(receives({false, std::nullopt, true}));
}

TEST_F(AnimationSetting, Is_reported_no_more_once_the_server_goes_away)
{
    TestClient manager(server.display());
    manage(manager, still);
    watch();
    EXPECT_TRUE(receives({false}));
    server.kill();
    waitUntil([] { return false; }, std::chrono::milliseconds(50));
    EXPECT_EQ(received, std::vector<std::optional<bool>>{false});
}

} // namespace
