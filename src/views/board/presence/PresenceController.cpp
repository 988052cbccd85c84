#include "views/board/presence/PresenceController.h"

#include "store/WindowStore.h"
#include "store/desktop/SessionStart.h"

#include <utility>

namespace kelpa {

PresenceController::PresenceController(WindowStore& store, QObject* parent)
    : QObject(parent), m_store(store)
{
    connect(&store, &WindowStore::isClosingQuittingChanged, this,
            &PresenceController::isClosingQuittingChanged);
}

void PresenceController::setSessionStart(SessionStart& start)
{
    m_start = &start;
    connect(m_start, &SessionStart::isOnChanged, this, &PresenceController::sessionStartChanged);
    connect(m_start, &SessionStart::failed, this,
            [this](AutostartOutcome outcome) { m_store.noteSessionStartFailed(outcome); });
    Q_EMIT sessionStartChanged();
}

bool PresenceController::isClosingQuitting() const
{
    return m_store.isClosingQuitting();
}

void PresenceController::toggleClosingQuits()
{
    m_store.setClosingQuitting(!m_store.isClosingQuitting());
}

bool PresenceController::startsWithSession() const
{
    return m_start != nullptr && m_start->isOn();
}

void PresenceController::toggleSessionStart()
{
    if (m_start != nullptr)
        m_start->set(!m_start->isOn());
}

void PresenceController::requestQuit()
{
    m_isQuitting = true;
    Q_EMIT quitRequested();
}

void PresenceController::goOn()
{
    if (std::exchange(m_isQuitting, false))
        quit();
    else
        Q_EMIT closeConfirmed();
}

} // namespace kelpa
