// What a launcher tells a program that it starts, and what the program tells the desktop when it
// has started.
#pragma once

#include <QByteArray>

#include <cstdint>
#include <optional>

namespace kelpa::x11 {

class DisplayConnection;

/// When the person asked for the start, on the server's clock: a startup id ends in "_TIME" and
/// that. Absent without it, and for a time of 0, which is none.
std::optional<std::uint32_t> startupTime(const QByteArray& startupID);

/// Tells everybody that the start with this id is over, so that the launcher's busy pointer ends.
/// An id that no launcher would give is not passed on.
void announceStartupEnd(DisplayConnection& link, const QByteArray& startupID);

} // namespace kelpa::x11
