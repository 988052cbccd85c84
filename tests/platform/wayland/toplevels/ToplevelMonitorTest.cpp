#include "platform/wayland/toplevels/ToplevelMonitor.h"

#include "support/wayland/FakeToplevels.h"

#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <functional>
#include <thread>

namespace kelpa::test {
namespace {

using namespace std::chrono_literals;
using wayland::ToplevelAction;
using wayland::ToplevelMonitor;

class ToplevelMonitorTest : public testing::Test
{
protected:
    /// Serves until the condition holds; false when it takes too long.
    bool serveUntil(const std::function<bool()>& condition)
    {
        const auto end = std::chrono::steady_clock::now() + 20s;
        while (!condition()) {
            if (std::chrono::steady_clock::now() > end)
                return false;
            compositor->serve();
        }
        return true;
    }

    static std::size_t count(const ToplevelMonitor& monitor)
    {
        const auto windows = monitor.windows();
        return windows ? windows->size() : 0;
    }

    /// Outlives each compositor, so that the next one listens at the same path.
    const QTemporaryDir folder;
    const QByteArray path = folder.filePath(QStringLiteral("wayland")).toLocal8Bit();
    std::optional<FakeCompositor> compositor{std::in_place, path};
    std::optional<FakeToplevelManager> manager{std::in_place, *compositor};
    std::atomic<int> changes = 0;
};

TEST_F(ToplevelMonitorTest, Lists_windows_and_carries_requests_out_while_nobody_waits)
{
    ToplevelMonitor monitor(
        path, [this] { ++changes; }, 10ms);
    EXPECT_EQ(monitor.windows(), std::nullopt);
    ASSERT_TRUE(serveUntil([&] { return monitor.windows().has_value(); }));
    manager->open("A", "app");
    ASSERT_TRUE(serveUntil([&] { return count(monitor) == 1; }));
    // The empty list, then that window.
    EXPECT_TRUE(serveUntil([&] { return changes == 2; }));
    monitor.request(monitor.windows()->front().id, ToplevelAction::activate);
    EXPECT_TRUE(
        serveUntil([&] { return manager->requests == QStringList{QStringLiteral("activate 0")}; }));
}

TEST_F(ToplevelMonitorTest, While_the_compositor_hangs_the_list_stays_and_the_end_is_not_delayed)
{
    ToplevelMonitor monitor(
        path, [] {}, 10ms);
    ASSERT_TRUE(serveUntil([&] { return monitor.windows().has_value(); }));
    manager->open("A", "app");
    ASSERT_TRUE(serveUntil([&] { return count(monitor) == 1; }));
    // It is served no more.
    for (int i = 0; i < 10'000; ++i)
        monitor.request(monitor.windows()->front().id, ToplevelAction::activate);
    EXPECT_EQ(count(monitor), 1U);
}

TEST_F(ToplevelMonitorTest, Requests_to_a_compositor_that_hangs_do_not_cost_the_connection)
{
    ToplevelMonitor monitor(
        path, [] {}, 10ms);
    ASSERT_TRUE(serveUntil([&] { return monitor.windows().has_value(); }));
    manager->open("A", "app");
    ASSERT_TRUE(serveUntil([&] { return count(monitor) == 1; }));
    const wayland::ToplevelID window = monitor.windows()->front().id;
    // More than the socket and the library's buffer take.
    for (int i = 0; i < 10'000; ++i)
        monitor.request(window, ToplevelAction::activate);
    monitor.request(window, ToplevelAction::close);
    EXPECT_TRUE(serveUntil([&] { return manager->requests.contains(QStringLiteral("close 0")); }));
    // What did not fit was dropped, but for the last of it.
    EXPECT_LT(manager->requests.size(), 9000);
}

TEST_F(ToplevelMonitorTest, A_compositor_that_dies_takes_its_windows_and_the_next_one_is_found)
{
    ToplevelMonitor monitor(
        path, [this] { ++changes; }, 10ms);
    ASSERT_TRUE(serveUntil([&] { return monitor.windows().has_value(); }));
    manager->open("A", "app");
    ASSERT_TRUE(serveUntil([&] { return count(monitor) == 1; }));
    const wayland::ToplevelID before = monitor.windows()->front().id;
    manager.reset();
    compositor.reset();
    const auto end = std::chrono::steady_clock::now() + 20s;
    while ((monitor.windows() || changes < 3) && std::chrono::steady_clock::now() < end)
        std::this_thread::sleep_for(1ms);
    EXPECT_EQ(monitor.windows(), std::nullopt);
    EXPECT_EQ(changes, 3);

    compositor.emplace(path);
    manager.emplace(*compositor);
    ASSERT_TRUE(serveUntil([&] { return monitor.windows().has_value(); }));
    manager->open("A", "app");
    ASSERT_TRUE(serveUntil([&] { return count(monitor) == 1; }));
    EXPECT_NE(monitor.windows()->front().id, before);
}

TEST_F(ToplevelMonitorTest, A_list_that_the_compositor_ends_is_asked_for_anew)
{
    ToplevelMonitor monitor(
        path, [] {}, 10ms);
    ASSERT_TRUE(serveUntil([&] { return monitor.windows().has_value(); }));
    manager->open("A", "app");
    ASSERT_TRUE(serveUntil([&] { return count(monitor) == 1; }));
    manager->finish();
    ASSERT_TRUE(serveUntil([&] { return !monitor.windows(); }));
    ASSERT_TRUE(serveUntil([&] { return monitor.windows().has_value(); }));
    manager->open("B", "app");
    EXPECT_TRUE(serveUntil([&] { return count(monitor) == 1; }));
}

TEST_F(ToplevelMonitorTest, It_waits_for_a_compositor_that_is_not_there_yet)
{
    manager.reset();
    compositor.reset();
    const ToplevelMonitor monitor(
        path, [] {}, 10ms);
    compositor.emplace(path);
    manager.emplace(*compositor);
    EXPECT_TRUE(serveUntil([&] { return monitor.windows().has_value(); }));
}

} // namespace
} // namespace kelpa::test
