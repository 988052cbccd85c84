// An object on the session bus with one interface, whose methods are handled by whoever sets a
// handler, and the property "Version" where the interface has a version.
#pragma once

#include "platform/freedesktop/bus/BusQuestion.h"

#include <QDBusVirtualObject>
#include <QString>
#include <QVariant>

#include <atomic>
#include <functional>
#include <optional>
#include <variant>

namespace kelpa {

/// Lives on the main thread, where calls are handled.
class BusObject : public QDBusVirtualObject
{
    Q_OBJECT

public:
    using Answer = std::variant<QVariantList, BusError>;
    /// Sends the answer of one call; from any thread, once. Without an answer the caller waits for
    /// its own limit.
    using Respond = std::function<void(const Answer& answer)>;
    /// The arguments are those of the message, of whatever types it has.
    using Handler = std::function<void(const QString& method, const QVariantList& arguments,
                                       const Respond& respond)>;

    struct Description
    {
        QString path;
        QString interface;
        /// The interface's element of the introspection data.
        QString introspection;
        /// Absent: it has no property.
        std::optional<unsigned> version{};
    };

    explicit BusObject(Description description);

    /// Handles calls from now on; without one, they receive the error `unhandled`.
    void setHandler(Handler handler) { m_handler = std::move(handler); }
    void setUnhandled(BusError unhandled) { m_unhandled = std::move(unhandled); }

    /// Puts the object on the connection of that name, once. Any thread.
    bool registerOn(const QString& connection);
    /// Takes it from there. Main thread.
    void unregister();

    /// Emits a signal of the interface, where the object is on a connection. Main thread.
    void emitSignal(const QString& name, const QVariantList& arguments) const;

    QString introspect(const QString& path) const override;
    bool handleMessage(const QDBusMessage& message, const QDBusConnection& connection) override;

private:
    bool handleProperty(const QDBusMessage& message, const QDBusConnection& connection) const;

    const Description m_description;
    Handler m_handler;
    BusError m_unhandled;
    /// Set before `m_isRegistered`, never changed.
    QString m_connection;
    std::atomic<bool> m_isRegistered = false;
};

} // namespace kelpa
