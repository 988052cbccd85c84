// The desktop's way to open things.
#pragma once

#include <QUrl>

namespace kelpa {

class Workspace
{
public:
    virtual ~Workspace() = default;

    /// Whether the desktop has settings in which a person grants this program what it asks for, so
    /// that `requestOpen` opens them. Main thread; the same answer all the time.
    virtual bool hasPermissionSettings() const = 0;

    /// Asks the desktop to open `url` with the application for it. Main thread; returns at once.
    virtual void requestOpen(const QUrl& url) = 0;
};

} // namespace kelpa
