// Light or dark, and how much motion, as the desktop wants it.
#pragma once

#include "model/GoalAccent.h"
#include "platform/Scheduler.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QHash>
#include <QObject>
#include <QString>

#include <memory>
#include <optional>

class QDBusPendingCallWatcher;

namespace kelpa {

class ViewSettings;

/// Keeps the view settings as the desktop's settings portal tells, and the appearance as the
/// palette's window colour suggests where the portal has no say. Main thread, and never waits for
/// the portal.
class DesktopAppearance : public QObject
{
    Q_OBJECT

public:
    /// Sets what is known at once. What is given here is fixed and does not follow the desktop.
    /// `settings` outlives the object.
    DesktopAppearance(ViewSettings& settings, std::optional<Appearance> appearance,
                      std::optional<bool> isReducingMotion);
    ~DesktopAppearance() override;

    /// Asks the portal, and follows its changes from now on.
    void follow(Scheduler& scheduler);

    /// As a setting says that is none of the portal's, where there may be none; absent: it does
    /// not say.
    void setAnimationsWanted(std::optional<bool> areWanted);

    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    class Bus;

    void startListening(std::shared_ptr<Bus> bus);
    void ask(const QString& space, const QString& key);
    void apply(const QString& space, const QString& key, const QVariant& value);
    void update();
    void updateMotion();

private Q_SLOTS:
    void settingChanged(const QDBusMessage& message);

private:
    ViewSettings& m_settings;
    std::optional<Appearance> m_fixedAppearance;
    std::optional<bool> m_fixedMotion;
    /// What the portal said last; absent while it has no preference.
    std::optional<Appearance> m_portalAppearance;
    /// Whether motion is to be reduced, by each setting that tells.
    QHash<QString, bool> m_motionSettings;
    std::shared_ptr<Bus> m_bus;
    TaskHandle m_connecting;
};

/// Whether a value of the portal's setting "space key" asks for reduced motion; absent for a
/// setting that has nothing to do with motion, and for a value that is none of its own.
std::optional<bool> reducedMotionFromSetting(const QString& space, const QString& key,
                                             const QVariant& value);

/// What a person has set for Kelpa alone: "1" reduces motion and "0" does not, whatever the desktop
/// wants; absent for anything else.
std::optional<bool> reducedMotionFromText(const QByteArray& text);

/// The portal's value of "org.freedesktop.appearance color-scheme": 1 is dark, 2 light, anything
/// else no preference.
std::optional<Appearance> appearanceFromColorScheme(const QVariant& value);

} // namespace kelpa
