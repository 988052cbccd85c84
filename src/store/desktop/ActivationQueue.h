// Brings windows of other applications to the front, one request after the other.
#pragma once

#include "model/WindowItem.h"
#include "platform/Accessibility.h"
#include "platform/Applications.h"
#include "platform/Scheduler.h"

#include <QList>

namespace kelpa {

/// Main thread; the requests themselves run in the background.
class ActivationQueue
{
public:
    /// What it is given outlives it; a request may use `applications` and `accessibility` for as
    /// long as `Scheduler` says.
    ActivationQueue(Applications& applications, Accessibility& accessibility, Scheduler& scheduler);

    /// All of them, the last one foremost, after those that were asked for before.
    void append(const QList<WindowItem>& windows);

private:
    void startNext();

    Applications& m_applications;
    Accessibility& m_accessibility;
    Scheduler& m_scheduler;
    QList<QList<WindowItem>> m_waiting;
    TaskHandle m_request;
};

} // namespace kelpa
