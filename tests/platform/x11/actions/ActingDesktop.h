// A desktop under one of the window managers, with everything that acts on its windows.
#pragma once

#include "platform/freedesktop/applications/ApplicationLauncher.h"
#include "platform/freedesktop/icons/ApplicationIcons.h"
#include "platform/qt/WorkerPool.h"
#include "platform/x11/actions/EwmhPager.h"
#include "platform/x11/actions/ServerTimeReader.h"
#include "platform/x11/actions/StartupIdLookup.h"
#include "platform/x11/actions/X11Applications.h"
#include "platform/x11/actions/X11WindowActions.h"
#include "support/desktop/X11Desktop.h"
#include "windows/WindowActions.h"

#include <gtest/gtest.h>

#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <memory>
#include <string>
#include <vector>

namespace kelpa::test {

/// Two are tested everywhere, the others where they are installed.
inline std::vector<WindowManagerKind> testedWindowManagers()
{
    std::vector<WindowManagerKind> kinds{WindowManagerKind::openbox, WindowManagerKind::xfwm4};
    for (const WindowManagerKind kind : {WindowManagerKind::kwin, WindowManagerKind::mutter}) {
        if (isInstalled(kind)) {
            kinds.push_back(kind);
        }
    }
    return kinds;
}

inline std::string nameOf(const ::testing::TestParamInfo<WindowManagerKind>& info)
{
    switch (info.param) {
    case WindowManagerKind::openbox:
        return "openbox";
    case WindowManagerKind::xfwm4:
        return "xfwm4";
    case WindowManagerKind::kwin:
        return "kwin";
    case WindowManagerKind::mutter:
        return "mutter";
    }
    return {};
}

/// How long `work` took.
template <class Work>
std::chrono::milliseconds durationOf(Work work)
{
    const auto begin = std::chrono::steady_clock::now();
    work();
    return std::chrono::duration_cast<std::chrono::milliseconds>(std::chrono::steady_clock::now() -
                                                                 begin);
}

class ActingDesktop : public ::testing::TestWithParam<WindowManagerKind>
{
protected:
    /// The window with the title, once it is listed and shown: a window manager that lists it
    /// before it is shown may give it the focus only with its first frame. With number 0 when it
    /// never is.
    WindowItem listed(const QString& title)
    {
        WindowItem window;
        waitUntil([&] {
            const auto entry = entryNamed(runDiscoveryPass(*server), title);
            if (!entry || !entry->number || !entry->ownerProcess) {
                return false;
            }
            window.id = *entry->number;
            window.processIdentifier = *entry->ownerProcess;
            window.title = title;
            return true;
        });
        EXPECT_NE(window.id, 0U) << qPrintable(title);
        EXPECT_TRUE(waitUntil([&] { return client.isShown(idOf(window)); })) << qPrintable(title);
        return window;
    }

    WindowItem openWindow(TestClient& owner, const QByteArray& title)
    {
        owner.open({.title = title});
        return listed(QString::fromUtf8(title));
    }

    /// A window of this program, which has no number.
    xcb_window_t openOwnWindow()
    {
        const xcb_window_t own = client.open({.title = "own"});
        EXPECT_TRUE(waitUntil([&] { return client.isListed(own) && client.isShown(own); }));
        return own;
    }

    xcb_window_t idOf(const WindowItem& window) const
    {
        return server->clientWindow(window.id).value_or(XCB_WINDOW_NONE);
    }

    xcb_window_t active()
    {
        return client.word(client.root(), "_NET_ACTIVE_WINDOW").value_or(XCB_WINDOW_NONE);
    }

    bool isActive(const WindowItem& window) { return active() == idOf(window); }

    /// The topmost windows of the current desktop's stacking order, from bottom to top.
    std::vector<xcb_window_t> topmost(std::size_t count)
    {
        std::vector<xcb_window_t> stack = client.words(client.root(), "_NET_CLIENT_LIST_STACKING");
        if (stack.empty()) {
            // xfwm4 does not keep it for a single window.
            stack = client.words(client.root(), "_NET_CLIENT_LIST");
        }
        const auto shown = client.word(client.root(), "_NET_CURRENT_DESKTOP");
        std::erase_if(stack, [&](xcb_window_t window) {
            return client.word(window, "_NET_WM_DESKTOP") != shown;
        });
        if (stack.size() > count) {
            stack.erase(stack.begin(), stack.end() - static_cast<std::ptrdiff_t>(count));
        }
        return stack;
    }

    /// For a failure's message.
    std::string state()
    {
        std::string text =
            "active " + std::to_string(active()) + ", desktop " +
            std::to_string(client.word(client.root(), "_NET_CURRENT_DESKTOP").value_or(0)) +
            ", stack";
        for (const xcb_window_t window : topmost(20)) {
            text += ' ' + std::to_string(window);
        }
        return text;
    }

    bool isInFront(const WindowItem& window)
    {
        return isActive(window) && topmost(1) == std::vector{idOf(window)};
    }

    bool isIconic(const WindowItem& window)
    {
        constexpr std::uint32_t iconicState = 3;
        return client.word(idOf(window), "WM_STATE") == iconicState;
    }

    void minimize(const WindowItem& window)
    {
        client.minimize(idOf(window));
        EXPECT_TRUE(waitUntil([&] { return isIconic(window); }));
    }

    void bringForward(const QList<WindowItem>& windows)
    {
        kelpa::bringForward(windows, applications, windowActions);
    }

    /// Returns when the window manager has carried out all requests so far.
    void awaitManager()
    {
        const xcb_window_t probe = client.open({.title = "probe"});
        EXPECT_TRUE(waitUntil([&] { return client.isListed(probe); }));
        client.destroy(probe);
        EXPECT_TRUE(waitUntil([&] { return !client.isListed(probe); }));
    }

    XServer xServer;
    std::unique_ptr<WindowManager> manager =
        std::make_unique<WindowManager>(xServer.display(), GetParam());
    TestClient client{xServer.display()};
    X11Surroundings surroundings;
    std::unique_ptr<x11::X11WindowServer> server = surroundings.makeServer(xServer.display());
    x11::EwmhPager pager{std::make_shared<x11::DisplayConnector>(xServer.display()),
                         [this](WindowID number) { return server->clientWindow(number); }};
    x11::StartupIdLookup startupIDs{
        std::make_shared<x11::DisplayConnector>(xServer.display()),
        [this](WindowID number) { return server->clientWindow(number); }};
    x11::X11WindowActions windowActions{server->trust(), pager};
    DesktopEntries entries{{}};
    IconLookup lookup{entries, {}};
    ApplicationIcons icons{entries, lookup, {}};
    ApplicationLauncher launcher{entries};
    WorkerPool serverTimeWorkers{1};
    x11::ServerTimeReader serverTime{std::make_shared<x11::DisplayConnector>(xServer.display()),
                                     serverTimeWorkers};
    x11::X11Applications applications{xServer.display(), pager, serverTime,
                                      startupIDs,        icons, launcher};
};

} // namespace kelpa::test
