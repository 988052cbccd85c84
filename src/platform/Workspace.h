// The desktop's way to open things.
#pragma once

#include <QUrl>

namespace kelpa {

class Workspace
{
public:
    virtual ~Workspace() = default;

    /// Asks the desktop to open `url` with the application for it. Main thread; returns at once.
    virtual void requestOpen(const QUrl& url) = 0;
};

} // namespace kelpa
