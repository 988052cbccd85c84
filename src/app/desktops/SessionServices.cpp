#include "app/desktops/SessionServices.h"

#include "platform/freedesktop/applications/DesktopEntryFile.h"

#include <QIcon>

namespace kelpa {

SessionServices::SessionServices(Scheduler& scheduler, KdeSettings kde)
    : entries(applicationDataDirectories()), icons(entries, QIcon::themeName()), launcher(entries),
      workspace(scheduler), portal(scheduler, kde), notifications(scheduler)
{}

} // namespace kelpa
