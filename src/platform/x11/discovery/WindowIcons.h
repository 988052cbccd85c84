// The pictures that windows carry themselves.
#pragma once

#include "model/Identifiers.h"
#include "platform/x11/connection/DisplayConnector.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <vector>

namespace kelpa::x11 {

class DisplayConnection;

/// Asks through a connection of its own, so that no look at the desktop waits for it.
class WindowIcons
{
public:
    /// Gives the server's id of a window, absent for one that is not known.
    using FindWindow = std::function<std::optional<std::uint32_t>(WindowID)>;

    WindowIcons(std::shared_ptr<DisplayConnector> connector, FindWindow findWindow);
    ~WindowIcons();

    /// What `_NET_WM_ICON` of the window holds; empty when it holds nothing, or when the server's
    /// id belongs to another window by now. Any thread but the main one: it waits for the server.
    std::vector<std::uint32_t> read(WindowID number);

private:
    const std::shared_ptr<DisplayConnector> m_connector;
    const FindWindow m_findWindow;

    std::mutex m_mutex;
    std::unique_ptr<DisplayConnection> m_link;
};

} // namespace kelpa::x11
