#include "views/board/notices/FirstSteps.h"

#include "store/WindowStore.h"

namespace kelpa {

FirstSteps::FirstSteps(WindowStore& store) : m_store(store)
{
    // A board that could not be read is not empty.
    m_isOpen = store.goals().isEmpty() && store.unassignedTodos().isEmpty() && !store.trouble();
    if (!m_isOpen)
        return;
    for (const auto signal : {&WindowStore::goalsChanged, &WindowStore::windowsChanged,
                              &WindowStore::troubleChanged, &WindowStore::abilitiesChanged})
        connect(&store, signal, this, &FirstSteps::update);
    m_isWindowOffered = store.abilities().has(DesktopAbility::windows);
}

void FirstSteps::setReturnOffered(bool isOffered)
{
    if (m_isReturnOffered == isOffered)
        return;
    m_isReturnOffered = isOffered;
    update();
    Q_EMIT changed();
}

void FirstSteps::noteReturn()
{
    if (!m_isOpen || m_hasReturned)
        return;
    m_hasReturned = true;
    update();
    Q_EMIT changed();
}

bool FirstSteps::needsGoalAgain() const
{
    return m_hasGoal && !m_isGoalThere && m_isWindowOffered && !m_hasAssignment;
}

void FirstSteps::createGoal(const QString& title)
{
    m_store.createGoal(title);
}

void FirstSteps::dismiss()
{
    if (!m_isOpen)
        return;
    m_isOpen = false;
    Q_EMIT changed();
}

void FirstSteps::update()
{
    if (!m_isOpen)
        return;
    const bool hadGoal = m_hasGoal;
    const bool wasGoalThere = m_isGoalThere;
    const bool hadAssignment = m_hasAssignment;
    const bool wasWindowOffered = m_isWindowOffered;
    m_isWindowOffered = m_store.abilities().has(DesktopAbility::windows);
    m_isGoalThere = !m_store.goals().isEmpty();
    m_hasGoal = m_hasGoal || m_isGoalThere;
    m_hasAssignment = m_hasAssignment || !m_store.assignments().isEmpty();
    const bool isDone = m_hasGoal && (m_hasAssignment || !m_isWindowOffered) &&
                        (m_hasReturned || !m_isReturnOffered);
    // Beside trouble with the file there is no room for lessons, and what is on the disk may come.
    m_isOpen = !isDone && !m_store.trouble();
    if (!m_isOpen || hadGoal != m_hasGoal || wasGoalThere != m_isGoalThere ||
        hadAssignment != m_hasAssignment || wasWindowOffered != m_isWindowOffered)
        Q_EMIT changed();
}

} // namespace kelpa
