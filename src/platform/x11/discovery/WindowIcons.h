// The icons that windows carry in _NET_WM_ICON.
#pragma once

#include "model/Identifiers.h"
#include "platform/x11/connection/DisplayConnector.h"
#include "platform/x11/discovery/ClientWindow.h"

#include <cstdint>
#include <memory>
#include <mutex>
#include <vector>

namespace kelpa::x11 {

class DisplayConnection;

/// Reads through a connection of its own, so that no discovery pass waits for it.
class WindowIcons
{
public:
    WindowIcons(std::shared_ptr<DisplayConnector> connector, FindClientWindow findWindow);
    ~WindowIcons();

    /// The value of the window's `_NET_WM_ICON`; empty when there is none, or when the server's id
    /// belongs to another window by now. Any thread but the main one: it waits for the server.
    std::vector<std::uint32_t> read(WindowID number);

private:
    const std::shared_ptr<DisplayConnector> m_connector;
    const FindClientWindow m_findWindow;

    std::mutex m_mutex;
    std::unique_ptr<DisplayConnection> m_display;
};

} // namespace kelpa::x11
