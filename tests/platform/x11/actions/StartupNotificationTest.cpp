#include "platform/x11/actions/StartupNotification.h"

#include "platform/x11/actions/EwmhPager.h"
#include "platform/x11/actions/X11OwnWindow.h"
#include "platform/x11/connection/DisplayConnection.h"
#include "platform/x11/connection/DisplayConnector.h"
#include "support/ManualScheduler.h"
#include "support/desktop/Programs.h"
#include "support/desktop/TestClient.h"
#include "support/desktop/WaitUntil.h"

#include <gtest/gtest.h>

using namespace kelpa::x11;
using namespace kelpa::test;

namespace {

TEST(StartupTime, Is_read_from_the_end_of_a_startup_id)
{
    EXPECT_EQ(startupTime("menu-12-host_TIME4711"), 4711U);
    EXPECT_EQ(startupTime("a_TIME1_b_TIME4294967295"), 4294967295U);
}

TEST(StartupTime, Is_absent_where_there_is_none)
{
    for (const char* const id : {"", "menu", "menu_TIME", "menu_TIME0", "menu_TIME12x",
                                 "menu_TIME-1", "menu_TIME4294967296"})
        EXPECT_EQ(startupTime(id), std::nullopt) << id;
}

class StartupComplete : public testing::Test
{
protected:
    void SetUp() override
    {
        const std::uint32_t mask = XCB_EVENT_MASK_PROPERTY_CHANGE;
        xcb_change_window_attributes(listener.connection(), listener.root(), XCB_CW_EVENT_MASK,
                                     &mask);
        listener.sync();
    }

    /// The joined bytes of all messages, with the zeros at their end.
    QByteArray announced(const QByteArray& id)
    {
        announceStartupComplete(*display, id);
        // Once this reply is here, everything sent before it has arrived.
        display->connection().flush();
        std::free(xcb_get_input_focus_reply(display->connection().raw(),
                                            xcb_get_input_focus(display->connection().raw()),
                                            nullptr));
        return received();
    }

    QByteArray received()
    {
        const xcb_atom_t begin = listener.atom("_NET_STARTUP_INFO_BEGIN");
        const xcb_atom_t further = listener.atom("_NET_STARTUP_INFO");
        listener.sync();
        QByteArray text;
        while (auto* const event = xcb_poll_for_event(listener.connection())) {
            if ((event->response_type & 0x7F) == XCB_CLIENT_MESSAGE) {
                const void* bytes = event;
                const auto* const message = static_cast<const xcb_client_message_event_t*>(bytes);
                const void* data = &message->data;
                const bool isFurther = !text.isEmpty() && text.back() != '\0';
                EXPECT_EQ(message->type, isFurther ? further : begin);
                text += QByteArray(static_cast<const char*>(data), 20);
            }
            std::free(event);
        }
        return text;
    }

    XServer server;
    TestClient listener{server.display()};
    std::unique_ptr<DisplayConnection> display = DisplayConnector(server.display()).open();
};

TEST_F(StartupComplete, Is_broadcast_in_messages_of_twenty_bytes)
{
    EXPECT_EQ(announced("menu_TIME1"),
              QByteArray("remove: ID=\"menu_TIME1\"") + QByteArray(17, '\0'));
}

TEST_F(StartupComplete, A_text_that_fills_its_messages_is_ended_by_one_more)
{
    // With eleven bytes before it and two quotation marks, the text is twenty bytes long.
    EXPECT_EQ(announced("1234567"), QByteArray("remove: ID=\"1234567\"") + QByteArray(20, '\0'));
}

TEST_F(StartupComplete,
       Quotation_marks_are_escaped_and_ids_that_no_launcher_gives_are_not_broadcast)
{
    EXPECT_TRUE(announced("a\"b\\c").startsWith("remove: ID=\"a\\\"b\\\\c\""));
    EXPECT_EQ(announced("two words"), QByteArray());
    EXPECT_EQ(announced("line\nbreak"), QByteArray());
    EXPECT_EQ(announced(QByteArray(2000, 'x')), QByteArray());
    EXPECT_EQ(announced(""), QByteArray());
}

TEST_F(StartupComplete, Is_broadcast_for_each_start_also_when_the_next_one_comes_before_the_window)
{
    const auto connector = std::make_shared<DisplayConnector>(server.display());
    EwmhPager pager(connector, [](kelpa::WindowID) { return std::nullopt; });
    ManualScheduler scheduler;
    X11OwnWindow window(connector, pager, scheduler, [](std::uint32_t) { return false; });
    const xcb_window_t own = listener.open({});
    scheduler.holdBackgroundWork(true);
    window.requestFront(own, {.inputTime = std::nullopt, .startupID = "first_TIME1"});
    window.requestFront(own, {.inputTime = std::nullopt, .startupID = "second_TIME2"});
    window.requestFront(own, {});
    while (scheduler.backgroundWorkInFlight() > 0)
        scheduler.runBackgroundWork();
    QByteArray broadcast;
    EXPECT_TRUE(waitUntil([&] {
        broadcast += received();
        return broadcast.contains("remove: ID=\"first_TIME1\"") &&
               broadcast.contains("remove: ID=\"second_TIME2\"");
    })) << broadcast.constData();
}

TEST_F(StartupComplete, Requests_beside_an_activation_that_hangs_hold_one_more_thread)
{
    const auto connector = std::make_shared<DisplayConnector>(server.display());
    EwmhPager pager(connector, [](kelpa::WindowID) { return std::nullopt; });
    ManualScheduler scheduler;
    X11OwnWindow window(connector, pager, scheduler, [](std::uint32_t) { return false; });
    const xcb_window_t own = listener.open({});
    scheduler.holdBackgroundWork(true);
    for (int round = 0; round < 5; ++round) {
        window.requestFront(own, {.inputTime = std::nullopt, .startupID = "start_TIME1"});
        scheduler.hangBackgroundWork();
        EXPECT_LE(scheduler.backgroundWorkInFlight(), 2);
    }
    // The activation that hung, the last one requested, and an announcement for each start.
    int finished = 0;
    for (; scheduler.backgroundWorkInFlight() > 0; ++finished)
        scheduler.runBackgroundWork();
    EXPECT_EQ(finished, 5);
    EXPECT_EQ(scheduler.backgroundWorkStarted(), 2 + 5);
}

} // namespace
