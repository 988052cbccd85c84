// Opens URLs with the desktop's applications.
#pragma once

#include <QUrl>

namespace kelpa {

class Workspace
{
public:
    virtual ~Workspace() = default;

    /// Whether the desktop has settings in which a person grants this program its permissions, so
    /// that `requestOpen` can open them. Main thread; the result never changes.
    virtual bool hasPermissionSettings() const = 0;

    /// Opens `url` with the desktop's application for it. Main thread; returns at once.
    virtual void requestOpen(const QUrl& url) = 0;
};

} // namespace kelpa
