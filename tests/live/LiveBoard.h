// The program without its views, on a private X server: connected as in `app/`, with a board in
// memory.
#pragma once

#include "platform/freedesktop/accessibility/AtspiDocuments.h"
#include "platform/freedesktop/applications/ApplicationLauncher.h"
#include "platform/freedesktop/applications/DesktopEntries.h"
#include "platform/freedesktop/icons/ApplicationIcons.h"
#include "platform/freedesktop/icons/IconLookup.h"
#include "platform/qt/WorkerPool.h"
#include "platform/x11/X11WindowServer.h"
#include "platform/x11/actions/EwmhPager.h"
#include "platform/x11/actions/ServerTimeReader.h"
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

/// How many calls of one kind there were. Any thread.
class CallCount
{
public:
    /// A call that begins now and lasts as long as this.
    class Call
    {
    public:
        explicit Call(CallCount& count) : m_count(count)
        {
            ++m_count.m_begun;
            const int now = ++m_count.m_running;
            int most = m_count.m_most;
            while (most < now && !m_count.m_most.compare_exchange_weak(most, now)) {
            }
        }
        Call(const Call&) = delete;
        Call& operator=(const Call&) = delete;
        ~Call() { --m_count.m_running; }

    private:
        CallCount& m_count;
    };

    int begun() const { return m_begun; }
    int running() const { return m_running; }
    /// The most that ever ran at once.
    int most() const { return m_most; }

private:
    std::atomic<int> m_begun = 0;
    std::atomic<int> m_running = 0;
    std::atomic<int> m_most = 0;
};

/// Forwards everything and counts discovery passes and captures.
class CountingWindowServer : public WindowServer
{
public:
    explicit CountingWindowServer(WindowServer& server) : m_server(server) {}

    const CallCount& passes() const { return m_passes; }
    const CallCount& captures() const { return m_captures; }

    bool isScreenCaptureTrusted() const override { return m_server.isScreenCaptureTrusted(); }
    std::optional<Obstacle> screenCaptureObstacle() const override
    {
        return m_server.screenCaptureObstacle();
    }
    bool requestScreenCapture() override { return m_server.requestScreenCapture(); }
    std::unique_ptr<DiscoverySource> openDiscoverySource() override
    {
        const CallCount::Call call(m_passes);
        return m_server.openDiscoverySource();
    }
    std::optional<WindowCapture> captureWindow(const CaptureRequest& request,
                                               const std::stop_token& stop) override
    {
        const CallCount::Call call(m_captures);
        return m_server.captureWindow(request, stop);
    }
    std::unique_ptr<Subscription> watchWindows(std::function<void()> changed) override
    {
        return m_server.watchWindows(std::move(changed));
    }

private:
    WindowServer& m_server;
    CallCount m_passes;
    CallCount m_captures;
};

/// Makes the board list the test's own windows, which stand for another program's. Launches
/// nothing, and counts what reaches the applications.
class ForeignApplications : public x11::X11Applications
{
public:
    using X11Applications::X11Applications;
    ProcessID currentProcess() const override { return 0; }
    bool isRunning(ProcessID process) override
    {
        const CallCount::Call call(m_queries);
        return X11Applications::isRunning(process);
    }
    std::optional<Launch> launch(LaunchableApplication /*application*/) override
    {
        const CallCount::Call call(m_launches);
        return std::nullopt;
    }

    const CallCount& launches() const { return m_launches; }
    /// The first question to an application that is to come forward or to quit.
    const CallCount& queries() const { return m_queries; }

private:
    CallCount m_launches;
    CallCount m_queries;
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
    int discoveryPasses() const { return m_countingServer.passes().begun(); }
    const CountingWindowServer& server() const { return m_countingServer; }
    const ForeignApplications& applications() const { return m_applications; }

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
    WorkerPool m_serverTimeWorkers{1};
    x11::ServerTimeReader m_serverTime{m_connector, m_serverTimeWorkers};
    ForeignApplications m_applications;
    std::unique_ptr<WindowStore> m_store;
};

} // namespace kelpa::test
