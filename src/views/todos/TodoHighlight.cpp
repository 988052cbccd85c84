#include "views/todos/TodoHighlight.h"

#include "store/WindowStore.h"

namespace kelpa {

TodoHighlight::TodoHighlight(WindowStore& store, QObject* parent) : QObject(parent), m_store(store)
{
    for (const auto signal : {&WindowStore::boardNavigationChanged, &WindowStore::goalsChanged,
                              &WindowStore::unassignedTodosChanged})
        connect(&store, signal, this, &TodoHighlight::removeWhereGone);
    connect(&store, &WindowStore::boardNavigationChanged, this, &TodoHighlight::forgetRestored);
    // The store emits it after the change of the selection that goes with the restoration.
    connect(&store, &WindowStore::restorationIDChanged, this, &TodoHighlight::showRestored);
}

QString TodoHighlight::todoID() const
{
    return m_place ? m_place->todoID.text() : QString();
}

void TodoHighlight::set(std::optional<TodoPlace> place)
{
    const QString before = todoID();
    m_place = place;
    m_isRestored = false;
    if (before != todoID())
        Q_EMIT todoIDChanged();
}

void TodoHighlight::goTo(const TodoPlace& place, bool isByKeyboard)
{
    m_isFocusRequested = isByKeyboard;
    set(place);
    Q_EMIT requested();
}

bool TodoHighlight::takeFocusRequest(const QString& todoID)
{
    if (!m_isFocusRequested || todoID.isEmpty() || todoID != this->todoID())
        return false;
    m_isFocusRequested = false;
    return true;
}

/// The selection or the todo itself may have gone elsewhere.
void TodoHighlight::removeWhereGone()
{
    if (m_place && (m_store.boardNavigation().target != TargetSelection::of(m_place->goalID) ||
                    todoAt(*m_place, m_store) == nullptr)) {
        m_isFocusRequested = false;
        set(std::nullopt);
    }
}

void TodoHighlight::showRestored()
{
    const std::optional<TodoID> restored = m_store.restoredTodoID();
    const TargetSelection& target = m_store.boardNavigation().target;
    m_isFocusRequested = false;
    set(restored && !target.isUnifiedTodos() ? std::optional(TodoPlace{*restored, target.goalID()})
                                             : std::nullopt);
    m_isRestored = true;
    if (restored && target.isUnifiedTodos())
        Q_EMIT restoredInUnifiedList(restored->text());
}

void TodoHighlight::forgetRestored()
{
    if (m_isRestored)
        set(std::nullopt);
}

} // namespace kelpa
