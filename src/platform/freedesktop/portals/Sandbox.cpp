#include "platform/freedesktop/portals/Sandbox.h"

#include <QFileInfo>

namespace kelpa {

bool isSandboxed(const SandboxSigns& signs)
{
    return QFileInfo::exists(signs.flatpakInfo) ||
           (signs.snap.startsWith(u'/') && signs.program.startsWith(signs.snap + u'/'));
}

} // namespace kelpa
