#include "store/desktop/ActivationQueue.h"

#include "windows/WindowActions.h"

namespace kelpa {

ActivationQueue::ActivationQueue(Applications& applications, Accessibility& accessibility,
                                 Scheduler& scheduler)
    : m_applications(applications), m_accessibility(accessibility), m_scheduler(scheduler)
{}

void ActivationQueue::enqueue(const QList<WindowItem>& windows)
{
    m_queue.append(windows);
    if (!m_activation)
        startNext();
}

void ActivationQueue::startNext()
{
    if (m_queue.isEmpty())
        return;
    // One after the other, so that the last window ends up topmost.
    m_activation = m_scheduler.inBackground(
        [windows = m_queue.takeFirst(), &applications = m_applications,
         &accessibility = m_accessibility](const std::stop_token&) {
            bringForward(windows, applications, accessibility);
            return Done{};
        },
        [this](Done) {
            m_activation.reset();
            startNext();
        });
}

} // namespace kelpa
