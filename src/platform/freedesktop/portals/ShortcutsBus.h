// The connection over which the portal of shortcuts is called: its calls, the signals that it
// sends, and the objects that it closes again.
#pragma once

#include <QDBusConnection>
#include <QDBusMessage>
#include <QString>
#include <QVariantMap>

#include <cstdint>

class QObject;

namespace kelpa {

/// The interfaces of what the portal opens for a caller.
QString portalRequestInterface();
QString portalSessionInterface();

/// A connection of its own to the session bus, closed when its last owner drops it. Slots of
/// receivers are as `SLOT` gives them, and are called on the receiver's thread.
class ShortcutsBus
{
public:
    /// Connects, which may take long: any thread but the main one.
    ShortcutsBus();
    ~ShortcutsBus();
    ShortcutsBus(const ShortcutsBus&) = delete;
    ShortcutsBus& operator=(const ShortcutsBus&) = delete;

    /// Any thread but the main one may use it, and the main one for what does not wait.
    QDBusConnection& connection() { return m_connection; }

    /// The path that a request of this connection will have.
    QString requestPath(const QString& token) const;

    /// `ownerChanged` receives the signal of the bus that another program has the portal's name,
    /// `disconnected` that the connection is lost.
    void followBus(QObject* receiver, const char* ownerChanged, const char* disconnected);
    /// `activated` and `changed` receive the portal's signals about keys.
    void followKeys(QObject* receiver, const char* activated, const char* changed);
    /// A signal of the object with that path, from whichever sender.
    void follow(const QString& path, const QString& interface, const QString& name,
                QObject* receiver, const char* slot);
    void unfollow(const QString& path, const QString& interface, const QString& name,
                  QObject* receiver, const char* slot);

    /// Closes the request or the session with that path; no reply is awaited.
    void close(const QString& path, const QString& interface);

private:
    const QString m_name;
    QDBusConnection m_connection;
};

/// Names a request or a session, and no other.
QString newPortalToken();
/// Names this program to portals that know it by its own word.
QDBusMessage portalRegistration();
QDBusMessage shortcutsVersionQuestion();
/// A call of one of the portal's methods for shortcuts.
QDBusMessage shortcutsCall(const QString& method);
/// Whether the signal tells of the bus itself that another program has a name.
bool isOwnerChange(const QDBusMessage& signal);

enum class PortalOutcome : std::uint8_t { given, cancelled, failed };

/// How a request has ended.
struct PortalResponse
{
    PortalOutcome outcome = PortalOutcome::given;
    QVariantMap results{};
};

/// A malformed one has no results.
PortalResponse portalResponse(const QDBusMessage& signal);
/// The path of the session in the results of a response; not checked.
QString sessionOf(const QVariantMap& results);

} // namespace kelpa
