// The startup notification protocol, by which a launcher and the program it starts show a busy
// pointer until the program's window is there.
#pragma once

#include <QByteArray>

#include <cstdint>
#include <optional>

namespace kelpa::x11 {

class DisplayConnection;

/// When the person asked for the start, on the server's clock: a startup id ends in "_TIME" and the
/// timestamp. Absent without one, and for the timestamp 0, which means none.
std::optional<std::uint32_t> startupTime(const QByteArray& startupID);

/// Broadcasts that the start with this id is complete, so that the launcher's busy pointer ends.
/// An id that no launcher would give is not broadcast.
void announceStartupComplete(DisplayConnection& display, const QByteArray& startupID);

} // namespace kelpa::x11
