#include "store/desktop/DesktopObservation.h"

#include "store/desktop/PreviewCaptures.h"

#include <chrono>
#include <utility>

namespace kelpa {

namespace {

using namespace std::chrono_literals;

/// How often a discovery pass runs when the window server reports no change.
constexpr Scheduler::Duration refreshInterval = 2s;

} // namespace

DesktopObservation::DesktopObservation(WindowServer& server, Scheduler& scheduler,
                                       Handlers handlers)
    : m_refreshTimer(scheduler.repeat(refreshInterval, std::move(handlers.refresh))),
      m_previewTimer(
          scheduler.repeat(PreviewCaptures::interval, std::move(handlers.refreshPreviews))),
      m_windowWatch(server.watchWindows(std::move(handlers.windowsChanged)))
{}

} // namespace kelpa
