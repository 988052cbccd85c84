#include "store/desktop/DesktopShortcuts.h"

#include <utility>

namespace kelpa {

DesktopShortcuts::DesktopShortcuts(GlobalShortcuts& shortcuts, AbilityReport& abilities,
                                   std::function<GlobalShortcuts::Descriptions()> describe)
    : m_shortcuts(shortcuts), m_abilities(abilities), m_describe(std::move(describe))
{}

DesktopShortcuts::~DesktopShortcuts()
{
    m_shortcuts.stop();
}

void DesktopShortcuts::allow()
{
    if (std::exchange(m_isAllowed, true))
        return;
    m_watch = m_abilities.watchAbilities([this] { update(); });
    update();
}

void DesktopShortcuts::choose()
{
    m_shortcuts.choose();
}

void DesktopShortcuts::update()
{
    const bool isStarted = areShortcutsWanted(m_abilities.abilities());
    if (std::exchange(m_isStarted, isStarted) == isStarted)
        return;
    if (isStarted) {
        m_shortcuts.start(
            {.stateChanged = [this] { Q_EMIT stateChanged(); },
             .activated = [this](GlobalShortcut shortcut,
                                 const QByteArray& token) { Q_EMIT activated(shortcut, token); },
             .failed = [this] { Q_EMIT failed(); }},
            m_describe);
        return;
    }
    m_shortcuts.stop();
    Q_EMIT stateChanged();
}

} // namespace kelpa
