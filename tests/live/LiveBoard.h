// The program without its views, on a private X server: connected as in `app/`, with a board in
// memory.
#pragma once

#include "platform/freedesktop/accessibility/AtspiDocuments.h"
#include "platform/freedesktop/applications/ApplicationLauncher.h"
#include "platform/freedesktop/applications/DesktopEntries.h"
#include "platform/freedesktop/icons/ApplicationIcons.h"
#include "platform/freedesktop/icons/IconLookup.h"
#include "platform/x11/X11WindowServer.h"
#include "platform/x11/actions/EwmhPager.h"
#include "platform/x11/actions/StartupIdLookup.h"
#include "platform/x11/actions/X11Applications.h"
#include "platform/x11/actions/X11WindowActions.h"
#include "store/WindowStore.h"
#include "support/FakeDesktop.h"
#include "support/MemorySettingsStore.h"
#include "support/desktop/X11Desktop.h"

#include <atomic>
#include <memory>
#include <optional>

namespace kelpa::test {

/// Forwards everything and counts discovery passes.
class CountingWindowServer : public WindowServer
{
public:
    explicit CountingWindowServer(WindowServer& server) : m_server(server) {}

    /// Any thread.
    int discoveryPasses() const { return m_discoveryPasses; }

    bool isScreenCaptureTrusted() const override { return m_server.isScreenCaptureTrusted(); }
    Obstacle screenCaptureObstacle() const override { return m_server.screenCaptureObstacle(); }
    bool requestScreenCapture() override { return m_server.requestScreenCapture(); }
    std::unique_ptr<DiscoverySource> openDiscoverySource() override
    {
        ++m_discoveryPasses;
        return m_server.openDiscoverySource();
    }
    std::optional<WindowCapture> captureWindow(const CaptureRequest& request,
                                               const std::stop_token& stop) override
    {
        return m_server.captureWindow(request, stop);
    }
    std::unique_ptr<Subscription> watchWindows(std::function<void()> changed) override
    {
        return m_server.watchWindows(std::move(changed));
    }

private:
    WindowServer& m_server;
    std::atomic<int> m_discoveryPasses = 0;
};

/// Makes the board list the test's own windows, which stand for another program's.
class ForeignApplications : public x11::X11Applications
{
public:
    using X11Applications::X11Applications;
    ProcessID currentProcess() const override { return 0; }
};

/// Shut the scheduler down before destroying it: no background work may run then.
class LiveBoard
{
public:
    /// `accessibilityBus` is the bus address; by default nothing listens on it.
    LiveBoard(const QByteArray& display, Scheduler& scheduler,
              const QString& accessibilityBus = QStringLiteral("unix:path=/nonexistent"));
    LiveBoard(const LiveBoard&) = delete;
    LiveBoard& operator=(const LiveBoard&) = delete;
    ~LiveBoard();

    /// Null while the store is closed.
    WindowStore* store() const { return m_store.get(); }
    /// Opens and closes a store on the same platform.
    void openStore();
    void closeStore() { m_store.reset(); }
    int discoveryPasses() const { return m_countingServer.discoveryPasses(); }

    /// The listed window with `title`; absent when none or several have it.
    std::optional<WindowItem> window(const QString& title) const;

private:
    void handleDocumentsChanged();

    Scheduler& m_scheduler;
    MemorySettingsStore m_settings;
    MemoryReservation m_reservation;
    /// Clipboard and workspace, which are not tested.
    FakeDesktop m_rest;
    DesktopEntries m_entries{{}};
    IconLookup m_icons{m_entries, {}};
    ApplicationIcons m_applicationIcons{m_entries, m_icons, {}};
    ApplicationLauncher m_launcher{m_entries};
    AtspiDocuments m_documents;
    std::shared_ptr<x11::DisplayConnector> m_connector;
    x11::X11WindowServer m_server;
    CountingWindowServer m_countingServer{m_server};
    x11::EwmhPager m_pager;
    x11::StartupIdLookup m_startupIDs{
        m_connector, [this](WindowID number) { return m_server.clientWindow(number); }};
    x11::X11WindowActions m_windowActions{m_server.trust(), m_pager};
    ForeignApplications m_applications;
    std::unique_ptr<WindowStore> m_store;
};

} // namespace kelpa::test
