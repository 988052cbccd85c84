// Finds the bus of the input method IBus, which the toolkit connects to like to the session bus.
#pragma once

#include <QByteArray>
#include <QString>

namespace kelpa {

/// Where the daemon of a display writes its address, as a file name with a wildcard for the
/// machine's id. `display` and `waylandDisplay` are the variables DISPLAY and WAYLAND_DISPLAY.
QString ibusFileName(const QByteArray& display, const QByteArray& waylandDisplay);

/// The D-Bus address in the text of such a file; empty without one.
QByteArray ibusAddressFromText(const QByteArray& text);

/// The address that the toolkit connects to in this environment; empty where it does not use IBus.
QByteArray ibusAddress();

} // namespace kelpa
