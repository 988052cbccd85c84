#include "views/board/presence/ShortcutsController.h"

#include "store/WindowStore.h"
#include "store/desktop/DesktopShortcuts.h"

namespace kelpa {

ShortcutsController::ShortcutsController(WindowStore& store, QObject* parent)
    : QObject(parent), m_store(store)
{}

void ShortcutsController::setShortcuts(DesktopShortcuts& shortcuts)
{
    m_shortcuts = &shortcuts;
    connect(m_shortcuts, &DesktopShortcuts::stateChanged, this, &ShortcutsController::changed);
    connect(m_shortcuts, &DesktopShortcuts::failed, this,
            [this] { m_store.noteShortcutsFailed(); });
    Q_EMIT changed();
}

bool ShortcutsController::isOffered() const
{
    return m_shortcuts != nullptr && m_shortcuts->state().standing != ShortcutStanding::absent;
}

bool ShortcutsController::isGiven() const
{
    return m_shortcuts != nullptr && m_shortcuts->state().standing == ShortcutStanding::given;
}

QString ShortcutsController::key() const
{
    if (m_shortcuts == nullptr)
        return {};
    const auto keys = m_shortcuts->state().keys;
    const auto found = keys.find(GlobalShortcut::bringForward);
    return found == keys.end() ? QString() : found->second;
}

bool ShortcutsController::isNewTodoKeyKnown() const
{
    return m_shortcuts != nullptr && m_shortcuts->state().keys.contains(GlobalShortcut::newTodo);
}

void ShortcutsController::choose()
{
    if (m_shortcuts != nullptr)
        m_shortcuts->choose();
}

} // namespace kelpa
