// Whether the session's compositor is KWin, as the session bus knows it.
#pragma once

#include "model/Identifiers.h"

#include <QByteArray>

#include <chrono>
#include <optional>

namespace kelpa::kwin {

/// KWin's name on the session bus.
inline constexpr const char* busName = "org.kde.KWin";

/// Whether KWin is on the session bus; absent when that does not reply within the limit. Any thread
/// but the main one, or before there is an event loop.
std::optional<bool> isKwinThere(const QByteArray& busAddress, std::chrono::milliseconds limit);

/// Whether `listener`, the process that listens at the compositor's socket, is the KWin on the
/// session bus, or started it, as KWin's wrapper does, which keeps the socket while KWin restarts.
/// False as well for a KWin that does not reply, absent when the bus does not. There are four round
/// trips, each within the limit. Threads as above.
std::optional<bool> isKwinBehind(ProcessID listener, const QByteArray& busAddress,
                                 std::chrono::milliseconds limit);

} // namespace kelpa::kwin
