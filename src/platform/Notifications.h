// Short messages of the desktop's, beside its windows.
#pragma once

#include <QString>

#include <functional>

namespace kelpa {

struct Notification
{
    QString summary;
    QString body;
    /// What its button says; empty for no button.
    QString actionText{};
    /// Called on the main thread when the person presses the button.
    std::function<void()> act{};
};

/// Main thread; returns at once. Where the desktop shows no notifications, nothing happens.
class Notifications
{
public:
    virtual ~Notifications() = default;

    /// Shows a notification in place of the last one.
    virtual void show(const Notification& notification) = 0;
    /// Takes it back; does nothing where none is shown.
    virtual void withdraw() = 0;
};

} // namespace kelpa
