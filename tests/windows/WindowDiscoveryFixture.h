// Window discovery on the fake desktop.
#pragma once

#include "support/BoardBuilders.h"
#include "support/FakeDesktop.h"
#include "windows/WindowDiscovery.h"

#include <gtest/gtest.h>

#include <limits>

namespace kelpa::test {

class WindowDiscoveryTest : public testing::Test
{
protected:
    QList<WindowItem> discover()
    {
        const auto source = desktop.openDiscoverySource();
        return WindowDiscovery::visibleWindows(*source, FakeDesktop::ownProcess);
    }

    QList<WindowID> discoveredIDs() { return idsOf(discover()); }

    /// The accessibility windows of a process on the fake desktop.
    std::vector<AccessibilityWindow>& elementsOf(ProcessID process)
    {
        auto& elements = desktop.accessibilityWindows[process];
        if (!elements)
            elements.emplace();
        return *elements;
    }

    static AccessibilityWindow element(const Rect& frame, const std::optional<QString>& title)
    {
        AccessibilityWindow window;
        window.position = Point{frame.x, frame.y};
        window.size = Size{frame.width, frame.height};
        window.title = title;
        return window;
    }

    FakeDesktop desktop;
};

inline const QList<WindowID> nothing;
inline constexpr double nan = std::numeric_limits<double>::quiet_NaN();

} // namespace kelpa::test
