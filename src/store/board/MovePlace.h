// Where something comes to stand, seen from what it is moved to.
#pragma once

#include <cstdint>

namespace kelpa {

/// Immediately before it, or immediately behind it.
enum class MovePlace : std::uint8_t { before, behind };

} // namespace kelpa
