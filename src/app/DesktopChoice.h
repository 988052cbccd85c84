// The desktops that Kelpa works on, and which of them it takes in a session.
#pragma once

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
    /// A session in which Kelpa sees no windows.
    none,
};

inline constexpr std::array allDesktopKinds{DesktopKind::x11, DesktopKind::wlr, DesktopKind::none};

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
    /// The global objects of the Wayland compositor with their versions; absent when none replies.
    std::optional<std::map<QByteArray, std::uint32_t>> compositor{};

    friend bool operator==(const SessionOffer&, const SessionOffer&) = default;
};

/// `asked` by the person, who may know better than the session. Absent when the session offers
/// nothing that shows a window.
std::optional<DesktopKind> chosenDesktop(const SessionOffer& offer,
                                         std::optional<DesktopKind> asked);

/// Whether the compositor is one of `DesktopKind::wlr`.
bool listsWindows(const SessionOffer& offer);

/// Why `DesktopKind::none` has no windows.
AbilityGap gapOfNone(std::optional<DesktopKind> asked);

/// The toolkit's platform for a desktop, as its option -platform takes it: Kelpa's own window is a
/// native one of the compositor, unless the desktop is an X display.
QByteArray toolkitPlatform(DesktopKind kind, const SessionOffer& offer);

} // namespace kelpa
