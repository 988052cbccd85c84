// Whether the disk has the board.
#pragma once

#include <cstdint>

namespace kelpa {

/// What has become of the latest changes.
enum class SaveProgress : std::uint8_t {
    saved,
    /// On their way to the disk, which has not replied within a frame.
    underWay,
    /// The disk has refused them, and they wait for the next attempt.
    refused,
};

} // namespace kelpa
