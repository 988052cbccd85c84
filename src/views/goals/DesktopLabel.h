// What the board calls a virtual desktop.
#pragma once

#include <QString>

namespace kelpa {

class WindowStore;

/// The name of the desktop with that number, from 1, in a single line; its number where it has no
/// name, or is not there, which it then says. Until the desktops are known, it counts as there.
QString desktopLabel(const WindowStore& store, int number);

} // namespace kelpa
