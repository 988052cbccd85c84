// The window server of a sway session: reads the windows from sway's IPC and numbers them by their
// containers.
#pragma once

#include "platform/ApplicationResolver.h"
#include "platform/DocumentSource.h"
#include "platform/Scheduler.h"
#include "platform/WindowServer.h"
#include "platform/numbers/NamedWindowNumbers.h"
#include "platform/wayland/capture/WindowPictures.h"
#include "platform/wayland/sway/ActivationOrder.h"
#include "platform/wayland/sway/SwayConnection.h"
#include "platform/wayland/sway/SwaySnapshot.h"

#include <QByteArray>
#include <QList>
#include <QStringList>

#include <atomic>
#include <chrono>
#include <memory>
#include <mutex>
#include <optional>
#include <set>
#include <vector>

namespace kelpa::wayland {

/// References to objects that outlive the window server.
struct SwayWindowServerNeeds
{
    /// Of sway's IPC, as in the SWAYSOCK variable.
    QByteArray socketPath;
    ApplicationResolver& resolver;
    /// Null when there is no source of documents.
    DocumentSource* documents = nullptr;
    NumberReservation& reservation;
    NameTableStorage& names;
    /// The greatest number reserved so far, 0 at first.
    WindowID highWaterMark = 0;
    /// Numbers that no new window may get, because windows are assigned by them.
    std::set<WindowID> takenNumbers{};
    Scheduler& scheduler;
    /// sway replies within milliseconds, or hangs.
    std::chrono::milliseconds replyLimit{2000};
    /// Null where there are none to be had.
    WindowPictures* pictures = nullptr;
};

/// A pass is one request. While sway hangs, passes give the windows that it told last.
class SwayWindowServer final : public WindowServer
{
public:
    explicit SwayWindowServer(const SwayWindowServerNeeds& needs);

    /// True while sway is there, also while it hangs.
    bool isScreenCaptureTrusted() const override { return m_isThere; }
    std::optional<Obstacle> screenCaptureObstacle() const override
    {
        return Obstacle::windowManager;
    }
    /// There is no permission to ask for.
    bool requestScreenCapture() override { return m_isThere; }
    std::unique_ptr<DiscoverySource> openDiscoverySource() override;
    /// sway's IPC has no pictures, but names each window as the protocols that have them do.
    std::optional<WindowCapture> captureWindow(const CaptureRequest& request,
                                               const std::stop_token& stop) override;
    [[nodiscard]] std::unique_ptr<Subscription>
    watchWindows(std::function<void()> changed) override;

    /// The windows of the last pass, the most recently active first; absent when there were none to
    /// be had. Any thread; returns at once.
    std::optional<std::vector<NumberedSwayWindow>> windows() const;

private:
    /// False when nobody listens. There may be no connection all the same, while sway hangs.
    bool connect();
    std::optional<SwayTree> readTree();
    /// Empty where sway does not tell it, and for a window that is gone.
    QByteArray identifierOf(WindowID number) const;
    std::vector<NumberedSwayWindow> numbered(std::vector<SwayWindow> windows);

    const SwayWindowServerNeeds m_needs;
    /// Assumed until sway has been asked.
    std::atomic<bool> m_isThere = true;

    // Used by discovery passes alone, of which there is one at a time.
    std::unique_ptr<SwayConnection> m_connection;
    ActivationOrder m_order;
    NamedWindowNumbers m_numbers;
    QStringList m_virtualDesktops;
    QList<int> m_unofferedDesktops;

    mutable std::mutex m_windowsMutex;
    std::optional<std::vector<NumberedSwayWindow>> m_windows;
};

} // namespace kelpa::wayland
