// How long a pass over the windows may still show them as they were before a request.
#pragma once

#include <cstdint>

namespace kelpa {

/// Whether the desktop was asked for all that Kelpa wants of it when a pass has listed the windows.
enum class SentRequests : std::uint8_t { underWay, sent };

/// Passes after the requests were sent that may not show their effect yet: the first may have begun
/// before the desktop was asked, and the others give it time.
inline constexpr int passesToWait = 2;

} // namespace kelpa
