#include "store/desktop/DiscoveryPasses.h"

#include "windows/WindowDiscovery.h"

#include <chrono>
#include <memory>
#include <utility>

namespace kelpa {

namespace {

using namespace std::chrono_literals;

/// How long a look at once may keep the main thread waiting for the window server: less than a
/// frame, and twice what a pass over two hundred windows takes.
constexpr Scheduler::Duration waitLimit = 12ms;

} // namespace

DiscoveryPasses::DiscoveryPasses(WindowServer& server, const Applications& applications,
                                 Scheduler& scheduler, Finished finished)
    : m_server(server), m_applications(applications), m_scheduler(scheduler),
      m_finished(std::move(finished))
{}

void DiscoveryPasses::lookNow()
{
    cancel();
    m_look = m_scheduler.inBackgroundAwaiting(
        waitLimit,
        [&server = m_server, process = m_applications.currentProcess()](const std::stop_token&) {
            const std::unique_ptr<DiscoverySource> source = server.openDiscoverySource();
            return WindowDiscoveryBatch{WindowDiscovery::visibleWindows(*source, process)};
        },
        [this](const WindowDiscoveryBatch& batch) { finish(batch.windows); });
}

void DiscoveryPasses::lookInBackground(MayRead mayRead)
{
    m_look = m_scheduler.inBackground(
        [&server = m_server, mayRead,
         process = m_applications.currentProcess()](const std::stop_token&) {
            // The look itself tells the platform whether what it needs is there.
            const std::unique_ptr<DiscoverySource> source = server.openDiscoverySource();
            if (mayRead == MayRead::no)
                return WindowDiscoveryBatch{};
            return WindowDiscoveryBatch{WindowDiscovery::visibleWindows(*source, process)};
        },
        [this](const WindowDiscoveryBatch& batch) { finish(batch.windows); });
}

void DiscoveryPasses::cancel()
{
    m_look.reset();
    m_hasMissedChange = false;
}

bool DiscoveryPasses::takeMissedChange()
{
    return std::exchange(m_hasMissedChange, false);
}

void DiscoveryPasses::finish(const QList<WindowItem>& windows)
{
    m_look.reset();
    m_finished(windows);
}

} // namespace kelpa
