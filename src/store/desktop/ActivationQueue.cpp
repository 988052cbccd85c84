#include "store/desktop/ActivationQueue.h"

#include "windows/WindowActions.h"

#include <utility>

namespace kelpa {

ActivationQueue::ActivationQueue(Applications& applications, Accessibility& accessibility,
                                 Scheduler& scheduler)
    : m_applications(applications), m_accessibility(accessibility), m_queue(scheduler)
{}

void ActivationQueue::enqueue(const QList<WindowItem>& windows)
{
    // One after the other, so that the last window ends up topmost.
    m_queue.add(
        [windows, &applications = m_applications,
         &accessibility = m_accessibility](const std::stop_token&) {
            bringForward(windows, applications, accessibility);
            return Done{};
        },
        [](Done) {});
}

void ActivationQueue::enqueue(const WindowArrangement& arrangement, std::function<void()> sent)
{
    m_queue.add(
        [arrangement, &applications = m_applications,
         &accessibility = m_accessibility](const std::stop_token& stop) {
            arrange(arrangement, applications, accessibility, stop);
            return Done{};
        },
        [sent = std::move(sent)](Done) {
            if (sent)
                sent();
        });
}

void ActivationQueue::enqueue(const QList<DesktopMove>& moves)
{
    m_queue.add(
        [moves, &accessibility = m_accessibility](const std::stop_token& stop) {
            sendToDesktops(moves, accessibility, stop);
            return Done{};
        },
        [](Done) {});
}

} // namespace kelpa
