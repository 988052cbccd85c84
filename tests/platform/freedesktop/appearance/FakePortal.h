// A settings portal that has the settings that a test gives it.
#pragma once

#include <QDBusConnection>
#include <QDBusContext>
#include <QDBusVariant>
#include <QHash>
#include <QObject>
#include <QString>
#include <QVariant>

namespace kelpa::test {

class FakePortal : public QObject, protected QDBusContext
{
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.portal.Settings")

public:
    FakePortal()
    {
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

public Q_SLOTS:
    QDBusVariant Read(const QString& space, const QString& key)
    {
        ++readCount;
        const QString both = space + u'/' + key;
        if (!m_values.contains(both)) {
            sendErrorReply(QStringLiteral("org.freedesktop.portal.Error.NotFound"));
            return {};
        }
        // As portals do, a value within a value.
        return QDBusVariant(QVariant::fromValue(QDBusVariant(m_values.value(both))));
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
