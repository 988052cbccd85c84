// What Kelpa can do on a desktop, and why it cannot do the rest. Which text tells a person of it
// depends on where it is told.
#pragma once

#include <array>
#include <cstdint>
#include <map>
#include <optional>

namespace kelpa {

enum class DesktopAbility : std::uint8_t {
    /// Lists the windows of other programs.
    windows,
    /// Activates and closes them.
    actions,
    /// Asks the whole application of a window to quit; without it, only the window to close.
    quitting,
    /// Reports which windows are minimised, and restores them.
    minimizing,
    /// Reports where windows are and how large.
    geometry,
    /// Lists virtual desktops, sends windows there and shows them.
    virtualDesktops,
    /// Captures windows.
    previews,
    /// Hears the double tap, whichever program has the keyboard.
    globalKeys,
};

inline constexpr std::array allDesktopAbilities{
    DesktopAbility::windows,    DesktopAbility::actions,   DesktopAbility::quitting,
    DesktopAbility::minimizing, DesktopAbility::geometry,  DesktopAbility::virtualDesktops,
    DesktopAbility::previews,   DesktopAbility::globalKeys};

/// Why a desktop lacks an ability. Each has one step that mends it.
enum class AbilityGap : std::uint8_t {
    /// The X11 display does not exist, refuses or does not reply.
    display,
    /// No window manager runs that lists windows and acts on them.
    windowManager,
    /// The window manager announces no virtual desktops, or not that it sends windows there.
    virtualDesktopHints,
    /// The X server has no Composite extension, by which it captures windows one by one.
    composite,
    /// The X server does not report keys that are typed into other programs.
    rawKeys,
    /// Xwayland serves the programs on X11 only; it has no window of another program.
    windowsOfXwayland,
    /// Xwayland hears no key that is typed into another program.
    keysOfXwayland,
    /// The Wayland compositor does not reply.
    compositor,
    /// The compositor has no protocol for it.
    compositorProtocol,
    /// GNOME Shell has no extension by which it tells Kelpa of windows.
    shellExtensionMissing,
    /// That extension is not switched on.
    shellExtensionOff,
    /// GNOME Shell loads the extension at the next login.
    shellExtensionNeedsLogin,
    /// The extension is older than Kelpa needs, or does not fit GNOME Shell.
    shellExtensionTooOld,
    /// The extension serves another Kelpa.
    shellExtensionDenies,
    /// KWin takes pictures of windows only where it draws with OpenGL.
    openGL,
    /// KWin gives pictures of windows only to programs whose desktop entry asks for them.
    pictureEntry,
    /// KWin reports no keys; the person can bind one in its settings.
    desktopShortcut,
    /// Kelpa sends no windows to the virtual desktops of this compositor, whatever it could do.
    windowsNotSent,
    /// The person has chosen to work without windows.
    choice,
};

struct AbilityShortfall
{
    AbilityGap gap = AbilityGap::display;
    /// The desktop gives the ability in part, for some of the windows.
    bool isPartial = false;

    friend bool operator==(const AbilityShortfall&, const AbilityShortfall&) = default;
};

struct DesktopAbilities
{
    /// An ability without an entry is given in full.
    std::map<DesktopAbility, AbilityShortfall> shortfalls;

    /// Absent when the desktop gives the ability in full.
    std::optional<AbilityShortfall> shortfall(DesktopAbility ability) const
    {
        const auto it = shortfalls.find(ability);
        return it == shortfalls.end() ? std::nullopt : std::optional(it->second);
    }

    /// Whether the desktop gives it in full or in part.
    bool has(DesktopAbility ability) const
    {
        const std::optional<AbilityShortfall> found = shortfall(ability);
        return !found || found->isPartial;
    }

    /// All of them are missing for one reason.
    static DesktopAbilities without(AbilityGap gap)
    {
        DesktopAbilities abilities;
        for (const DesktopAbility ability : allDesktopAbilities)
            abilities.shortfalls[ability] = {.gap = gap, .isPartial = false};
        return abilities;
    }

    friend bool operator==(const DesktopAbilities&, const DesktopAbilities&) = default;
};

} // namespace kelpa
