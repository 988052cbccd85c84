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
    /// Nobody waits for the answer any longer.
    interrupted,
};

/// Asks the program that has the bus name to come forward; never starts it. Waits, at most a little
/// longer than `limit`; not on a thread that runs an event loop. `startupID` is what a launcher
/// gave to this start, empty without one. It ends early once the file `interruption` can be read,
/// which it does not read; -1 for none.
RunningAnswer askToComeForward(const QByteArray& busName, const QByteArray& startupID,
                               std::chrono::milliseconds limit, int interruption = -1);

} // namespace kelpa
