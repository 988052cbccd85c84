#include "platform/gnome/ShellStanding.h"

namespace kelpa::gnome {

namespace {

std::optional<AbilityGap> gapOf(ShellCondition condition)
{
    switch (condition) {
    case ShellCondition::unknown:
    case ShellCondition::ready:
    case ShellCondition::paused:
        return std::nullopt;
    case ShellCondition::missing:
        return AbilityGap::shellExtensionMissing;
    case ShellCondition::disabled:
        return AbilityGap::shellExtensionOff;
    case ShellCondition::needsLogin:
        return AbilityGap::shellExtensionNeedsLogin;
    case ShellCondition::tooOld:
        return AbilityGap::shellExtensionTooOld;
    case ShellCondition::denied:
    case ShellCondition::outdated:
        return AbilityGap::shellExtensionDenies;
    case ShellCondition::silent:
        break;
    }
    return AbilityGap::compositor;
}

/// Of an extension that the Shell does not know.
ShellCondition unknownToShell(const ShellFindings& findings)
{
    if (!findings.isInstalled)
        return ShellCondition::missing;
    return findings.isWanted ? ShellCondition::needsLogin : ShellCondition::disabled;
}

/// Of an extension that is not on the bus.
ShellCondition asShellTells(const ShellFindings& findings)
{
    if (findings.told != CallOutcome::answered)
        return ShellCondition::silent;
    if (!findings.state)
        return unknownToShell(findings);
    switch (*findings.state) {
    case extension_state::enabled:
        return ShellCondition::silent;
    case extension_state::disabled:
        return findings.isWanted && findings.areExtensionsOn ? ShellCondition::paused
                                                             : ShellCondition::disabled;
    case extension_state::failed:
    case extension_state::doesNotFit:
        return ShellCondition::tooOld;
    default:
        return ShellCondition::disabled;
    }
}

ShellCondition found(const ShellFindings& findings)
{
    if (!findings.version)
        return asShellTells(findings);
    if (*findings.version < neededVersion)
        return ShellCondition::tooOld;
    switch (findings.attached) {
    case CallOutcome::answered:
        return ShellCondition::ready;
    case CallOutcome::denied:
        return ShellCondition::denied;
    case CallOutcome::outdated:
        return ShellCondition::outdated;
    default:
        return ShellCondition::silent;
    }
}

} // namespace

ShellCondition conditionOf(const ShellFindings& findings)
{
    const ShellCondition condition = found(findings);
    const bool isOther = condition == ShellCondition::tooOld || condition == ShellCondition::denied;
    return findings.isReplaced && isOther ? ShellCondition::needsLogin : condition;
}

DesktopAbilities abilitiesIn(ShellCondition condition, std::uint32_t version)
{
    const std::optional<AbilityGap> gap = gapOf(condition);
    if (gap)
        return DesktopAbilities::without(*gap);
    DesktopAbilities abilities;
    if (condition == ShellCondition::ready && version < workspacesVersion)
        abilities.shortfalls[DesktopAbility::virtualDesktops] = {
            .gap = AbilityGap::shellExtensionTooOld, .isPartial = false};
    return abilities;
}

} // namespace kelpa::gnome
