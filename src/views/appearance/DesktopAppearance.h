// Follows the desktop's settings for light or dark, motion, contrast, the size of texts and the
// accent colour.
#pragma once

#include "platform/Subscription.h"
#include "views/appearance/AppearanceResolution.h"

#include <QObject>

#include <memory>
#include <optional>
#include <vector>

namespace kelpa {

class AccentSetting;
class AppearanceSetting;
class ContrastSetting;
class MotionSetting;
class TextScaleSetting;
class ViewSettings;

/// Keeps the view settings equal to the desktop's settings, and the appearance to the palette's
/// window colour where the settings name none. Main thread.
class DesktopAppearance : public QObject
{
    Q_OBJECT

public:
    /// Sets the known values at once. A value that is passed here is fixed and does not follow the
    /// desktop. `settings` outlives the object.
    DesktopAppearance(ViewSettings& settings, std::optional<Appearance> appearance,
                      std::optional<bool> isReducingMotion);
    ~DesktopAppearance() override;

    /// Follows a setting of the desktop, unless its value is fixed. There may be several of motion.
    void followAppearance(AppearanceSetting& setting);
    void followMotion(MotionSetting& setting);
    void followTextScale(TextScaleSetting& setting);
    void followContrast(ContrastSetting& setting);
    void followAccent(AccentSetting& setting);

    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void update();

    ViewSettings& m_settings;
    AppearanceResolution m_sources;
    std::vector<std::unique_ptr<Subscription>> m_subscriptions;
};

} // namespace kelpa
