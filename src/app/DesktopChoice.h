// The desktops that Kelpa works on, and which of them it takes in a session.
#pragma once

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
};

inline constexpr std::array allDesktopKinds{DesktopKind::x11};

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

/// `asked` by the person, who may know better than the session. Absent when Kelpa can work on
/// nothing that is offered.
std::optional<DesktopKind> chosenDesktop(const SessionOffer& offer,
                                         std::optional<DesktopKind> asked);

} // namespace kelpa
