#include "views/board/notices/TroubleController.h"

#include "store/WindowStore.h"
#include "views/todos/TodoController.h"

namespace kelpa {

TroubleController::TroubleController(WindowStore& store, TodoController& todos, QObject* parent)
    : QObject(parent), m_store(store), m_todos(todos)
{
    connect(&store, &WindowStore::troubleChanged, this, &TroubleController::update);
    connect(&store, &WindowStore::isSavingSlowlyChanged, this, &TroubleController::updateUnsaved);
    update();
}

void TroubleController::update()
{
    m_isThere = m_store.trouble().has_value();
    if (m_isThere)
        m_shown = *m_store.trouble();
    Q_EMIT troubleChanged();
    updateUnsaved();
}

void TroubleController::updateUnsaved()
{
    const std::optional<UnsavedNotice> unsaved =
        unsavedNotice(m_store.trouble(), m_store.isSavingSlowly());
    m_isUnsaved = unsaved.has_value();
    m_unsaved = unsaved.value_or(m_unsaved);
    Q_EMIT unsavedChanged();
}

void TroubleController::retry()
{
    m_store.retrySaving();
}

void TroubleController::showFolder()
{
    m_store.showStoredFolder();
}

void TroubleController::dismiss()
{
    m_store.dismissTrouble();
}

bool TroubleController::mayClose()
{
    if (!m_isAsking)
        return true;
    m_todos.finishWriting();
    return m_store.saveBeforeClosing();
}

} // namespace kelpa
