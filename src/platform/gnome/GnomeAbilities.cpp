#include "platform/gnome/GnomeAbilities.h"

#include "platform/gnome/ShellFollower.h"

#include <utility>

namespace kelpa::gnome {

DesktopAbilities GnomeAbilities::abilities() const
{
    const ShellStanding& standing = m_follower.standing();
    DesktopAbilities abilities = abilitiesIn(standing.condition, standing.version);
    if (standing.condition == ShellCondition::ready && !m_follower.hearsDoubleTap())
        abilities.shortfalls[DesktopAbility::globalKeys] = {.gap = AbilityGap::compositorProtocol,
                                                            .isPartial = false};
    return abilities;
}

std::unique_ptr<Subscription> GnomeAbilities::watchAbilities(std::function<void()> changed)
{
    return m_follower.watch({.standingChanged = std::move(changed)});
}

bool GnomeAbilities::canRequestAbilities() const
{
    return m_follower.standing().canSwitchOn;
}

void GnomeAbilities::requestAbilities()
{
    m_follower.switchOn();
}

} // namespace kelpa::gnome
