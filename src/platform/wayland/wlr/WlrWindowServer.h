// The window server of a compositor of the wlroots family, by its lists of windows.
#pragma once

#include "platform/ApplicationResolver.h"
#include "platform/Scheduler.h"
#include "platform/WindowServer.h"
#include "platform/numbers/NamedWindowNumbers.h"
#include "platform/tasks/MainThreadNotifier.h"
#include "platform/wayland/capture/WindowPictures.h"
#include "platform/wayland/toplevels/ToplevelMonitor.h"
#include "platform/wayland/wlr/ToplevelNames.h"
#include "platform/wayland/wlr/WlrSnapshot.h"

#include <QByteArray>
#include <QString>
#include <QStringList>

#include <atomic>
#include <memory>
#include <mutex>
#include <optional>
#include <set>
#include <vector>

namespace kelpa::wayland {

/// References to objects that outlive the window server.
struct WlrWindowServerNeeds
{
    /// Of the compositor, as `socketPath` gives it.
    QByteArray socketPath;
    /// Of Kelpa's own windows, native ones and those on Xwayland.
    QStringList ownApplications;
    ApplicationResolver& resolver;
    NumberReservation& reservation;
    NameTableStorage& names;
    /// The greatest number reserved so far, 0 at first.
    WindowID highWaterMark = 0;
    /// Numbers that no new window may get, because windows are assigned by them.
    std::set<WindowID> takenNumbers{};
    Scheduler& scheduler;
    /// Null where there are none to be had.
    WindowPictures* pictures = nullptr;
};

/// Its passes wait for nobody, but the first one: until the compositor has listed its windows, a
/// second at most.
class WlrWindowServer final : public WindowServer
{
public:
    explicit WlrWindowServer(const WlrWindowServerNeeds& needs);

    /// There is no permission that could be missing.
    bool isScreenCaptureTrusted() const override { return true; }
    std::optional<Obstacle> screenCaptureObstacle() const override { return std::nullopt; }
    bool requestScreenCapture() override { return true; }
    std::unique_ptr<DiscoverySource> openDiscoverySource() override;
    /// Of windows whose identifiers are certain.
    std::optional<WindowCapture> captureWindow(const CaptureRequest& request,
                                               const std::stop_token& stop) override;
    /// Reports changes of `isListing` too.
    [[nodiscard]] std::unique_ptr<Subscription>
    watchWindows(std::function<void()> changed) override;

    /// Whether the last pass had a list; assumed before the first. Any thread; returns at once.
    bool isListing() const { return m_isListing; }

    /// Those of the last pass. Any thread; returns at once.
    std::vector<NumberedToplevel> windows() const;
    /// That of the last pass that `processOf` gives this process; absent when it is gone.
    std::optional<NumberedToplevel> windowOf(ProcessID process) const;
    /// Any thread; returns at once.
    void request(ToplevelID window, ToplevelAction action) { m_monitor.request(window, action); }
    /// Activates one window of Kelpa's own. The list tells no processes, and another Kelpa of the
    /// session may have another board: it is the most recently active of those with this title, or
    /// of all where none has it. Any thread; returns at once.
    void activateOwn(const QString& title);

private:
    std::optional<std::vector<Toplevel>> listed();
    /// Empty where it is not certain, and for a window that is gone.
    QByteArray identifierOf(WindowID number) const;

    const WlrWindowServerNeeds m_needs;

    // Used by discovery passes alone, of which there is one at a time.
    NamedWindowNumbers m_numbers;
    ToplevelNames m_names;
    bool m_isFirst = true;

    std::atomic<bool> m_isListing = true;

    mutable std::mutex m_mutex;
    std::vector<NumberedToplevel> m_windows;
    MainThreadNotifier m_changes;
    /// Last: its thread uses the others.
    ToplevelMonitor m_monitor;
};

} // namespace kelpa::wayland
