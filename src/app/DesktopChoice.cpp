#include "app/DesktopChoice.h"

#include <algorithm>

namespace kelpa {

QString desktopName(DesktopKind kind)
{
    switch (kind) {
    case DesktopKind::x11:
        return QStringLiteral("x11");
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
    return offer.hasX11Display ? std::optional(DesktopKind::x11) : std::nullopt;
}

} // namespace kelpa
