// Where the session bus is.
#pragma once

#include <QByteArray>

namespace kelpa {

/// As the session says, or where it is by convention; empty when there is none. A bus that would
/// first have to be started is none.
QByteArray sessionBusAddress();

} // namespace kelpa
