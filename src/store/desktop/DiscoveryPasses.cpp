#include "store/desktop/DiscoveryPasses.h"

#include "platform/LoggingCategories.h"

#include <chrono>
#include <memory>
#include <utility>

namespace kelpa {

namespace {

using namespace std::chrono_literals;

/// How long `runNow` may keep the main thread waiting: less than a frame at 60 Hz (16.7 ms), and a
/// little more than a pass over two hundred windows takes on X11 (10 ms).
constexpr Scheduler::Duration waitLimit = 12ms;

/// The work of one pass, off the main thread.
auto passOver(WindowServer& server, ProcessID ownProcess, DiscoveryPasses::ReadAccess access)
{
    return [&server, ownProcess, access](const std::stop_token&) {
        const auto begin = std::chrono::steady_clock::now();
        // Opened without access too: that is how the platform learns whether access is granted.
        const std::unique_ptr<DiscoverySource> source = server.openDiscoverySource();
        if (access == DiscoveryPasses::ReadAccess::denied)
            return WindowDiscoveryBatch{};
        WindowDiscoveryBatch batch{WindowDiscovery::visibleWindows(*source, ownProcess),
                                   source->virtualDesktops(), source->unofferedDesktops(),
                                   source->desktopIDs()};
        const std::chrono::duration<double, std::milli> taken =
            std::chrono::steady_clock::now() - begin;
        qCDebug(logStore, "a pass listed %lld windows in %.2f ms", qlonglong(batch.windows.size()),
                taken.count());
        return batch;
    };
}

} // namespace

DiscoveryPasses::DiscoveryPasses(WindowServer& server, const Applications& applications,
                                 Scheduler& scheduler, Finished finished, RerunDue rerunDue)
    : m_server(server), m_applications(applications), m_finished(std::move(finished)),
      m_rerunDue(std::move(rerunDue)), m_pass(scheduler)
{}

void DiscoveryPasses::runNow()
{
    cancel();
    if (isUnderWay()) {
        requestRerun();
        m_rerunPriority = WorkPriority::normal;
        return;
    }
    m_pass.startAndWait(
        waitLimit, passOver(m_server, m_applications.currentProcess(), ReadAccess::granted),
        [this](const std::optional<WindowDiscoveryBatch>& batch) { finish(batch); });
}

void DiscoveryPasses::runInBackground(ReadAccess access, WorkPriority priority)
{
    m_pass.start(
        passOver(m_server, m_applications.currentProcess(), access),
        [this](const std::optional<WindowDiscoveryBatch>& batch) { finish(batch); }, priority);
}

void DiscoveryPasses::cancel()
{
    m_pass.discard();
    m_isRerunRequested = false;
}

void DiscoveryPasses::finish(const std::optional<WindowDiscoveryBatch>& batch)
{
    const bool isRerunDue = std::exchange(m_isRerunRequested, false);
    const WorkPriority priority = std::exchange(m_rerunPriority, WorkPriority::utility);
    if (batch)
        m_finished(*batch);
    if (isRerunDue)
        m_rerunDue(priority);
}

} // namespace kelpa
