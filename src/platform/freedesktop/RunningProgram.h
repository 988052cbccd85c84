// Bringing forward a program that runs already, by its name on the session bus.
#pragma once

#include <QByteArray>

#include <chrono>
#include <cstdint>

namespace kelpa {

enum class RunningAnswer : std::uint8_t {
    /// It has been asked and comes forward.
    comesForward,
    /// No such program runs, or there is no bus to find it on.
    notRunning,
    /// It ended while it was asked.
    ended,
    /// It runs and did not answer in time.
    silent,
};

/// Asks the program that has the bus name to come forward; never starts it. Waits, at most a little
/// longer than `limit`; not on a thread that runs an event loop. `startupID` is what a launcher
/// gave to this start, empty without one.
RunningAnswer askToComeForward(const QByteArray& busName, const QByteArray& startupID,
                               std::chrono::milliseconds limit);

} // namespace kelpa
