// Finds the window that a launch opened, by the startup id that the launched program puts on it.
#pragma once

#include "model/Identifiers.h"
#include "platform/x11/connection/DisplayConnector.h"
#include "platform/x11/discovery/ClientWindow.h"

#include <QByteArray>

#include <memory>
#include <mutex>
#include <optional>
#include <vector>

namespace kelpa::x11 {

class DisplayConnection;

/// Has a connection of its own, so that it waits neither for the window manager nor for a discovery
/// pass in progress.
class StartupIdLookup
{
public:
    StartupIdLookup(std::shared_ptr<DisplayConnector> connector, FindClientWindow findWindow);
    ~StartupIdLookup();

    /// The first of `numbers` whose window, or the leader of its client, carries `startupID`;
    /// absent when none does. Costs two round trips, however many numbers there are. Any thread but
    /// the main one.
    std::optional<WindowID> firstWith(const QByteArray& startupID,
                                      const std::vector<WindowID>& numbers);

private:
    const std::shared_ptr<DisplayConnector> m_connector;
    const FindClientWindow m_findWindow;

    std::mutex m_mutex;
    std::unique_ptr<DisplayConnection> m_display;
};

} // namespace kelpa::x11
