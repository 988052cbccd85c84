// A portal that shows nothing: what a person would do, and how the portal fails, is told by the
// test.
#pragma once

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusVirtualObject>
#include <QString>
#include <QStringList>
#include <QVariantMap>

#include <optional>

namespace kelpa::test {

/// On the session bus of the test, from a connection of its own.
class StandInPortal : public QDBusVirtualObject
{
public:
    StandInPortal();
    ~StandInPortal() override;

    bool isOnBus() const { return m_isOnBus; }
    QDBusConnection& connection() { return m_connection; }
    /// Gives the name up, as a portal that ends, and takes it again.
    void leave();
    void comeBack();

    /// The members of all calls but those of the bus's own interfaces.
    QStringList calls() const { return m_calls; }
    int count(const QString& member) const { return static_cast<int>(m_calls.count(member)); }
    /// The last call of a method that opens a request; that of `member`.
    QVariantList argumentsOf(const QString& member) const { return m_arguments.value(member); }
    QVariantMap optionsOf(const QString& member) const;
    void forgetCalls() { m_calls.clear(); }
    QString sender() const { return m_sender; }

    /// Responds to the last request.
    void respond(uint code, const QVariantMap& results);
    void respondWith(const QVariantList& arguments);
    void respondAt(const QString& path, const QVariantList& arguments);
    QString requestPath() const { return m_requestPath; }
    void emitSignal(const QString& path, const QString& interface, const QString& name,
                    const QVariantList& arguments);

    QString introspect(const QString& /*path*/) const override { return {}; }
    bool handleMessage(const QDBusMessage& message, const QDBusConnection& connection) override;

    /// Of methods that open a request.
    bool isHanging = false;
    bool isRefusing = false;
    bool isWrong = false;
    /// Instead of the path that the caller expects.
    QString ownPath;
    /// The version that each interface has; absent for none.
    std::optional<uint> version = 1U;

private:
    void answerRequest(const QDBusMessage& message, const QDBusConnection& connection);

    QDBusConnection m_connection;
    bool m_isOnBus = false;
    QStringList m_calls;
    QHash<QString, QVariantList> m_arguments;
    QString m_sender;
    QString m_requestPath;
};

} // namespace kelpa::test
