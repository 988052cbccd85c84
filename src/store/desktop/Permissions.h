// The permissions of the desktop that discovery and previews depend on, and what is in the way of
// those that are missing.
#pragma once

#include "platform/Obstacle.h"
#include "platform/Platform.h"
#include "platform/Scheduler.h"

#include <functional>
#include <optional>

namespace kelpa {

struct Obstacles
{
    /// Absent while the permission is granted, and while the desktop has not been asked yet.
    std::optional<Obstacle> accessibility;
    std::optional<Obstacle> screenCapture;
    /// The desktop has settings for permissions, which `Permissions::request` opens.
    bool hasSettings = false;

    friend bool operator==(const Obstacles&, const Obstacles&) = default;
};

/// Main thread.
class Permissions
{
public:
    struct Granted
    {
        bool accessibility = false;
        bool screenCapture = false;
    };

    /// The members of `platform` outlive this. `settingsFound` is called when
    /// `Obstacles::hasSettings` may have changed.
    Permissions(const Platform& platform, std::function<void()> settingsFound);

    Granted granted() const;
    /// Asks the desktop for both, and opens the settings that grant a missing one; those of
    /// accessibility when screen capture is granted.
    Granted request();
    /// Looks for settings whenever something begins to be missing.
    Obstacles obstacles(const Granted& granted);

private:
    const Platform m_platform;
    const std::function<void()> m_settingsFound;
    bool m_isAnythingMissing = false;
    bool m_hasSettings = false;
    TaskHandle m_search;
};

} // namespace kelpa
