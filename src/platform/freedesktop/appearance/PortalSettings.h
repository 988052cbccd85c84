// The settings of the desktop's settings portal for appearance, motion, contrast, text scale and
// the accent.
#pragma once

#include "platform/AccentSetting.h"
#include "platform/AppearanceSetting.h"
#include "platform/ContrastSetting.h"
#include "platform/MotionSetting.h"
#include "platform/TextScaleSetting.h"

#include <QString>
#include <QVariant>

#include <chrono>
#include <cstdint>
#include <memory>
#include <optional>

namespace kelpa {

class Scheduler;
class SettingsPortal;

/// Whether the settings of KDE are read that say what others say elsewhere, and count before those:
/// the size of the font, and the accent where the portal has none for all desktops. Only Plasma has
/// them in use; elsewhere they are those of a session that once was.
enum class KdeSettings : std::uint8_t { ignored, followed };

/// The portal is not called before the first subscription, and all subscriptions share one
/// connection.
class PortalSettings final : public AppearanceSetting,
                             public MotionSetting,
                             public TextScaleSetting,
                             public ContrastSetting,
                             public AccentSetting
{
public:
    /// `scheduler` outlives this object and its subscriptions.
    explicit PortalSettings(Scheduler& scheduler, KdeSettings kde = KdeSettings::ignored);

    [[nodiscard]] std::unique_ptr<Subscription>
    watchAppearance(std::function<void(std::optional<Appearance> preferred)> changed) override;

    /// Where several motion settings exist, animations are wanted when all of them want them.
    [[nodiscard]] std::unique_ptr<Subscription>
    watchAnimations(std::function<void(std::optional<bool> areWanted)> changed) override;

    [[nodiscard]] std::unique_ptr<Subscription>
    watchTextScale(std::function<void(std::optional<double> scale)> changed) override;

    /// Where several contrast settings exist, more contrast is wanted when one of them wants it.
    [[nodiscard]] std::unique_ptr<Subscription>
    watchContrast(std::function<void(std::optional<bool> isHigh)> changed) override;

    [[nodiscard]] std::unique_ptr<Subscription>
    watchAccent(std::function<void(std::optional<QColor> accent)> changed) override;

    /// Returns once the subscriptions have the portal's first answer, or there is none to come, at
    /// the latest after `limit`; at once without subscriptions. Main thread; runs the event loop
    /// meanwhile, without the person's input.
    void awaitSettings(std::chrono::milliseconds limit);

private:
    std::shared_ptr<SettingsPortal> portal();

    Scheduler& m_scheduler;
    const KdeSettings m_kde;
    /// Held by the subscriptions.
    std::weak_ptr<SettingsPortal> m_portal;
};

/// The portal's value of "org.freedesktop.appearance color-scheme": 1 is dark, 2 light, anything
/// else no preference.
std::optional<Appearance> appearanceFromColorScheme(const QVariant& value);

/// The portal's value of "org.freedesktop.appearance accent-color": red, green and blue from 0
/// to 1. With any other number there is none, as for a value of another type.
std::optional<QColor> accentFromPortal(const QVariant& value);

/// The portal's value of "org.gnome.desktop.interface text-scaling-factor": a number from 0.5 to 3,
/// as that schema limits it, anything else no preference.
std::optional<double> textScaleFromFactor(const QVariant& value);

} // namespace kelpa
