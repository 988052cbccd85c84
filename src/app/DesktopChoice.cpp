#include "app/DesktopChoice.h"

#include <algorithm>

namespace kelpa {

QString desktopName(DesktopKind kind)
{
    switch (kind) {
    case DesktopKind::x11:
        return QStringLiteral("x11");
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
    if (offer.hasX11Display)
        return DesktopKind::x11;
    return offer.compositor ? std::optional(DesktopKind::none) : std::nullopt;
}

AbilityGap gapOfNone(std::optional<DesktopKind> asked)
{
    return asked ? AbilityGap::choice : AbilityGap::compositorProtocol;
}

QByteArray toolkitPlatform(DesktopKind kind, const SessionOffer& offer)
{
    return kind == DesktopKind::x11 || !offer.compositor ? QByteArrayLiteral("xcb")
                                                         : QByteArrayLiteral("wayland");
}

} // namespace kelpa
