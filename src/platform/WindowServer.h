// The server that owns the windows of all applications.
#pragma once

#include "platform/DiscoverySource.h"

#include <functional>
#include <memory>

namespace kelpa {

/// Dropping it ends the subscription.
class Subscription
{
public:
    Subscription() = default;
    Subscription(const Subscription&) = delete;
    Subscription& operator=(const Subscription&) = delete;
    virtual ~Subscription() = default;
};

class WindowServer
{
public:
    virtual ~WindowServer() = default;

    /// Whether the contents and names of other applications' windows may be read, as last seen.
    /// Main thread; returns at once.
    virtual bool isScreenCaptureTrusted() const = 0;

    /// Takes one look at the desktop. Any thread, one at a time; may take as long as the window
    /// server does, so the main thread leaves it to the scheduler. Never absent: a server that does
    /// not answer gives a source whose lists are absent.
    virtual std::unique_ptr<DiscoverySource> openDiscoverySource() = 0;

    /// Calls `changed` on the main thread soon after windows were opened, closed, renamed,
    /// (un)minimised or restacked; several changes may come as one call. Absent when the platform
    /// gives no such notice. Main thread.
    [[nodiscard]] virtual std::unique_ptr<Subscription>
    watchWindows(std::function<void()> changed) = 0;
};

} // namespace kelpa
