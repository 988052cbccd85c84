#include "platform/freedesktop/portals/Sandbox.h"

#include <QFileInfo>

namespace kelpa {

Sandbox sandboxOf(const SandboxSigns& signs)
{
    if (QFileInfo::exists(signs.flatpakInfo))
        return Sandbox::flatpak;
    return signs.snap.startsWith(u'/') && signs.program.startsWith(signs.snap + u'/')
               ? Sandbox::snap
               : Sandbox::none;
}

} // namespace kelpa
