#include "views/windows/WindowMemoryController.h"

#include "model/Text.h"
#include "store/WindowStore.h"
#include "views/models/ColumnID.h"
#include "views/windows/TitleLengths.h"

#include <QVariantMap>

#include <optional>
#include <utility>

namespace kelpa {

WindowMemoryController::WindowMemoryController(WindowStore& store, QObject* parent)
    : QObject(parent), m_store(store)
{
    connect(&store, &WindowStore::isRememberingWindowsChanged, this,
            &WindowMemoryController::isRememberingChanged);
    for (const auto signal : {&WindowStore::windowMemoryChanged, &WindowStore::goalsChanged,
                              &WindowStore::languageChanged})
        connect(&store, signal, this, &WindowMemoryController::updateList);
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

void WindowMemoryController::declineSelection()
{
    const std::optional<WindowID> selected = m_store.boardNavigation().selectedWindowID;
    if (selected && !m_store.recallOffers(*selected).isEmpty())
        decline(*selected);
}

QString WindowMemoryController::titleLengths(const QString& title)
{
    return kelpa::titleLengths(title);
}

QString WindowMemoryController::listTitle() const
{
    const Goal* const goal = m_listedGoal ? goalWith(*m_listedGoal, m_store.goals()) : nullptr;
    return goal != nullptr ? singleLine(goal->title) : QString();
}

void WindowMemoryController::openList(const QString& columnID)
{
    const std::optional<ColumnID> column = columnFromText(columnID);
    if (!column || !column->goalID)
        return;
    m_listedGoal = column->goalID;
    updateList();
}

void WindowMemoryController::closeList()
{
    // Its rows stay while the sheet fades away.
    if (std::exchange(m_listedGoal, std::nullopt))
        Q_EMIT listChanged();
}

void WindowMemoryController::reopen(quint32 windowID)
{
    if (m_listedGoal)
        m_store.reopen(*m_listedGoal, {windowID});
}

void WindowMemoryController::reopenAll()
{
    if (m_listedGoal)
        m_store.reopen(*m_listedGoal, listedWindows());
}

void WindowMemoryController::forget(quint32 windowID)
{
    if (listedWindows().contains(windowID))
        m_store.forgetWindows({windowID});
}

void WindowMemoryController::forgetAll()
{
    m_store.forgetWindows(listedWindows());
}

QSet<WindowID> WindowMemoryController::listedWindows() const
{
    QSet<WindowID> windows;
    if (m_listedGoal) {
        for (const RememberedWindow& window : m_store.absentWindows(*m_listedGoal))
            windows.insert(window.windowID);
    }
    return windows;
}

void WindowMemoryController::updateList()
{
    if (!m_listedGoal)
        return;
    const QList<RememberedWindow> windows = m_store.absentWindows(*m_listedGoal);
    if (windows.isEmpty()) {
        closeList();
        return;
    }
    m_isListFromLastTime = m_store.areFromLastTime(*m_listedGoal);
    m_list.setWindows(windows, m_store.language());
    Q_EMIT listChanged();
}

} // namespace kelpa
