// Kelpa's own window on the desktop.
#pragma once

#include "platform/GlobalKeys.h"
#include "platform/Subscription.h"

#include <QByteArray>

#include <functional>
#include <memory>
#include <optional>

class QWindow;

namespace kelpa {

/// What justifies activating a window, for desktops that prevent focus stealing.
struct ActivationContext
{
    /// The user time: when the person acted; absent means now.
    std::optional<InputTime> inputTime;
    /// The startup id (activation token) from the launcher that started the program; empty if none.
    QByteArray startupID;
};

class OwnWindow
{
public:
    virtual ~OwnWindow() = default;

    /// Requests that the window be restored, raised above all others and focused, with its desktop
    /// shown, also while the person types into another program. A later request may replace an
    /// earlier one, but the launch of each `startupID` is reported as complete. Main thread;
    /// returns at once.
    virtual void requestFront(QWindow& window, const ActivationContext& context) = 0;

    /// Calls `changed` whenever other windows begin or cease to cover all of the window. It counts
    /// as not occluded until that is known, and always where the desktop cannot report it; while it
    /// is not shown at all, nothing is reported. `window` outlives the subscription. Main thread;
    /// returns at once.
    [[nodiscard]] virtual std::unique_ptr<Subscription>
    watchOcclusion(QWindow& window, std::function<void(bool isOccluded)> changed) = 0;

    /// Whether the desktop has reported that the window lost the keyboard, though the toolkit may
    /// not take note of it until later. False where the toolkit knows as soon. Main thread; returns
    /// at once.
    virtual bool hasLostKeyboard(const QWindow&) const { return false; }
};

} // namespace kelpa
