// The desktops that Kelpa works on, and which of them it takes in a session.
#pragma once

#include "app/desktops/ToolkitArguments.h"
#include "platform/DesktopAbilities.h"

#include <QByteArray>
#include <QString>
#include <QStringList>

#include <array>
#include <cstdint>
#include <map>
#include <optional>

namespace kelpa {

enum class DesktopKind : std::uint8_t {
    /// An X display; in a Wayland session that of Xwayland.
    x11,
    /// A Wayland compositor of the wlroots family, which lists its windows.
    wlr,
    /// GNOME Shell on Wayland, which lists its windows by an extension.
    gnome,
    /// KWin on Wayland, the compositor of KDE Plasma.
    kwin,
    /// A session in which Kelpa sees no windows.
    none,
};

inline constexpr std::array allDesktopKinds{DesktopKind::x11, DesktopKind::wlr, DesktopKind::gnome,
                                            DesktopKind::kwin, DesktopKind::none};

/// As the command line names it.
QString desktopName(DesktopKind kind);
/// Absent for another name.
std::optional<DesktopKind> desktopNamed(const QString& name);
QStringList desktopNames();

/// What the session has, as far as it has replied.
struct SessionOffer
{
    /// An X display accepts connections.
    bool hasX11Display = false;
    /// The global objects of the Wayland compositor with their versions; absent when none replies,
    /// empty where it is known to be KWin without them.
    std::optional<std::map<QByteArray, std::uint32_t>> compositor{};
    /// The compositor is GNOME Shell.
    bool isGnomeShell = false;
    /// The compositor is KWin.
    bool isKwin = false;

    friend bool operator==(const SessionOffer&, const SessionOffer&) = default;
};

struct ChosenDesktop
{
    DesktopKind kind = DesktopKind::x11;
    /// Why there are no windows, for `DesktopKind::none`.
    AbilityGap gap = AbilityGap::choice;
    /// For the toolkit's option -platform; empty where the person has chosen the platform.
    QByteArray platform;

    friend bool operator==(const ChosenDesktop&, const ChosenDesktop&) = default;
};

/// `asked` for by the person, who may know better than the session; `system` is what the command
/// line and the environment say of the toolkit. Absent when there is nothing to show a window on.
std::optional<ChosenDesktop> chosenDesktop(const SessionOffer& offer,
                                           std::optional<DesktopKind> asked,
                                           const WindowSystem& system);

/// Whether the choice depends on the compositor.
bool needsCompositor(std::optional<DesktopKind> asked, const WindowSystem& system);
/// Whether the choice depends on the X display; `offer` knows the compositor. Connecting to an X
/// display may start Xwayland.
bool needsX11Display(const SessionOffer& offer, std::optional<DesktopKind> asked,
                     const WindowSystem& system);

/// Whether the compositor is one of `DesktopKind::wlr`.
bool listsWindows(const SessionOffer& offer);

/// Whether the compositor may be GNOME Shell: others that are built on its libraries look the same.
bool resemblesGnomeShell(const SessionOffer& offer);
/// Whether the compositor may be KWin: its protocols alone do not tell.
bool resemblesKwin(const SessionOffer& offer);

/// Why `DesktopKind::none` has no windows.
AbilityGap gapOfNone(const SessionOffer& offer, std::optional<DesktopKind> asked);

/// The toolkit's platform for a desktop, as its option -platform takes it: Kelpa's own window is a
/// native one of the compositor, unless the desktop is an X display.
QByteArray toolkitPlatform(DesktopKind kind, const SessionOffer& offer);

} // namespace kelpa
