// XSETTINGS: the settings that a desktop's settings manager publishes on the display.
#pragma once

#include "platform/MotionSetting.h"
#include "platform/Scheduler.h"
#include "platform/x11/connection/DisplayConnector.h"

#include <QByteArrayView>

#include <cstdint>
#include <memory>
#include <optional>

namespace kelpa::x11 {

/// Parses the integer setting `name` out of a settings manager's property. Absent when there is
/// none, or when the property, which any client may have written, is malformed.
std::optional<std::int32_t> settingsInteger(QByteArrayView property, QByteArrayView name);

/// The setting "Gtk/EnableAnimations".
class X11MotionSetting : public MotionSetting
{
public:
    /// `scheduler` outlives this object and its subscriptions.
    X11MotionSetting(std::shared_ptr<DisplayConnector> connector, Scheduler& scheduler);

    [[nodiscard]] std::unique_ptr<Subscription>
    watchAnimations(std::function<void(std::optional<bool> areWanted)> changed) override;

private:
    const std::shared_ptr<DisplayConnector> m_connector;
    Scheduler& m_scheduler;
};

} // namespace kelpa::x11
