// The program but for its views, on a private X server: what `main` wires, with a board in memory.
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

/// Passes everything on and counts the looks.
class CountingWindowServer : public WindowServer
{
public:
    explicit CountingWindowServer(WindowServer& server) : m_server(server) {}

    /// Any thread.
    int looks() const { return m_looks; }

    bool isScreenCaptureTrusted() const override { return m_server.isScreenCaptureTrusted(); }
    bool requestScreenCapture() override { return m_server.requestScreenCapture(); }
    std::unique_ptr<DiscoverySource> openDiscoverySource() override
    {
        ++m_looks;
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
    std::atomic<int> m_looks = 0;
};

/// The test's own windows stand for another program's: the board does not leave them out.
class ForeignApplications : public x11::X11Applications
{
public:
    using X11Applications::X11Applications;
    ProcessID currentProcess() const override { return 0; }
};

/// Background work must have ended when it is destroyed: shut the scheduler down before.
class LiveBoard
{
public:
    /// `accessibilityBus`: its address; one that nothing listens on unless told otherwise.
    LiveBoard(const QByteArray& display, Scheduler& scheduler,
              const QString& accessibilityBus = QStringLiteral("unix:path=/nonexistent"));
    LiveBoard(const LiveBoard&) = delete;
    LiveBoard& operator=(const LiveBoard&) = delete;
    ~LiveBoard();

    /// Absent while the store is gone.
    WindowStore* store() const { return m_store.get(); }
    /// Begins and ends a store on the same platform.
    void openStore();
    void closeStore() { m_store.reset(); }
    int looks() const { return m_countingServer.looks(); }

    /// The listed window with the title; absent when none or several have it.
    std::optional<WindowItem> window(const QString& title) const;

private:
    void noteDocuments();

    Scheduler& m_scheduler;
    MemorySettingsStore m_settings;
    MemoryReservation m_reservation;
    /// The clipboard and the browser, which play no part.
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
