// Light or dark, and how much motion, as the desktop wants it.
#pragma once

#include "platform/Subscription.h"
#include "views/appearance/AppearanceResolution.h"

#include <QObject>

#include <memory>
#include <optional>
#include <vector>

namespace kelpa {

class AppearanceSetting;
class MotionSetting;
class ViewSettings;

/// Keeps the view settings as the desktop's settings say, and the appearance as the palette's
/// window colour suggests where these have no say. Main thread.
class DesktopAppearance : public QObject
{
    Q_OBJECT

public:
    /// Sets what is known at once. What is given here is fixed and does not follow the desktop.
    /// `settings` outlives the object.
    DesktopAppearance(ViewSettings& settings, std::optional<Appearance> appearance,
                      std::optional<bool> isReducingMotion);
    ~DesktopAppearance() override;

    /// Follows a setting of the desktop's, unless its value is fixed. There may be several
    /// of motion.
    void followAppearance(AppearanceSetting& setting);
    void followMotion(MotionSetting& setting);

    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void update();

    ViewSettings& m_settings;
    AppearanceResolution m_sources;
    std::vector<std::unique_ptr<Subscription>> m_subscriptions;
};

} // namespace kelpa
