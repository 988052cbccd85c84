// Kelpa's window server on a display whose windows a test opens.
#pragma once

#include "support/desktop/X11Desktop.h"

#include <gtest/gtest.h>

#include <unistd.h>

#include <memory>
#include <optional>

namespace kelpa::test {

class WindowListing : public testing::Test
{
protected:
    /// A window that the window manager lists.
    xcb_window_t openListed(TestClient& of, const TestWindow& window)
    {
        const xcb_window_t id = of.open(window);
        EXPECT_TRUE(waitUntil([&] { return client.isListed(id); }));
        return id;
    }

    std::optional<WindowListEntry> entry(const char* title)
    {
        return entryNamed(runDiscoveryPass(*server), QString::fromUtf8(title));
    }

    bool isOnScreen(const char* title)
    {
        return entryNamed(runDiscoveryPass(*server, WindowListScope::onScreen),
                          QString::fromUtf8(title))
            .has_value();
    }

    std::optional<AccessibilityWindow> element(ProcessID process, WindowID number)
    {
        const auto source = server->openDiscoverySource();
        for (const AccessibilityWindow& window :
             source->accessibilityWindows(process).value_or(std::vector<AccessibilityWindow>())) {
            if (window.windowNumber == number) {
                return window;
            }
        }
        return std::nullopt;
    }

    XServer xServer;
    WindowManager manager{xServer.display()};
    X11Surroundings surroundings;
    std::unique_ptr<x11::X11WindowServer> server = surroundings.makeServer(xServer.display());
    TestClient client{xServer.display()};
    const ProcessID ownProcess = static_cast<ProcessID>(getpid());
};

} // namespace kelpa::test
