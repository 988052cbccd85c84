// Kelpa's main window in a KWin session.
#pragma once

#include "platform/OwnWindow.h"

namespace kelpa::kwin {

class KwinWindowServer;

/// KWin knows the window by its process, which has no other: Wayland gives a window no number.
class KwinOwnWindow final : public OwnWindow
{
public:
    /// It outlives this object.
    explicit KwinOwnWindow(KwinWindowServer& server) : m_server(server) {}

    /// KWin's scripts need no activation token.
    void requestFront(QWindow& window, const ActivationContext& context) override;
    /// Scripts are not told: null.
    [[nodiscard]] std::unique_ptr<Subscription>
    watchOcclusion(QWindow& window, std::function<void(bool isOccluded)> changed) override;

private:
    KwinWindowServer& m_server;
};

} // namespace kelpa::kwin
