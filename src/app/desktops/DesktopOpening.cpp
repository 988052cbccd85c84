#include "app/desktops/DesktopOpening.h"

#include "app/desktops/GnomeDesktop.h"
#include "app/desktops/KwinDesktop.h"
#include "app/desktops/SessionReading.h"
#include "app/desktops/SwayDesktop.h"
#include "app/desktops/WindowlessDesktop.h"
#include "app/desktops/WlrDesktop.h"
#include "app/desktops/X11Desktop.h"
#include "platform/wayland/connection/Globals.h"
#include "platform/x11/connection/DisplayConnector.h"

#include <QFileInfo>

#include <chrono>

namespace kelpa {

namespace {

/// A start that waits longer for a silent bus seems to hang.
constexpr std::chrono::milliseconds busLimit{500};

/// sway's IPC tells more than the protocols of its family do.
std::unique_ptr<Desktop> openWlrDesktop(Scheduler& scheduler, const QString& boardPath,
                                        const std::set<WindowID>& assigned)
{
    const QByteArray sway = swaySocket();
    if (!sway.isEmpty())
        return std::make_unique<SwayDesktop>(
            scheduler, SwaySockets{.ipc = sway, .compositor = compositorSocket()}, boardPath,
            assigned);
    return std::make_unique<WlrDesktop>(scheduler, compositorSocket(), boardPath, assigned);
}

} // namespace

std::optional<ChosenDesktop> chooseDesktop(const WindowSystem& system,
                                           std::optional<DesktopKind> asked)
{
    SessionOffer offer;
    std::optional<bool> isKnown = false;
    if (needsCompositor(asked, system)) {
        isKnown = isKwinKnown(busLimit);
        offer.isKwin = isKnown == std::optional(true);
        // KWin has none of the protocols that the choice is about.
        offer.compositor = offer.isKwin ? wayland::GlobalVersions()
                                        : wayland::readGlobals(compositorSocket(), compositorLimit);
    }
    offer.isGnomeShell = resemblesGnomeShell(offer) && isGnomeSession(busLimit);
    // A silent bus is not asked twice; the session is named after KWin's desktop there.
    if (resemblesKwin(offer))
        offer.isKwin = !isKnown || isKwinSession(busLimit);
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
    case DesktopKind::gnome:
        return std::make_unique<GnomeDesktop>(scheduler, boardPath, assigned);
    case DesktopKind::kwin:
        return std::make_unique<KwinDesktop>(scheduler, boardPath, assigned);
    case DesktopKind::none:
        return std::make_unique<WindowlessDesktop>(scheduler, chosen.gap);
    }
    return nullptr;
}

} // namespace kelpa
