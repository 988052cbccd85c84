// The appearance and the motion setting of the desktop's settings portal.
#pragma once

#include "platform/AppearanceSetting.h"
#include "platform/MotionSetting.h"

#include <QString>
#include <QVariant>

#include <memory>
#include <optional>

namespace kelpa {

class Scheduler;
class SettingsPortal;

/// The portal is not called before the first subscription, and all subscriptions share one
/// connection.
class PortalSettings final : public AppearanceSetting, public MotionSetting
{
public:
    /// `scheduler` outlives this object and its subscriptions.
    explicit PortalSettings(Scheduler& scheduler);

    [[nodiscard]] std::unique_ptr<Subscription>
    watchAppearance(std::function<void(std::optional<Appearance> preferred)> changed) override;

    /// Where several motion settings exist, animations are wanted when all of them want them.
    [[nodiscard]] std::unique_ptr<Subscription>
    watchAnimations(std::function<void(std::optional<bool> areWanted)> changed) override;

private:
    std::shared_ptr<SettingsPortal> portal();

    Scheduler& m_scheduler;
    /// Held by the subscriptions.
    std::weak_ptr<SettingsPortal> m_portal;
};

/// The portal's value of "org.freedesktop.appearance color-scheme": 1 is dark, 2 light, anything
/// else no preference.
std::optional<Appearance> appearanceFromColorScheme(const QVariant& value);

} // namespace kelpa
