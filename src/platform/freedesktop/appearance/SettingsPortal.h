// A client of the desktop's settings portal (org.freedesktop.portal.Settings).
#pragma once

#include "platform/Scheduler.h"

#include <QDBusMessage>
#include <QMap>
#include <QObject>
#include <QString>
#include <QStringList>
#include <QVariant>

#include <cstdint>
#include <memory>

namespace kelpa {

/// Values by namespace and key.
using SettingsBySpace = QMap<QString, QVariantMap>;

/// Whether what a portal tells is all that it has in the namespaces that were asked for, or only
/// what has changed.
enum class SettingsExtent : std::uint8_t { all, changes };

/// Main thread; waits for the portal in `await` only. Where the portal or the bus is missing, no
/// setting is received.
class SettingsPortal : public QObject
{
    Q_OBJECT

public:
    /// Connects to the session bus in the background; not while that is silent, which would keep
    /// the toolkit from every other bus. Reads the settings of the namespaces `spaces`, in one
    /// call, as soon as there is a connection, and again whenever another portal takes the name.
    /// `scheduler` outlives the object.
    SettingsPortal(Scheduler& scheduler, QStringList spaces);
    ~SettingsPortal() override;

    /// Has `received` emitted with all settings that the portal has now; without another call of
    /// the portal where the first one is still to be sent.
    void read();

    /// Returns once the first call has been answered or has failed, at the latest after `limit`.
    /// Runs the event loop meanwhile, without the person's input.
    void await(Scheduler::Duration limit);

Q_SIGNALS:
    void received(const kelpa::SettingsBySpace& settings, kelpa::SettingsExtent extent);
    /// A call has been answered, after `received`, or has failed.
    void answered();

private:
    class Bus;

    void startListening(std::shared_ptr<Bus> bus);
    void finishReading();

private Q_SLOTS:
    void settingChanged(const QDBusMessage& message);
    void ownerChanged(const QDBusMessage& message);

private:
    Scheduler& m_scheduler;
    const QStringList m_spaces;
    /// Absent until there is a connection.
    std::shared_ptr<Bus> m_bus;
    bool m_isAnswered = false;
    TaskHandle m_connecting;
};

} // namespace kelpa
