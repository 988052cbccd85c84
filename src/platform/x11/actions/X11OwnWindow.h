// Kelpa's main window on an X display.
#pragma once

#include "platform/OwnWindow.h"
#include "platform/Scheduler.h"
#include "platform/tasks/ExclusiveTask.h"
#include "platform/tasks/TaskQueue.h"
#include "platform/x11/connection/DisplayConnector.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>

namespace kelpa::x11 {

class EwmhPager;

/// For windows that the toolkit shows on X11. A server that hangs holds at most one activation and
/// one announcement.
class X11OwnWindow : public OwnWindow
{
public:
    /// Whether the server has reported last of the window with this id that it lost the focus.
    using HasLostFocus = std::function<bool(std::uint32_t window)>;

    /// `pager` and `scheduler` outlive this object, its subscriptions and the background work that
    /// it started.
    X11OwnWindow(std::shared_ptr<DisplayConnector> connector, EwmhPager& pager,
                 Scheduler& scheduler, HasLostFocus hasLostFocus);

    void requestFront(QWindow& window, const ActivationContext& context) override;
    bool hasLostKeyboard(const QWindow& window) const override;
    [[nodiscard]] std::unique_ptr<Subscription>
    watchOcclusion(QWindow& window, std::function<void(bool isOccluded)> changed) override;

    /// As `requestFront`, by the window's id.
    void requestFront(std::uint32_t window, const ActivationContext& context);

private:
    struct Activation
    {
        std::uint32_t window = 0;
        /// As in `EwmhPager::activateOwn`.
        std::optional<std::uint32_t> inputTime;
    };

    void activateNext();
    void completeStartup(const QByteArray& startupID);

    const std::shared_ptr<DisplayConnector> m_connector;
    EwmhPager& m_pager;
    Scheduler& m_scheduler;
    const HasLostFocus m_hasLostFocus;
    ExclusiveTask m_activation;
    /// The last request, until its activation begins.
    std::optional<Activation> m_requested;
    /// Announcements that a start is complete.
    TaskQueue m_completions;
};

} // namespace kelpa::x11
