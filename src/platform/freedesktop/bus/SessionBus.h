// The address of the session bus, and of this program on it.
#pragma once

#include <QByteArray>

namespace kelpa {

/// From the environment, or the conventional address; empty when there is none. A bus that would
/// have to be started first does not count.
QByteArray sessionBusAddress();

/// The object path of this program on the session bus.
inline constexpr const char* objectOfKelpa = "/org/kelpa/Kelpa";

} // namespace kelpa
