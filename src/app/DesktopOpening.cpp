#include "app/DesktopOpening.h"

#include "app/SessionReading.h"
#include "app/SwayDesktop.h"
#include "app/WindowlessDesktop.h"
#include "app/WlrDesktop.h"
#include "app/X11Desktop.h"
#include "platform/wayland/connection/Globals.h"
#include "platform/x11/connection/DisplayConnector.h"

#include <QFileInfo>

#include <chrono>

namespace kelpa {

namespace {

/// A compositor that is there replies within a few milliseconds. One that takes longer than this
/// would not show Kelpa's window either.
constexpr std::chrono::milliseconds compositorLimit{2000};

/// sway's IPC tells more than the protocols of its family do.
std::unique_ptr<Desktop> openWlrDesktop(Scheduler& scheduler, const QString& boardPath,
                                        const std::set<WindowID>& assigned)
{
    const QByteArray sway = swaySocket();
    if (!sway.isEmpty())
        return std::make_unique<SwayDesktop>(scheduler, sway, boardPath, assigned);
    return std::make_unique<WlrDesktop>(scheduler, compositorSocket(), boardPath, assigned);
}

} // namespace

std::optional<ChosenDesktop> chooseDesktop(const WindowSystem& system,
                                           std::optional<DesktopKind> asked)
{
    SessionOffer offer;
    if (needsCompositor(asked, system))
        offer.compositor = wayland::readGlobals(compositorSocket(), compositorLimit);
    if (needsX11Display(offer, asked, system))
        offer.hasX11Display = x11::hasDisplay(system.display);
    return chosenDesktop(offer, asked, system);
}

std::unique_ptr<Desktop> openDesktop(const ChosenDesktop& chosen, Scheduler& scheduler,
                                     const QString& boardPath, const std::set<WindowID>& assigned)
{
    switch (chosen.kind) {
    case DesktopKind::x11:
        return std::make_unique<X11Desktop>(scheduler, QFileInfo(boardPath).path(), assigned);
    case DesktopKind::wlr:
        return openWlrDesktop(scheduler, boardPath, assigned);
    case DesktopKind::none:
        return std::make_unique<WindowlessDesktop>(scheduler, chosen.gap);
    }
    return nullptr;
}

} // namespace kelpa
