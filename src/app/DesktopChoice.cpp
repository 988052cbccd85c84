#include "app/DesktopChoice.h"

#include <algorithm>

namespace kelpa {

QString desktopName(DesktopKind kind)
{
    switch (kind) {
    case DesktopKind::x11:
        return QStringLiteral("x11");
    case DesktopKind::wlr:
        return QStringLiteral("wlr");
    case DesktopKind::none:
        return QStringLiteral("none");
    }
    return {};
}

std::optional<DesktopKind> desktopNamed(const QString& name)
{
    const auto* const found = std::ranges::find(allDesktopKinds, name, desktopName);
    return found == allDesktopKinds.end() ? std::nullopt : std::optional(*found);
}

QStringList desktopNames()
{
    QStringList names;
    for (const DesktopKind kind : allDesktopKinds)
        names.append(desktopName(kind));
    return names;
}

std::optional<DesktopKind> chosenDesktop(const SessionOffer& offer,
                                         std::optional<DesktopKind> asked)
{
    if (asked)
        return asked;
    // Its X display, Xwayland, has the windows of programs on X11 alone.
    if (listsWindows(offer))
        return DesktopKind::wlr;
    if (offer.hasX11Display)
        return DesktopKind::x11;
    return offer.compositor ? std::optional(DesktopKind::none) : std::nullopt;
}

bool listsWindows(const SessionOffer& offer)
{
    return offer.compositor && offer.compositor->contains("zwlr_foreign_toplevel_manager_v1");
}

AbilityGap gapOfNone(std::optional<DesktopKind> asked)
{
    return asked == DesktopKind::none ? AbilityGap::choice : AbilityGap::compositorProtocol;
}

QByteArray toolkitPlatform(DesktopKind kind, const SessionOffer& offer)
{
    return kind == DesktopKind::x11 || !offer.compositor ? QByteArrayLiteral("xcb")
                                                         : QByteArrayLiteral("wayland");
}

} // namespace kelpa
