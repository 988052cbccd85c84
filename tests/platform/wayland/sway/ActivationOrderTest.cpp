#include "platform/wayland/sway/ActivationOrder.h"

#include <gtest/gtest.h>

namespace kelpa::test {
namespace {

using wayland::ActivationOrder;
using wayland::SwayWindow;

std::vector<SwayWindow> windows(const std::vector<std::int64_t>& containers, std::int64_t focused)
{
    std::vector<SwayWindow> all;
    for (const std::int64_t container : containers) {
        all.emplace_back();
        all.back().container = container;
        all.back().hasFocus = container == focused;
    }
    return all;
}

std::vector<std::int64_t> containers(const std::vector<SwayWindow>& windows)
{
    std::vector<std::int64_t> all;
    all.reserve(windows.size());
    for (const SwayWindow& window : windows)
        all.push_back(window.container);
    return all;
}

using Containers = std::vector<std::int64_t>;

TEST(ActivationOrder, Of_two_workspaces_the_window_that_was_active_before_comes_second)
{
    ActivationOrder order;
    // 1 and 2 share a workspace, 3 is on another.
    EXPECT_EQ(containers(order.sorted(windows({1, 2, 3}, 1))), (Containers{1, 2, 3}));
    EXPECT_EQ(containers(order.sorted(windows({3, 1, 2}, 3))), (Containers{3, 1, 2}));
    EXPECT_EQ(containers(order.sorted(windows({2, 1, 3}, 2))), (Containers{2, 3, 1}));
}

TEST(ActivationOrder, Without_a_focus_the_order_stays)
{
    ActivationOrder order;
    order.sorted(windows({1, 2, 3}, 3));
    EXPECT_EQ(containers(order.sorted(windows({1, 2, 3}, 0))), (Containers{3, 1, 2}));
}

TEST(ActivationOrder, New_windows_come_last_and_those_that_are_gone_are_forgotten)
{
    ActivationOrder order;
    order.sorted(windows({1, 2}, 2));
    EXPECT_EQ(containers(order.sorted(windows({4, 1}, 0))), (Containers{4, 1}));
    EXPECT_EQ(containers(order.sorted(windows({1, 2}, 0))), (Containers{1, 2}));
}

} // namespace
} // namespace kelpa::test
