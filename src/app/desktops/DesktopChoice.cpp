#include "app/desktops/DesktopChoice.h"

#include <algorithm>

namespace kelpa {

namespace {

/// A person who names an X display means that one.
std::optional<DesktopKind> meant(std::optional<DesktopKind> asked, const WindowSystem& system)
{
    return !asked && !system.display.isEmpty() ? DesktopKind::x11 : asked;
}

} // namespace

QString desktopName(DesktopKind kind)
{
    switch (kind) {
    case DesktopKind::x11:
        return QStringLiteral("x11");
    case DesktopKind::wlr:
        return QStringLiteral("wlr");
    case DesktopKind::gnome:
        return QStringLiteral("gnome");
    case DesktopKind::kwin:
        return QStringLiteral("kwin");
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

std::optional<ChosenDesktop> chosenDesktop(const SessionOffer& offer,
                                           std::optional<DesktopKind> asked,
                                           const WindowSystem& system)
{
    asked = meant(asked, system);
    // A person who has chosen another platform for the toolkit has seen to its window.
    const bool isShownElsewhere = !system.isDefault && !system.isX11;
    if (!offer.hasX11Display && !offer.compositor && !isShownElsewhere)
        return std::nullopt;
    // The toolkit would abort where the display is missing that it is to use.
    if (!offer.hasX11Display && system.isX11 && (asked == DesktopKind::x11 || !system.isDefault))
        return std::nullopt;
    DesktopKind kind = asked.value_or(DesktopKind::none);
    if (!asked) {
        // The X display of such a compositor, Xwayland, has the windows of programs on X11 alone.
        if (listsWindows(offer))
            kind = DesktopKind::wlr;
        else if (offer.isGnomeShell)
            kind = DesktopKind::gnome;
        else if (offer.isKwin)
            kind = DesktopKind::kwin;
        else if (offer.hasX11Display)
            kind = DesktopKind::x11;
    } else if ((kind == DesktopKind::wlr && !listsWindows(offer)) ||
               (kind == DesktopKind::gnome && !offer.isGnomeShell) ||
               (kind == DesktopKind::kwin && !offer.isKwin)) {
        kind = DesktopKind::none;
    }
    return ChosenDesktop{.kind = kind,
                         .gap = gapOfNone(offer, asked),
                         .platform =
                             system.isDefault ? toolkitPlatform(kind, offer) : QByteArray()};
}

bool needsCompositor(std::optional<DesktopKind> asked, const WindowSystem& system)
{
    return meant(asked, system) != DesktopKind::x11;
}

bool needsX11Display(const SessionOffer& offer, std::optional<DesktopKind> asked,
                     const WindowSystem& system)
{
    asked = meant(asked, system);
    const bool hasDesktop = listsWindows(offer) || offer.isGnomeShell || offer.isKwin;
    return asked == DesktopKind::x11 || (!asked && !hasDesktop) || !offer.compositor ||
           (system.isX11 && !system.isDefault);
}

bool listsWindows(const SessionOffer& offer)
{
    return offer.compositor && offer.compositor->contains("zwlr_foreign_toplevel_manager_v1");
}

bool resemblesGnomeShell(const SessionOffer& offer)
{
    return offer.compositor && offer.compositor->contains("gtk_shell1") && !listsWindows(offer);
}

bool resemblesKwin(const SessionOffer& offer)
{
    return offer.compositor && offer.compositor->contains("org_kde_plasma_shell") &&
           !listsWindows(offer);
}

AbilityGap gapOfNone(const SessionOffer& offer, std::optional<DesktopKind> asked)
{
    if (asked == DesktopKind::none)
        return AbilityGap::choice;
    if (offer.compositor)
        return AbilityGap::compositorProtocol;
    const bool needsItsCompositor =
        asked == DesktopKind::wlr || asked == DesktopKind::gnome || asked == DesktopKind::kwin;
    return needsItsCompositor ? AbilityGap::compositor : AbilityGap::display;
}

QByteArray toolkitPlatform(DesktopKind kind, const SessionOffer& offer)
{
    return kind == DesktopKind::x11 || !offer.compositor ? QByteArrayLiteral("xcb")
                                                         : QByteArrayLiteral("wayland");
}

} // namespace kelpa
