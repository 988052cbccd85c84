// The todos that a list of the board shows, in order, and the symbols that show their state: pure
// functions over the store's records.
#pragma once

#include "model/Goal.h"
#include "store/board/BoardSearch.h"
#include "views/models/ColumnID.h"

#include <QList>
#include <QString>
#include <QUuid>

#include <cstdint>
#include <optional>

namespace kelpa {

/// What a search makes of a row.
enum class SearchMatch : std::uint8_t { notSearched, found, missed };

/// One row: a todo and the goal it belongs to.
struct UnifiedTodoEntry
{
    /// Absent for an unassigned todo.
    std::optional<GoalID> goalID;
    TodoItem todo;
    QString goalTitle;
    SearchMatch match = SearchMatch::notSearched;

    QUuid key() const { return todo.id.value; }

    friend bool operator==(const UnifiedTodoEntry&, const UnifiedTodoEntry&) = default;
};

/// The rows on a goal's card: the open todos and the one completed last, in board order; without
/// open todos, the one that lingers.
QList<UnifiedTodoEntry> goalTodoEntries(const Goal& goal,
                                        std::optional<TodoID> lingering = std::nullopt);

/// All of `unassigned`, also completed todos, in board order. `title` is the title of their column.
QList<UnifiedTodoEntry> unassignedTodoEntries(const QList<TodoItem>& unassigned,
                                              const QString& title);

/// The open todos of the whole board, and the one that lingers, in board order. Among equal orders,
/// unassigned todos come first, then those of the goals in goal order. `unassignedTitle` is the
/// `goalTitle` of unassigned todos.
QList<UnifiedTodoEntry> unifiedTodoEntries(const QList<Goal>& goals,
                                           const QList<TodoItem>& unassigned,
                                           const QString& unassignedTitle,
                                           std::optional<TodoID> lingering = std::nullopt);

/// `unifiedTodoEntries`, computed once for each state of the board.
class UnifiedTodoRows
{
public:
    const QList<UnifiedTodoEntry>& of(const QList<Goal>& goals, const QList<TodoItem>& unassigned,
                                      const QString& unassignedTitle,
                                      std::optional<TodoID> lingering);
    /// The board changes: drops the rows that nobody has asked for since it did so last.
    void dropUnused();

private:
    bool m_isUsed = false;
    /// Of what the rows are; they share the board's lists, so that a glance tells whether these are
    /// others.
    QList<Goal> m_goals;
    QList<TodoItem> m_unassigned;
    QString m_unassignedTitle;
    std::optional<TodoID> m_lingering;
    QList<UnifiedTodoEntry> m_rows;
};

/// The todos of any column. Empty for a goal that does not exist. `lingering` is shown for a moment
/// after it was completed.
QList<UnifiedTodoEntry> columnTodoEntries(const ColumnID& column, const QList<Goal>& goals,
                                          const QList<TodoItem>& unassigned,
                                          const QString& unassignedTitle,
                                          std::optional<TodoID> lingering = std::nullopt);

/// `entries` with what a search makes of them.
QList<UnifiedTodoEntry> withMatches(QList<UnifiedTodoEntry> entries,
                                    const SearchFindings& findings);

/// The name of the symbol that shows a status.
QString statusSymbol(TodoStatus status);

} // namespace kelpa
