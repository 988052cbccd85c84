// Kelpa's own window among those of the desktop.
#pragma once

#include "platform/GlobalKeys.h"
#include "platform/Subscription.h"

#include <QByteArray>

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>

namespace kelpa {

/// Why a window is brought forward, so that the desktop lets it pass.
struct FrontOccasion
{
    /// When the person did what it follows from; absent: now.
    std::optional<InputTime> inputTime;
    /// What a launcher gave along with a start of the program; empty without one.
    QByteArray startupID;
};

class OwnWindow
{
public:
    virtual ~OwnWindow() = default;

    /// Asks for the window in front of all others, un-minimised and with the keyboard, also while
    /// another program is being typed into; its desktop is shown. `window` is its number in the
    /// window system, as the toolkit tells it. A later request may replace an earlier one, but the
    /// launcher of each is told that its start is over. Main thread; returns at once.
    virtual void requestFront(std::uint32_t window, const FrontOccasion& occasion) = 0;

    /// Calls `changed` whenever other windows begin or cease to cover all of the window. It counts
    /// as not occluded until that is known, and always where the desktop cannot report it; while it
    /// is not shown at all, nothing is reported. Main thread; returns at once.
    [[nodiscard]] virtual std::unique_ptr<Subscription>
    watchOcclusion(std::uint32_t window, std::function<void(bool isOccluded)> changed) = 0;
};

} // namespace kelpa
