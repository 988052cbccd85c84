// How much text a field takes.
#pragma once

#include <QtGlobal>

namespace kelpa {

/// The longest text that a field takes, in UTF-16 units: some twenty pages. A field lays all of it
/// out at every keystroke, which takes a frame or two at this length.
inline constexpr qsizetype longestFieldText = 50'000;

} // namespace kelpa
