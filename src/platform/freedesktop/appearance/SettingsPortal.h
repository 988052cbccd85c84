// The portal through which a desktop tells programs of the person's settings.
#pragma once

#include "platform/Scheduler.h"

#include <QDBusMessage>
#include <QObject>
#include <QString>
#include <QVariant>

#include <memory>
#include <utility>
#include <vector>

namespace kelpa {

/// Main thread, and never waits for the portal nor for the bus. Where one of them is missing,
/// nothing is told.
class SettingsPortal : public QObject
{
    Q_OBJECT

public:
    /// Connects to the session bus in the background. `scheduler` outlives the object.
    explicit SettingsPortal(Scheduler& scheduler);
    ~SettingsPortal() override;

    /// Asks for the setting "space key", also before there is a connection: `told` has the answer.
    /// None comes where there is no such setting.
    void ask(const QString& space, const QString& key);

Q_SIGNALS:
    /// A setting that was asked for, or any that has changed.
    void told(const QString& space, const QString& key, const QVariant& value);

private:
    class Bus;

    void startListening(std::shared_ptr<Bus> bus);
    void send(const QString& space, const QString& key);

private Q_SLOTS:
    void settingChanged(const QDBusMessage& message);

private:
    /// Absent until there is a connection.
    std::shared_ptr<Bus> m_bus;
    /// What was asked for before that, as space and key.
    std::vector<std::pair<QString, QString>> m_unsent;
    TaskHandle m_connecting;
};

} // namespace kelpa
