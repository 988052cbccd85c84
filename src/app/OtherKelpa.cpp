#include "app/OtherKelpa.h"

#include "platform/Scheduler.h"
#include "platform/x11/actions/EwmhPager.h"

#include <chrono>
#include <memory>

namespace kelpa {

namespace {

/// A busy window manager needs a part of a second.
constexpr std::chrono::milliseconds replyLimit{3000};

} // namespace

bool bringForward(std::optional<qint64> process, Scheduler& scheduler)
{
    if (!process)
        return false;
    const auto isForward = std::make_shared<bool>(false);
    const TaskHandle task = scheduler.inBackgroundAndWait(
        replyLimit,
        [process](const std::stop_token&) {
            const auto noNumbers = [](WindowID) -> std::optional<std::uint32_t> { return {}; };
            x11::EwmhPager pager(std::make_shared<x11::DisplayConnector>(QByteArray()), noNumbers);
            return pager.activateTopmost(static_cast<ProcessID>(*process));
        },
        [isForward](bool isActivated) { *isForward = isActivated; });
    return *isForward;
}

} // namespace kelpa
