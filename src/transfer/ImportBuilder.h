// Gathers what a reader of a format finds, in the order of the file.
#pragma once

#include "transfer/ImportedBoard.h"

#include <QHash>
#include <QString>
#include <QStringView>

#include <cstdint>
#include <optional>
#include <stop_token>

namespace kelpa {

class ImportBuilder
{
public:
    /// Names a goal of the import.
    using GoalIndex = qsizetype;

    explicit ImportBuilder(std::stop_token stop) : m_stop(std::move(stop)) {}

    /// Whether reading further is of no use: there is too much, or nobody waits for it.
    bool isDone() const { return m_records > mostImportedRecords || m_stop.stop_requested(); }

    /// Adds a goal, whether or not there is another one of that title. The title is not blank.
    GoalIndex addGoal(const QString& title, GoalPriority priority = defaultGoalPriority);
    /// The first goal of that title, which is added where there is none.
    GoalIndex goalOfTitle(const QString& title);
    void setPriority(GoalIndex goal, GoalPriority priority);
    qsizetype todoCount(GoalIndex goal) const { return m_board.goals.at(goal).todos.size(); }

    /// The title is not blank.
    void addTodo(const std::optional<GoalIndex>& goal, const QString& title,
                 TodoStatus status = TodoStatus::todo,
                 const std::optional<Date>& completedAt = std::nullopt);
    void skip(qsizetype line, QStringView text, SkipReason reason);

    ImportResult take();

private:
    std::stop_token m_stop;
    ImportedBoard m_board;
    QHash<QString, GoalIndex> m_goalsByTitle;
    qsizetype m_records = 0;
    std::int64_t m_nextOrder = 0;
};

} // namespace kelpa
