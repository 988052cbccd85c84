#include "app/desktops/WindowlessDesktop.h"

#include "app/desktops/SessionServices.h"
#include "platform/AbilityReport.h"
#include "platform/qt/ToolkitOwnWindow.h"

namespace kelpa {

struct WindowlessDesktop::Parts
{
    explicit Parts(AbilityGap gap) : abilities(DesktopAbilities::without(gap)) {}

    FixedAbilities abilities;
    ToolkitOwnWindow ownWindow;
};

WindowlessDesktop::WindowlessDesktop(Scheduler& scheduler, AbilityGap gap)
    : SessionDesktop(scheduler), m_parts(std::make_unique<Parts>(gap))
{}

WindowlessDesktop::~WindowlessDesktop() = default;

Platform WindowlessDesktop::platform()
{
    NoWindows& none = services().unreported;
    return platformOf(none, none, none, m_parts->abilities);
}

GlobalKeys& WindowlessDesktop::globalKeys()
{
    return services().unreported;
}

OwnWindow& WindowlessDesktop::ownWindow()
{
    return m_parts->ownWindow;
}

} // namespace kelpa
