#include "store/desktop/ActivationQueue.h"

#include "windows/WindowActions.h"

namespace kelpa {

ActivationQueue::ActivationQueue(Applications& applications, Accessibility& accessibility,
                                 Scheduler& scheduler)
    : m_applications(applications), m_accessibility(accessibility), m_scheduler(scheduler)
{}

void ActivationQueue::append(const QList<WindowItem>& windows)
{
    m_waiting.append(windows);
    if (!m_request)
        startNext();
}

void ActivationQueue::startNext()
{
    if (m_waiting.isEmpty())
        return;
    // One request after the other, so that the last one ends up in front.
    m_request = m_scheduler.inBackground(
        [windows = m_waiting.takeFirst(), &applications = m_applications,
         &accessibility = m_accessibility](const std::stop_token&) {
            bringForward(windows, applications, accessibility);
            return Done{};
        },
        [this](Done) {
            m_request.reset();
            startNext();
        });
}

} // namespace kelpa
