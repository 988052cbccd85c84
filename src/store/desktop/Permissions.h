// The permissions of the desktop that discovery and previews depend on.
#pragma once

#include "platform/Platform.h"

namespace kelpa {

/// Main thread.
class Permissions
{
public:
    struct Granted
    {
        bool accessibility = false;
        bool screenCapture = false;
    };

    /// The members of `platform` outlive this.
    explicit Permissions(const Platform& platform) : m_platform(platform) {}

    Granted granted() const;
    /// Asks the desktop for both, and opens the settings that grant a missing one; those of
    /// accessibility when screen capture is granted.
    Granted request();
    /// Whether the desktop has the settings that `request` opens.
    bool hasSettings() const;

private:
    const Platform m_platform;
};

} // namespace kelpa
