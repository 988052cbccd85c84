// Short messages of the desktop's, beside its windows.
#pragma once

#include <QString>

namespace kelpa {

/// Main thread; returns at once. Where the desktop shows no notifications, nothing happens.
class Notifications
{
public:
    virtual ~Notifications() = default;

    /// Shows a notification in place of the last one.
    virtual void show(const QString& summary, const QString& body) = 0;
    /// Takes it back; does nothing where none is shown.
    virtual void withdraw() = 0;
};

} // namespace kelpa
