// A settings portal that has the settings that a test gives it.
#pragma once

#include <QDBusConnection>
#include <QDBusContext>
#include <QDBusMetaType>
#include <QDBusVariant>
#include <QHash>
#include <QMap>
#include <QObject>
#include <QString>
#include <QStringList>
#include <QVariant>

#include <utility>

namespace kelpa::test {

/// By namespace and key.
using PortalSettingsBySpace = QMap<QString, QVariantMap>;

class FakePortal : public QObject, protected QDBusContext
{
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.portal.Settings")

public:
    /// Has the values, by namespace and key, before it is on the bus.
    explicit FakePortal(QHash<QString, QVariant> values = {}) : m_values(std::move(values))
    {
        qDBusRegisterMetaType<PortalSettingsBySpace>();
        m_connection.registerObject(QStringLiteral("/org/freedesktop/portal/desktop"), this,
                                    QDBusConnection::ExportAllSlots |
                                        QDBusConnection::ExportAllSignals);
        m_isOnBus = m_connection.registerService(QStringLiteral("org.freedesktop.portal.Desktop"));
    }
    ~FakePortal() override { QDBusConnection::disconnectFromBus(QStringLiteral("fake-portal")); }

    bool isOnBus() const { return m_isOnBus; }

    /// Without reporting it.
    void put(const QString& key, const QVariant& value) { m_values.insert(key, value); }
    void drop(const QString& key) { m_values.remove(key); }

    void set(const QString& key, const QVariant& value)
    {
        put(key, value);
        const auto dot = key.lastIndexOf(u'/');
        Q_EMIT SettingChanged(key.first(dot), key.sliced(dot + 1), QDBusVariant(value));
    }

    int readCount = 0;
    /// Whether calls stay unanswered.
    bool isHanging = false;

public Q_SLOTS:
    PortalSettingsBySpace ReadAll(const QStringList& spaces)
    {
        ++readCount;
        if (isHanging)
            setDelayedReply(true);
        PortalSettingsBySpace all;
        for (auto each = m_values.cbegin(); each != m_values.cend(); ++each) {
            const auto dot = each.key().lastIndexOf(u'/');
            if (spaces.contains(each.key().first(dot)))
                all[each.key().first(dot)].insert(each.key().sliced(dot + 1), each.value());
        }
        return all;
    }

Q_SIGNALS:
    void SettingChanged(const QString& space, const QString& key, const QDBusVariant& value);

private:
    QDBusConnection m_connection =
        QDBusConnection::connectToBus(QDBusConnection::SessionBus, QStringLiteral("fake-portal"));
    QHash<QString, QVariant> m_values;
    bool m_isOnBus = false;
};

} // namespace kelpa::test
