// A client of the desktop's settings portal (org.freedesktop.portal.Settings).
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

/// Main thread; never waits for the portal or the bus. Where one of them is missing, no setting is
/// received.
class SettingsPortal : public QObject
{
    Q_OBJECT

public:
    /// Connects to the session bus in the background; not while that is silent, which would keep
    /// the toolkit from every other bus. `scheduler` outlives the object.
    explicit SettingsPortal(Scheduler& scheduler);
    ~SettingsPortal() override;

    /// Reads the setting `key` of namespace `space`, as soon as there is a connection; `received`
    /// gives its value, an invalid one where the portal says that there is no such setting.
    void read(const QString& space, const QString& key);

Q_SIGNALS:
    /// The value of a setting that was read, or of any that has changed.
    void received(const QString& space, const QString& key, const QVariant& value);

private:
    class Bus;

    void startListening(std::shared_ptr<Bus> bus);
    void send(const QString& space, const QString& key);

private Q_SLOTS:
    void settingChanged(const QDBusMessage& message);

private:
    /// Absent until there is a connection.
    std::shared_ptr<Bus> m_bus;
    /// The settings to read once there is one, as space and key.
    std::vector<std::pair<QString, QString>> m_unsent;
    TaskHandle m_connecting;
};

} // namespace kelpa
