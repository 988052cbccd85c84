// The startup ids that windows carry, by which a launcher knows what came of its start.
#pragma once

#include "model/Identifiers.h"
#include "platform/x11/connection/DisplayConnector.h"

#include <QByteArray>

#include <cstdint>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <vector>

namespace kelpa::x11 {

class DisplayConnection;

/// Asks through a connection of its own, so that it waits for no window manager and no look at the
/// desktop for it.
class StartupIdLookup
{
public:
    /// Gives the server's id of a window, absent for one that is not known.
    using FindWindow = std::function<std::optional<std::uint32_t>(WindowID)>;

    StartupIdLookup(std::shared_ptr<DisplayConnector> connector, FindWindow findWindow);
    ~StartupIdLookup();

    /// The first of `numbers` whose window, or the leader of its group, carries `startupID`; none
    /// when none does. Two round trips whatever their count. Any thread but the main one.
    std::optional<WindowID> firstWith(const QByteArray& startupID,
                                      const std::vector<WindowID>& numbers);

private:
    const std::shared_ptr<DisplayConnector> m_connector;
    const FindWindow m_findWindow;

    std::mutex m_mutex;
    std::unique_ptr<DisplayConnection> m_link;
};

} // namespace kelpa::x11
