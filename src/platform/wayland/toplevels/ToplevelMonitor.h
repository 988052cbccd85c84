// Follows a compositor's windows on a thread of its own, so that nobody else ever waits for the
// compositor.
#pragma once

#include "platform/FileDescriptor.h"
#include "platform/wayland/toplevels/ToplevelClient.h"

#include <QByteArray>

#include <chrono>
#include <functional>
#include <mutex>
#include <optional>
#include <stop_token>
#include <thread>
#include <utility>
#include <vector>

namespace kelpa::wayland {

/// Connects when it is constructed, and again some time after the connection was lost, the
/// compositor was not there, or it has ended its list.
class ToplevelMonitor
{
public:
    /// `path` as `socketPath` gives it. `changed` is called on the monitor's thread whenever
    /// `windows` gives another list; it returns at once. `retryDelay` passes before it connects
    /// again.
    ToplevelMonitor(QByteArray path, std::function<void()> changed,
                    std::chrono::milliseconds retryDelay = std::chrono::seconds(2));
    ToplevelMonitor(const ToplevelMonitor&) = delete;
    ToplevelMonitor& operator=(const ToplevelMonitor&) = delete;
    /// Ends the thread, whatever the compositor does.
    ~ToplevelMonitor();

    /// The most recently active first, as last reported. Absent while there is no connection or the
    /// compositor lists no windows. Any thread; never waits for the compositor.
    std::optional<std::vector<Toplevel>> windows() const;

    /// Any thread; never waits for the compositor. Does nothing when the window is gone.
    void request(ToplevelID window, ToplevelAction action);

private:
    void run(const std::stop_token& stop);
    void followConnection(const std::stop_token& stop, WaylandConnection& connection);
    void waitToRetry(const std::stop_token& stop);
    void publish(std::optional<std::vector<Toplevel>> windows);
    void wake() const;
    void clearWaker() const;
    std::vector<std::pair<ToplevelID, ToplevelAction>> takeRequests();

    const QByteArray m_path;
    const std::function<void()> m_changed;
    const std::chrono::milliseconds m_retryDelay;
    /// Readable when the thread has something to do besides the connection.
    const FileDescriptor m_waker;
    /// Used by the thread alone.
    ToplevelID m_nextID = 1;

    mutable std::mutex m_mutex;
    std::optional<std::vector<Toplevel>> m_windows;
    std::vector<std::pair<ToplevelID, ToplevelAction>> m_requests;
    /// Last, so that all that it uses is there.
    std::jthread m_thread;
};

} // namespace kelpa::wayland
