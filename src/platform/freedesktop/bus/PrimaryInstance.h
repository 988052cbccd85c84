// Activates the primary instance, the one that already runs, by its name on the session bus.
#pragma once

#include <QByteArray>
#include <QString>

#include <chrono>
#include <cstdint>

namespace kelpa {

enum class InstanceActivation : std::uint8_t {
    /// It has handled the request and comes forward.
    activated,
    /// Nobody owns the bus name, or there is no bus.
    notRunning,
    /// It ended before it replied.
    ended,
    /// It runs and did not reply in time.
    timedOut,
    /// `interruption` became readable first.
    interrupted,
    /// The owner of the name runs another executable: it is no Kelpa.
    foreign,
};

/// Activates the owner of the bus name (org.freedesktop.Application), unless it is known to run
/// another executable than that of the name `executable`, empty for any; never starts it. Waits, at
/// most a little longer than `limit`; not on a thread that runs an event loop. `startupID` is the
/// startup id or activation token that a launcher gave to this start, empty without one. Returns
/// early once the file descriptor `interruption` is readable, without reading it; -1 for none.
/// `action` is what it is to do instead of coming forward, empty for that.
InstanceActivation activatePrimaryInstance(const QByteArray& busName, const QByteArray& startupID,
                                           std::chrono::milliseconds limit, int interruption = -1,
                                           const QString& executable = {},
                                           const QByteArray& action = {});

} // namespace kelpa
