// What a person has changed on the board, so that it can be taken back and done again.
#pragma once

#include "store/board/BoardContents.h"

#include <QList>
#include <QMap>

#include <optional>

namespace kelpa {

/// The board, and whether its goals are in automatic order.
struct BoardVersion
{
    BoardContents contents;
    bool isAutoSortingGoals = true;

    friend bool operator==(const BoardVersion&, const BoardVersion&) = default;
};

/// The last steps of a person. A step keeps the goals and the todos before it as they were, which
/// only a person changes; of the assignments it keeps those that the step itself changed, since
/// others come with the windows in between.
class BoardHistory
{
public:
    /// Older steps are forgotten.
    static constexpr qsizetype mostSteps = 100;

    /// Notes that a person turned `before` into `after`; nothing can be redone from then on. False
    /// when goals, todos and assignments are the same: the automatic order by itself is a setting,
    /// and belongs to a step only where it changed the order of the goals.
    bool note(const BoardVersion& before, const BoardVersion& after);
    void clear();

    bool canUndo() const { return !m_undoable.isEmpty(); }
    bool canRedo() const { return !m_redoable.isEmpty(); }

    /// `board` without the last step; `board` itself when there is none. In automatic order, the
    /// goals may still have to be sorted: the step may be older than the switch.
    BoardVersion undone(const BoardVersion& board);
    /// `board` with the step that was undone last; `board` itself when there is none.
    BoardVersion redone(const BoardVersion& board);

private:
    /// What leads from one version to another.
    struct Step
    {
        QList<Goal> goals;
        QList<TodoItem> unassignedTodos;
        /// Window key to goal, or to none.
        QMap<QString, std::optional<GoalID>> assignments;
        std::optional<bool> isAutoSortingGoals;
    };

    static Step stepTo(const BoardVersion& target, const BoardVersion& from);
    /// Takes the last step of `from` and keeps its inverse in `to`.
    static BoardVersion taken(QList<Step>& from, QList<Step>& to, const BoardVersion& board);

    QList<Step> m_undoable;
    QList<Step> m_redoable;
};

} // namespace kelpa
