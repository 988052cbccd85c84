#include "app/desktops/SessionServices.h"

#include "platform/freedesktop/applications/DesktopEntryFile.h"

#include <QIcon>

namespace kelpa {

SessionServices::SessionServices(Scheduler& scheduler)
    : entries(applicationDataDirectories()), icons(entries, QIcon::themeName()), launcher(entries),
      workspace(scheduler), portal(scheduler), notifications(scheduler)
{}

} // namespace kelpa
