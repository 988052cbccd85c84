// Notifications that only remember what they show.
#pragma once

#include "platform/Notifications.h"

#include <QString>

#include <functional>

namespace kelpa::test {

class RecordedNotifications : public Notifications
{
public:
    void show(const Notification& notification) override
    {
        shown = notification.summary + QStringLiteral(": ") + notification.body;
        actionText = notification.actionText;
        act = notification.act;
        ++count;
    }
    void withdraw() override { shown.clear(); }

    /// What is shown now; empty for nothing.
    QString shown;
    /// The button of the last one.
    QString actionText;
    std::function<void()> act;
    int count = 0;
};

} // namespace kelpa::test
