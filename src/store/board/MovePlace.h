// On which side of its target a moved item is inserted.
#pragma once

#include <cstdint>

namespace kelpa {

/// Immediately before the target, or immediately behind it.
enum class MovePlace : std::uint8_t { before, behind };

} // namespace kelpa
