// A compositor whose events never end must not hold a capture longer than it may take. What the
// client has left unread in its socket tells whether it has stopped in between, so no clock
// decides.
#include "platform/FileDescriptor.h"
#include "platform/wayland/capture/CaptureClient.h"
#include "support/wayland/FakeCaptures.h"
#include "support/wayland/FakeToplevels.h"

#include <wayland-client-core.h>

#include <gtest/gtest.h>

#include <sys/eventfd.h>
#include <sys/ioctl.h>

#include <chrono>
#include <functional>
#include <memory>
#include <optional>
#include <string>

namespace kelpa::test {
namespace {

using namespace std::chrono_literals;
using wayland::CaptureClient;
using wayland::CaptureLimits;
using wayland::WaylandConnection;

const CaptureClient::IsStopped never = [] { return false; };

/// The client and its compositor take turns on one thread. The window "first" is listed.
class CaptureFloodTest : public testing::Test
{
protected:
    /// What has not arrived in one turn arrives in the next. `waker` as the client's own.
    void connect(const CaptureLimits& limits, int waker = -1)
    {
        m_connection = WaylandConnection::open(m_compositor.path());
        ASSERT_NE(m_connection, nullptr);
        m_client.emplace(*m_connection, limits, waker);
        ASSERT_TRUE(takeTurns([this] {
            m_client->setUp(never);
            return m_client->isOffering() && m_windows.isBound();
        }));
        m_window = m_windows.open("First", "app", "first");
        ASSERT_TRUE(takeTurns([this] {
            capture("first", inTheSecondWait());
            return !m_captures.sessions.empty();
        }));
        m_captures.opened = [](FakeCaptureSession&) {};
    }

    /// Gives a capture up before its second wait.
    static CaptureClient::IsStopped inTheSecondWait()
    {
        return [asked = 0]() mutable { return ++asked > 1; };
    }

    bool takeTurns(const std::function<bool()>& isDone)
    {
        for (int turn = 0; turn < 1000; ++turn) {
            if (isDone())
                return true;
            m_compositor.serve(0ms);
        }
        return false;
    }

    std::optional<WindowCapture> capture(const QByteArray& window,
                                         const CaptureClient::IsStopped& isStopped = never)
    {
        return m_client->capture({.window = window, .largest = QSize(4, 4)}, isStopped);
    }

    /// Sends more than a client reads at once, and less than a socket holds.
    void flood()
    {
        ASSERT_TRUE(m_window.has_value());
        for (int times = 0; times < 500; ++times)
            m_window->title(std::string(100, 'x')).done();
        m_compositor.serve(0ms);
        ASSERT_GT(unreadBytes(), 40'000);
    }

    int unreadBytes() const
    {
        int count = 0;
        return ::ioctl(wl_display_get_fd(m_connection->raw()), FIONREAD, &count) == 0 ? count : -1;
    }

private:
    FakeCompositor m_compositor;
    FakeIdentifiedToplevels m_windows{m_compositor};
    FakeCaptures m_captures{m_compositor};
    std::optional<FakeIdentifiedToplevel> m_window;
    std::unique_ptr<WaylandConnection> m_connection;
    std::optional<CaptureClient> m_client;
};

TEST_F(CaptureFloodTest, A_picture_is_given_up_in_the_midst_of_events_that_never_end)
{
    connect({.setup = 0ms, .picture = 0ms});
    flood();
    EXPECT_FALSE(capture("first"));
    EXPECT_GT(unreadBytes(), 0);
}

TEST_F(CaptureFloodTest, A_window_that_is_not_listed_is_waited_for_no_longer_than_allowed)
{
    connect({.setup = 0ms, .picture = 0ms});
    flood();
    EXPECT_FALSE(capture("second"));
    EXPECT_GT(unreadBytes(), 0);
}

TEST_F(CaptureFloodTest, Who_gives_a_capture_up_does_not_wait_for_the_end_of_the_events)
{
    // Never cleared, it lets no wait last.
    const FileDescriptor waker(::eventfd(1, EFD_CLOEXEC));
    connect({.setup = 0ms, .picture = 20s}, waker.number());
    flood();
    EXPECT_FALSE(capture("first", inTheSecondWait()));
    EXPECT_GT(unreadBytes(), 0);
}

} // namespace
} // namespace kelpa::test
