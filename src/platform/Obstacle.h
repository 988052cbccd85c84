// Why a desktop does not let Kelpa see or act on windows.
#pragma once

#include <cstdint>

namespace kelpa {

enum class Obstacle : std::uint8_t {
    /// The person has not given Kelpa the permission.
    permission,
    /// No window manager runs that lists windows and acts on them.
    windowManager,
    /// The X server has no Composite extension, by which it captures windows one by one.
    composite,
};

} // namespace kelpa
