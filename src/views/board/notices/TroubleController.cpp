#include "views/board/notices/TroubleController.h"

#include "store/WindowStore.h"
#include "views/todos/TodoController.h"

namespace kelpa {

TroubleController::TroubleController(WindowStore& store, TodoController& todos, QObject* parent)
    : QObject(parent), m_store(store), m_todos(todos)
{
    connect(&store, &WindowStore::troubleChanged, this, &TroubleController::update);
    connect(&store, &WindowStore::isSavingSlowlyChanged, this, &TroubleController::updateUnsaved);
    connect(&store, &WindowStore::savingEnded, this,
            [this] { goOnClosing(m_store.saveProgress()); });
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
    goOnClosing(m_store.saveProgress());
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
    const SaveProgress progress = m_store.save();
    m_isClosing = progress != SaveProgress::saved;
    goOnClosing(progress);
    return progress == SaveProgress::saved;
}

void TroubleController::goOnClosing(SaveProgress progress)
{
    // A disk that is merely slower than usual is no question.
    if (!m_isClosing || (progress == SaveProgress::underWay && !m_isUnsaved))
        return;
    m_isClosing = false;
    if (progress == SaveProgress::saved)
        Q_EMIT closingAllowed();
    else
        Q_EMIT askingRequested();
}

} // namespace kelpa
