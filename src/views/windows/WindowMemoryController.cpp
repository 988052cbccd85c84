#include "views/windows/WindowMemoryController.h"

#include "model/Text.h"
#include "store/WindowStore.h"
#include "views/models/ColumnID.h"

#include <QVariantMap>

#include <optional>

namespace kelpa {

WindowMemoryController::WindowMemoryController(WindowStore& store, QObject* parent)
    : QObject(parent), m_store(store)
{
    connect(&store, &WindowStore::isRememberingWindowsChanged, this,
            &WindowMemoryController::isRememberingChanged);
}

bool WindowMemoryController::isRemembering() const
{
    return m_store.isRememberingWindows();
}

void WindowMemoryController::toggleRemembering()
{
    m_store.setRememberingWindows(!isRemembering());
}

QVariantList WindowMemoryController::formerGoals(quint32 windowID) const
{
    QVariantList goals;
    for (const RecalledWindow& offer : m_store.recallOffers(windowID)) {
        if (const Goal* const goal = goalWith(offer.goalID, m_store.goals()))
            goals.append(QVariantMap{{QStringLiteral("columnID"), columnText(goal->id)},
                                     {QStringLiteral("title"), singleLine(goal->title)}});
    }
    return goals;
}

bool WindowMemoryController::putBack(quint32 windowID)
{
    const QList<RecalledWindow> offers = m_store.recallOffers(windowID);
    if (offers.size() == 1)
        m_store.acceptRecall(windowID, offers.first().remembered);
    return offers.size() <= 1;
}

bool WindowMemoryController::putSelectionBack()
{
    const std::optional<WindowID> selected = m_store.boardNavigation().selectedWindowID;
    return !selected || putBack(*selected);
}

void WindowMemoryController::putBackInto(quint32 windowID, const QString& columnID)
{
    const std::optional<ColumnID> column = columnFromText(columnID);
    for (const RecalledWindow& offer : m_store.recallOffers(windowID)) {
        if (column && column->goalID == offer.goalID) {
            m_store.acceptRecall(windowID, offer.remembered);
            return;
        }
    }
}

void WindowMemoryController::decline(quint32 windowID)
{
    m_store.declineRecall(windowID);
}

} // namespace kelpa
