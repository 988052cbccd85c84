// Asks a program on the session bus one thing and waits for the reply, for a process that does
// nothing else meanwhile.
#pragma once

#include <QByteArray>
#include <QString>
#include <QVariant>

#include <chrono>
#include <cstdint>
#include <variant>

namespace kelpa {

/// An error that came back instead of a reply, with its name on the bus.
struct BusError
{
    QString name;
    QString message;

    friend bool operator==(const BusError&, const BusError&) = default;
};

enum class BusSilence : std::uint8_t {
    /// There is no bus, or it does not let this process connect, or not in time.
    noBus,
    /// Nobody has the name.
    noOwner,
    /// No reply came in time, or the connection has gone.
    noReply,
};

struct BusQuestion
{
    QByteArray busName;
    QByteArray path;
    QByteArray interface;
    QByteArray method;
    /// Texts, Booleans and unsigned numbers.
    QVariantList arguments;
};

/// The arguments of the reply: texts, Booleans, numbers of 32 bits, QStringList, QVariantMap and
/// QList<QVariantMap>; a value of any other type is invalid.
using BusAnswer = std::variant<QVariantList, BusError, BusSilence>;

/// Never starts a service. Waits at most a little longer than `limit`; not on a thread that runs an
/// event loop.
BusAnswer askOnSessionBus(const BusQuestion& question, std::chrono::milliseconds limit);

} // namespace kelpa
