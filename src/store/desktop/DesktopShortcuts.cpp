#include "store/desktop/DesktopShortcuts.h"

#include <utility>

namespace kelpa {

DesktopShortcuts::DesktopShortcuts(GlobalShortcuts& shortcuts,
                                   std::function<GlobalShortcuts::Descriptions()> describe)
    : m_shortcuts(shortcuts), m_describe(std::move(describe))
{}

DesktopShortcuts::~DesktopShortcuts()
{
    m_shortcuts.stop();
}

void DesktopShortcuts::allow()
{
    m_isAllowed = true;
    update();
}

void DesktopShortcuts::follow(const DesktopAbilities& abilities)
{
    m_isWanted = areShortcutsWanted(abilities);
    update();
}

void DesktopShortcuts::choose()
{
    m_shortcuts.choose();
}

void DesktopShortcuts::update()
{
    const bool isStarted = m_isAllowed && m_isWanted;
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
