// What Kelpa can do in a GNOME session, which depends on the Shell's extension, and how that is
// mended.
#pragma once

#include "platform/AbilityReport.h"

#include <memory>

namespace kelpa::gnome {

class ShellFollower;

class GnomeAbilities final : public AbilityReport
{
public:
    /// `follower` outlives this object and its subscriptions.
    explicit GnomeAbilities(ShellFollower& follower) : m_follower(follower) {}

    DesktopAbilities abilities() const override;
    [[nodiscard]] std::unique_ptr<Subscription>
    watchAbilities(std::function<void()> changed) override;
    bool canRequestAbilities() const override;
    void requestAbilities() override;

private:
    ShellFollower& m_follower;
};

} // namespace kelpa::gnome
