#include "app/DesktopOpening.h"

#include "app/WindowlessDesktop.h"
#include "app/X11Desktop.h"
#include "platform/wayland/connection/Globals.h"
#include "platform/wayland/connection/WaylandConnection.h"
#include "platform/x11/connection/DisplayConnector.h"

#include <chrono>

namespace kelpa {

namespace {

/// A compositor that is there replies within a few milliseconds. One that takes longer than this
/// would not show Kelpa's window either.
constexpr std::chrono::milliseconds compositorLimit{2000};

/// Only the compositor that the session names: in a session on X11, one of another session may
/// listen at the default path.
std::optional<wayland::GlobalVersions> readCompositor()
{
    const QByteArray display = qgetenv("WAYLAND_DISPLAY");
    if (display.isEmpty())
        return std::nullopt;
    return wayland::readGlobals(wayland::socketPath(display, qgetenv("XDG_RUNTIME_DIR")),
                                compositorLimit);
}

} // namespace

std::optional<ChosenDesktop> chooseDesktop(const WindowSystem& system,
                                           std::optional<DesktopKind> asked)
{
    SessionOffer offer;
    if (asked != DesktopKind::x11)
        offer.compositor = readCompositor();
    // The toolkit would abort where there is no display.
    const bool isDisplayNeeded = asked == DesktopKind::x11 || !asked || !offer.compositor;
    if (isDisplayNeeded)
        offer.hasX11Display = x11::hasDisplay(system.display);
    // A person who has chosen another platform for the toolkit has seen to its window.
    const bool isShownElsewhere = !system.isDefault && !system.isX11;
    if (!offer.hasX11Display && !offer.compositor && !isShownElsewhere)
        return std::nullopt;
    if (!offer.hasX11Display && system.isX11 && (asked == DesktopKind::x11 || !system.isDefault))
        return std::nullopt;
    const DesktopKind kind = chosenDesktop(offer, asked).value_or(DesktopKind::none);
    return ChosenDesktop{.kind = kind,
                         .gap = gapOfNone(asked),
                         .platform =
                             system.isDefault ? toolkitPlatform(kind, offer) : QByteArray()};
}

std::unique_ptr<Desktop> openDesktop(const ChosenDesktop& chosen, Scheduler& scheduler,
                                     const QString& stateFolder, const std::set<WindowID>& assigned)
{
    switch (chosen.kind) {
    case DesktopKind::x11:
        return std::make_unique<X11Desktop>(scheduler, stateFolder, assigned);
    case DesktopKind::none:
        return std::make_unique<WindowlessDesktop>(scheduler, chosen.gap);
    }
    return nullptr;
}

} // namespace kelpa
