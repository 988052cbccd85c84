// Where the session bus is, and this program on it.
#pragma once

#include <QByteArray>

namespace kelpa {

/// As the session says, or where it is by convention; empty when there is none. A bus that would
/// first have to be started is none.
QByteArray sessionBusAddress();

/// Where on its connection to that bus this program answers others.
inline constexpr const char* objectOfKelpa = "/org/kelpa/Kelpa";

} // namespace kelpa
