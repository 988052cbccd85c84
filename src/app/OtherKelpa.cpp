#include "app/OtherKelpa.h"

#include "app/desktops/SessionReading.h"
#include "platform/Scheduler.h"
#include "platform/wayland/sway/SwayCommands.h"
#include "platform/x11/actions/EwmhPager.h"

#include <QGuiApplication>

#include <chrono>
#include <memory>

namespace kelpa {

namespace {

/// A busy window manager needs a part of a second.
constexpr std::chrono::milliseconds replyLimit{3000};

bool bringForwardInSway(const QByteArray& socket, ProcessID process)
{
    return wayland::SwayCommands(socket).focusLatest(process);
}

bool bringForwardOnX11(ProcessID process)
{
    const auto noNumbers = [](WindowID) -> std::optional<std::uint32_t> { return {}; };
    x11::EwmhPager pager(std::make_shared<x11::DisplayConnector>(QByteArray()), noNumbers);
    return pager.activateTopmost(process);
}

} // namespace

bool bringForward(std::optional<qint64> process, DesktopKind desktop, Scheduler& scheduler)
{
    const QByteArray sway = desktop == DesktopKind::wlr ? swaySocket() : QByteArray();
    const bool isOnX11 =
        desktop == DesktopKind::x11 || QGuiApplication::platformName() == QStringLiteral("xcb");
    if (!process || (sway.isEmpty() && !isOnX11))
        return false;
    const auto isForward = std::make_shared<bool>(false);
    const TaskHandle task = scheduler.inBackgroundAndWait(
        replyLimit,
        [number = static_cast<ProcessID>(*process), sway](const std::stop_token&) {
            return sway.isEmpty() ? bringForwardOnX11(number) : bringForwardInSway(sway, number);
        },
        [isForward](bool isActivated) { *isForward = isActivated; });
    return *isForward;
}

} // namespace kelpa
