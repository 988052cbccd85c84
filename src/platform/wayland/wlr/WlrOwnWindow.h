// Kelpa's main window under a compositor of the wlroots family.
#pragma once

#include "platform/OwnWindow.h"

namespace kelpa::wayland {

class WlrWindowServer;

/// The compositor's list has Kelpa's window too, and activates it without asking why.
class WlrOwnWindow final : public OwnWindow
{
public:
    /// `server` outlives this object.
    explicit WlrOwnWindow(WlrWindowServer& server) : m_server(server) {}

    void requestFront(QWindow& window, const ActivationContext& context) override;
    /// The compositor does not report it: null.
    [[nodiscard]] std::unique_ptr<Subscription>
    watchOcclusion(QWindow& window, std::function<void(bool isOccluded)> changed) override;

private:
    WlrWindowServer& m_server;
};

} // namespace kelpa::wayland
