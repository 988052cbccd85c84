// Kelpa's main window in a GNOME session.
#pragma once

#include "platform/OwnWindow.h"
#include "platform/Scheduler.h"
#include "platform/tasks/ExclusiveTask.h"

#include <QPointer>
#include <QWindow>

namespace kelpa::gnome {

class ShellClient;

/// The Shell knows the window by its process. Without the extension the toolkit asks for the focus,
/// which the Shell grants as it sees fit.
class GnomeOwnWindow final : public OwnWindow
{
public:
    /// `client` outlives the background work that this object starts; `fallback` outlives this
    /// object, as does `scheduler`.
    GnomeOwnWindow(ShellClient& client, OwnWindow& fallback, Scheduler& scheduler)
        : m_client(client), m_fallback(fallback), m_activation(scheduler)
    {}

    void requestFront(QWindow& window, const ActivationContext& context) override;
    /// The Shell does not report it: null.
    [[nodiscard]] std::unique_ptr<Subscription>
    watchOcclusion(QWindow& window, std::function<void(bool isOccluded)> changed) override;

private:
    void activate();

    ShellClient& m_client;
    OwnWindow& m_fallback;
    QPointer<QWindow> m_window;
    ActivationContext m_context;
    /// Requested, perhaps again while an activation was under way.
    bool m_isRequested = false;
    ExclusiveTask m_activation;
};

} // namespace kelpa::gnome
