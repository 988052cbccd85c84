#include "platform/wayland/connection/Globals.h"

#include "support/wayland/FakeCompositor.h"

#include <gtest/gtest.h>

#include <wayland-server.h>

#include <chrono>
#include <future>

namespace kelpa::test {
namespace {

using namespace std::chrono_literals;

void refuse(wl_client*, void*, std::uint32_t, std::uint32_t) {}

TEST(Globals, Are_read_with_their_highest_versions)
{
    FakeCompositor compositor;
    wl_global_create(compositor.display(), &wl_seat_interface, 5, nullptr, refuse);
    wl_global_create(compositor.display(), &wl_output_interface, 3, nullptr, refuse);
    wl_global_create(compositor.display(), &wl_output_interface, 2, nullptr, refuse);
    auto reading = std::async(
        std::launch::async, [path = compositor.path()] { return wayland::readGlobals(path, 20s); });
    while (reading.wait_for(0s) != std::future_status::ready)
        compositor.serve();
    EXPECT_EQ(reading.get(), (wayland::GlobalVersions{{"wl_output", 3}, {"wl_seat", 5}}));
}

TEST(Globals, Are_absent_without_a_compositor_that_replies)
{
    EXPECT_EQ(wayland::readGlobals("/nonexistent/wayland-0", 20s), std::nullopt);
    const FakeCompositor silent;
    EXPECT_EQ(wayland::readGlobals(silent.path(), 50ms), std::nullopt);
}

} // namespace
} // namespace kelpa::test
