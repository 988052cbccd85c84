#include "views/entry/EntryController.h"

#include "model/Text.h"
#include "store/WindowStore.h"
#include "text/KelpaCopy.h"

#include <algorithm>
#include <utility>

namespace kelpa {

namespace {

enum Role {
    titleRole = Qt::UserRole + 1,
    accentRole,
};

/// The windows are listed from front to back.
std::optional<GoalID> goalInFront(const QList<WindowItem>& windows)
{
    const auto front = std::ranges::find_if(
        windows, [](const WindowItem& window) { return window.isOnScreen && !window.isMinimized; });
    return front == windows.end() ? std::nullopt : front->goalID;
}

/// Empty for "Unsorted".
QString accentOf(const EntryGoal& goal)
{
    return goal.goalID ? rawValue(goal.accent) : QString();
}

} // namespace

EntryController::EntryController(WindowStore& store, QObject* parent)
    : RowListModel(parent), m_store(store)
{
    const auto follow = [this] {
        if (m_isOpen)
            update();
    };
    connect(&store, &WindowStore::goalsChanged, this, follow);
    connect(&store, &WindowStore::languageChanged, this, follow);
    connect(&store, &WindowStore::windowsChanged, this, &EntryController::correctProposal);
}

QString EntryController::currentTitle() const
{
    return isCompleting() ? singleLine(rows().at(m_currentRow).title) : QString();
}

QString EntryController::goalTitle() const
{
    return singleLine(target().title);
}

QString EntryController::goalAccent() const
{
    return accentOf(target());
}

void EntryController::open(EntryOver over)
{
    m_over = over;
    m_isAwaitingWindows = true;
    m_store.refresh();
    m_isOpen = true;
    m_isProposalDue = true;
    update();
}

void EntryController::close()
{
    if (!m_isOpen)
        return;
    m_isOpen = false;
    if (trimmedText(m_text).isEmpty())
        m_chosen.reset();
    Q_EMIT changed();
}

void EntryController::edit(const QString& text, int caret)
{
    if (text == m_text && caret == m_caret)
        return;
    // What was declined stays so while the text goes on behind it.
    if (m_declined && text.left(*m_declined + 1) != m_text.left(*m_declined + 1))
        m_declined.reset();
    m_text = text;
    m_caret = caret;
    m_currentRow = 0;
    m_hasMoved = false;
    update();
}

void EntryController::moveCurrent(int rows)
{
    const int all = count();
    if (all == 0)
        return;
    m_currentRow = (m_currentRow + rows % all + all) % all;
    m_hasMoved = true;
    Q_EMIT changed();
}

void EntryController::take(int row)
{
    const std::optional<GoalMention> mention = mentionAt(m_text, m_caret);
    if (!mention || row < 0 || row >= count())
        return;
    m_chosen = ColumnID{rows().at(row).goalID};
    setText(withoutMention(m_text, *mention));
}

void EntryController::commit()
{
    const std::optional<GoalMention> mention = mentionAt(m_text, m_caret);
    const bool isWrittenOut = isCompleting() && mention && !m_hasMoved &&
                              isTitleOf(rows().at(m_currentRow), mention->query, QLocale());
    if (isCompleting() && !isWrittenOut) {
        take(m_currentRow);
        return;
    }
    const EntryGoal goal = target();
    const std::optional<NamedGoal> name = named();
    const EditedText title =
        name ? withoutMention(m_text, name->mention) : EditedText{m_text, m_caret};
    if (trimmedText(title.text).isEmpty()) {
        if (name) {
            m_chosen = ColumnID{goal.goalID};
            setText(title);
        }
        return;
    }
    m_store.addTodo(title.text, goal.goalID);
    m_last = goal.goalID;
    m_chosen.reset();
    setText({});
    Q_EMIT added();
    close();
}

void EntryController::cancel()
{
    if (!isCompleting()) {
        close();
        return;
    }
    m_declined = mentionAt(m_text, m_caret)->start;
    update();
}

QVariant EntryController::data(const QModelIndex& index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid))
        return {};
    const EntryGoal& row = rows().at(index.row());
    switch (role) {
    case titleRole:
        return singleLine(row.title);
    case accentRole:
        return accentOf(row);
    default:
        return {};
    }
}

QHash<int, QByteArray> EntryController::roleNames() const
{
    return {{titleRole, "title"}, {accentRole, "accent"}};
}

void EntryController::update()
{
    m_goals.clear();
    for (const Goal& goal : m_store.goals())
        m_goals.append({goal.id, goal.title, goal.accent});
    m_goals.append({std::nullopt, KelpaCopy::text(CopyKey::Unsorted, m_store.language()), {}});
    // Else it stays: the person types for the goal that was shown at the beginning.
    const bool isThere =
        std::ranges::find(m_goals, m_proposed, &EntryGoal::goalID) != m_goals.end();
    if (std::exchange(m_isProposalDue, false) || !isThere)
        propose();
    const std::optional<GoalMention> mention = mentionAt(m_text, m_caret);
    const bool isWanted = mention && mention->start != m_declined;
    setRows(isWanted ? matchingGoals(m_goals, mention->query, QLocale()) : QList<EntryGoal>());
    m_currentRow = std::clamp(m_currentRow, 0, std::max(0, count() - 1));
    Q_EMIT changed();
}

void EntryController::propose()
{
    const std::optional<GoalID> inFront = m_over == EntryOver::board
                                              ? m_store.boardNavigation().target.goalID()
                                              : goalInFront(m_store.windows());
    m_proposed = proposedGoal(m_goals, inFront, m_last);
}

void EntryController::correctProposal()
{
    if (!std::exchange(m_isAwaitingWindows, false) || !m_isOpen || !m_text.isEmpty())
        return;
    m_isProposalDue = true;
    update();
}

void EntryController::setText(const EditedText& edited)
{
    m_text = edited.text;
    m_caret = edited.caret;
    m_declined.reset();
    m_currentRow = 0;
    m_hasMoved = false;
    ++m_replacementCount;
    update();
}

std::optional<NamedGoal> EntryController::named() const
{
    return goalNamedIn(m_text, m_goals, QLocale(), m_declined);
}

EntryGoal EntryController::target() const
{
    if (const std::optional<NamedGoal> name = named())
        return name->goal;
    const auto of = [this](std::optional<GoalID> goalID) {
        return std::ranges::find(m_goals, goalID, &EntryGoal::goalID);
    };
    // Before the first update there is none at all.
    if (m_goals.isEmpty())
        return {};
    const auto chosen = m_chosen ? of(m_chosen->goalID) : m_goals.end();
    if (chosen != m_goals.end())
        return *chosen;
    return *of(m_proposed);
}

} // namespace kelpa
