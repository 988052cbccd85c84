#include "transfer/ImportBuilder.h"

#include "model/Text.h"
#include "transfer/TransferText.h"

#include <algorithm>
#include <utility>

namespace kelpa {

ImportBuilder::GoalIndex ImportBuilder::addGoal(const QString& title, GoalPriority priority)
{
    ++m_records;
    const GoalIndex index = m_board.goals.size();
    Goal goal;
    goal.id = GoalID::create();
    goal.title = trimmedText(title);
    goal.priority = priority;
    if (!m_goalsByTitle.contains(goal.title))
        m_goalsByTitle.insert(goal.title, index);
    m_board.goals.append(std::move(goal));
    return index;
}

ImportBuilder::GoalIndex ImportBuilder::goalOfTitle(const QString& title)
{
    const auto known = m_goalsByTitle.constFind(trimmedText(title));
    return known != m_goalsByTitle.constEnd() ? *known : addGoal(title);
}

void ImportBuilder::setPriority(GoalIndex goal, GoalPriority priority)
{
    m_board.goals[goal].priority = priority;
}

void ImportBuilder::addTodo(const std::optional<GoalIndex>& goal, const QString& title,
                            TodoStatus status, const std::optional<Date>& completedAt)
{
    ++m_records;
    QList<TodoItem>& todos = goal ? m_board.goals[*goal].todos : m_board.todosWithoutGoal;
    const bool isCompleted = status == TodoStatus::completed;
    todos.append({TodoID::create(), trimmedText(title), status,
                  isCompleted ? completedAt : std::nullopt, m_nextOrder++});
}

void ImportBuilder::skip(qsizetype line, QStringView text, SkipReason reason)
{
    kelpa::skip(m_board, line, text, reason);
}

ImportResult ImportBuilder::take()
{
    if (m_records > mostImportedRecords)
        return ImportRefusal::tooManyRecords;
    if (m_records == 0)
        return ImportRefusal::nothingToImport;
    // A chapter is known as one only by what follows it.
    std::ranges::stable_sort(m_board.skipped, {}, &SkippedLine::line);
    return std::exchange(m_board, {});
}

} // namespace kelpa
