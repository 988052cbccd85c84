// How Kelpa stands with the Shell's extension, by what has been found out about it.
#pragma once

#include "platform/DesktopAbilities.h"
#include "platform/gnome/CallOutcome.h"

#include <cstdint>
#include <optional>
#include <string>

namespace kelpa::gnome {

/// The least version of the extension's interface that Kelpa can use. A newer one only adds.
inline constexpr std::uint32_t neededVersion = 1;
/// The version of the extension that this Kelpa brings. With an older one, from `neededVersion` on,
/// Kelpa does without what was added since.
inline constexpr std::uint32_t broughtVersion = 4;
/// The first one that lists workspaces, sends windows there and shows them.
inline constexpr std::uint32_t workspacesVersion = 3;
/// The first one that tells which workspace is which when their numbers shift.
inline constexpr std::uint32_t workspaceIDsVersion = 4;

enum class ShellCondition : std::uint8_t {
    /// Not asked yet.
    unknown,
    /// The extension serves Kelpa.
    ready,
    /// No extension is installed.
    missing,
    /// It is installed, but not switched on.
    disabled,
    /// It is switched on, and rests while the screen is locked. Nobody sees the board then.
    paused,
    /// It is switched on, but the Shell learns of it at the next login only.
    needsLogin,
    /// It is older than Kelpa needs, or does not fit the Shell.
    tooOld,
    /// It serves another Kelpa, installed elsewhere.
    denied,
    /// Kelpa was updated while it runs: it is served when it is started anew.
    outdated,
    /// The Shell is not there, hangs, or is about to load the extension.
    silent,
};

/// The states of an extension as the Shell counts them; there are others.
namespace extension_state {
inline constexpr int enabled = 1;
inline constexpr int disabled = 2;
inline constexpr int failed = 3;
inline constexpr int doesNotFit = 4;
} // namespace extension_state

struct ShellFindings
{
    /// The version of the extension's interface; absent when it is not on the bus.
    std::optional<std::uint32_t> version{};
    /// The reply to the request to be served.
    CallOutcome attached = CallOutcome::absent;
    /// Whether the Shell told of the extension.
    CallOutcome told = CallOutcome::absent;
    /// Absent when the Shell does not know the extension.
    std::optional<int> state{};
    /// The extension's files are where the Shell looks for them.
    bool isInstalled = false;
    /// The person's settings name it among those to load.
    bool isWanted = false;
    /// The person has not switched all extensions off.
    bool areExtensionsOn = true;
    /// Its files were replaced while the Shell ran.
    bool isReplaced = false;
};

ShellCondition conditionOf(const ShellFindings& findings);

struct ShellStanding
{
    ShellCondition condition = ShellCondition::unknown;
    /// That of the extension's interface while it is ready.
    std::uint32_t version = 0;
    /// The Shell's unique name on the bus while it is ready.
    std::string owner{};
    /// Identifies the run of the Shell while it is ready.
    std::uint64_t run = 0;
    /// Kelpa can switch the extension on, or install it.
    bool canSwitchOn = false;
    /// The Shell has a key whose double tap the extension reports. Means nothing unless it is
    /// ready.
    bool hearsDoubleTap = true;

    friend bool operator==(const ShellStanding&, const ShellStanding&) = default;
};

/// An ability counts as given until the Shell has been asked. `version` is that of the extension's
/// interface, and means nothing unless it is ready.
DesktopAbilities abilitiesIn(ShellCondition condition, std::uint32_t version);

} // namespace kelpa::gnome
