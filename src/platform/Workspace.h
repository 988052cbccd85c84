// Opens URLs, and folders as URLs of local files, with the desktop's applications.
#pragma once

#include "platform/Scheduler.h"

#include <QUrl>

#include <functional>

namespace kelpa {

class Workspace
{
public:
    virtual ~Workspace() = default;

    /// Calls `found` on the main thread with whether `requestOpen` can open such a URL, unless the
    /// handle is destroyed before. Main thread; returns at once.
    [[nodiscard]] virtual TaskHandle findOpener(const QUrl& url,
                                                std::function<void(bool isThere)> found) = 0;

    /// Opens `url` with the desktop's application for it; of a folder that is missing, the nearest
    /// one above. Main thread; returns at once.
    virtual void requestOpen(const QUrl& url) = 0;
};

} // namespace kelpa
