// The window server of a GNOME session: reads the windows from the Shell's extension and numbers
// them by the Shell's ids.
#pragma once

#include "platform/ApplicationResolver.h"
#include "platform/DocumentSource.h"
#include "platform/WindowServer.h"
#include "platform/gnome/GnomeSnapshot.h"
#include "platform/numbers/NamedWindowNumbers.h"

#include <cstdint>
#include <mutex>
#include <optional>
#include <set>
#include <vector>

namespace kelpa::gnome {

class ShellClient;
class ShellFollower;

/// References to objects that outlive the window server.
struct GnomeWindowServerNeeds
{
    ShellFollower& follower;
    ApplicationResolver& resolver;
    /// Null when there is no source of documents.
    DocumentSource* documents = nullptr;
    NumberReservation& reservation;
    NameTableStorage& names;
    /// The greatest number reserved so far, 0 at first.
    WindowID highWaterMark = 0;
    /// Numbers that no new window may get, because windows are assigned by them.
    std::set<WindowID> takenNumbers{};
};

/// A pass is one request, and with an older extension another for the workspaces. While the Shell
/// hangs, passes give what it told last.
class GnomeWindowServer final : public WindowServer
{
public:
    explicit GnomeWindowServer(const GnomeWindowServerNeeds& needs);

    /// True while the extension serves Kelpa, and until that is known.
    bool isScreenCaptureTrusted() const override;
    /// Absent: the desktop's abilities say what is in the way.
    std::optional<Obstacle> screenCaptureObstacle() const override { return std::nullopt; }
    bool requestScreenCapture() override { return isScreenCaptureTrusted(); }
    std::unique_ptr<DiscoverySource> openDiscoverySource() override;
    std::optional<WindowCapture> captureWindow(const CaptureRequest& request,
                                               const std::stop_token& stop) override;
    [[nodiscard]] std::unique_ptr<Subscription>
    watchWindows(std::function<void()> changed) override;

    /// The windows of the last pass, the most recently active first; absent when there were none to
    /// be had. Any thread; returns at once.
    std::optional<std::vector<NumberedShellWindow>> windows() const;

private:
    /// What one pass has found.
    struct Listing
    {
        std::vector<NumberedShellWindow> windows{};
        ShellWorkspaces workspaces{};
    };

    /// Absent when the extension does not serve Kelpa.
    std::optional<Listing> listed();
    std::optional<Listing> lastListing() const;
    std::vector<NumberedShellWindow> numbered(std::vector<ShellWindow> windows);
    std::optional<ShellWindow> windowNumbered(WindowID number) const;

    const GnomeWindowServerNeeds m_needs;
    ShellClient& m_client;

    /// Used by discovery passes alone, of which there is one at a time.
    NamedWindowNumbers m_numbers;

    mutable std::mutex m_mutex;
    /// Of the last pass.
    std::optional<Listing> m_listing;
};

} // namespace kelpa::gnome
