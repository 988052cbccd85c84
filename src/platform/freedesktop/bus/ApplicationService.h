// Implements org.freedesktop.Application, by which others on the session bus find this program and
// activate it.
#pragma once

#include <QByteArray>
#include <QDBusVirtualObject>
#include <QString>

#include <cstdint>
#include <functional>

namespace kelpa {

enum class NameClaim : std::uint8_t { owned, takenByAnother, noBus };

/// What to do about a name that another program owns.
enum class NameQueue : std::uint8_t {
    leave,
    /// Wait for it: the bus gives it to this program when nobody before it in the queue has it any
    /// more.
    join,
};

/// Lives on the main thread, where requests are handled; the caller receives its reply afterwards.
class ApplicationService : public QDBusVirtualObject
{
public:
    /// `activate` brings the program forward; it receives the startup id of the request, empty
    /// without one. `busName` is the well-known name to own.
    ApplicationService(QString busName, std::function<void(const QByteArray&)> activate);
    ~ApplicationService() override;

    /// Connects to the bus and takes the name, unless another program owns it. Waits for the bus;
    /// any thread, but one call after the other. The process owns the name until it ends, so that a
    /// start in the meantime waits for that end.
    NameClaim claim(NameQueue queue);

    QString introspect(const QString& path) const override;
    bool handleMessage(const QDBusMessage& message, const QDBusConnection& connection) override;

private:
    const QString m_busName;
    const std::function<void(const QByteArray&)> m_activate;
    bool m_isRegistered = false;
};

} // namespace kelpa
