// The steps by which a person changed the board, for undo and redo.
#pragma once

#include "model/Identifiers.h"
#include "store/board/BoardContents.h"

#include <QHash>
#include <QList>
#include <QMap>
#include <QSet>

#include <optional>

namespace kelpa {

/// The board, whether its goals are in automatic order, whether their windows are remembered, which
/// windows' offers to go back into a goal a person has answered, and which desktops the pins mean.
struct BoardVersion
{
    BoardContents contents;
    bool isAutoSortingGoals = true;
    bool isRememberingWindows = true;
    QSet<WindowID> answeredOffers{};
    DesktopLinks desktopLinks{};

    friend bool operator==(const BoardVersion&, const BoardVersion&) = default;
};

/// The last steps of a person. A step keeps all goals, todos and pins as they were before it, since
/// only a person changes them, but only those assignments and links that the step itself changed:
/// windows and desktops that come and go in between change others.
class BoardHistory
{
public:
    /// Older steps are forgotten.
    static constexpr qsizetype maxSteps = 100;

    /// Records that a person turned `before` into `after`, and drops the steps that could be
    /// redone. False when goals, todos, assignments and pins are the same, what is remembered was
    /// not forgotten, no offer answered, and each pin means the same desktop: the automatic order
    /// by itself is a setting, and belongs to a step only where it changed the order of the goals.
    bool record(const BoardVersion& before, const BoardVersion& after);
    void clear();

    bool canUndo() const { return !m_undoable.isEmpty(); }
    bool canRedo() const { return !m_redoable.isEmpty(); }

    /// Takes the last step off `board`; returns `board` itself when there is none. In automatic
    /// order, the goals may still have to be sorted: the step may be older than the switch.
    BoardVersion undo(const BoardVersion& board);
    /// Applies the step undone last to `board`; returns `board` itself when there is none.
    BoardVersion redo(const BoardVersion& board);

private:
    /// The difference that leads from one version to another.
    struct Step
    {
        QList<Goal> goals;
        QList<TodoItem> unassignedTodos;
        /// Window key to goal, or to none.
        QMap<QString, std::optional<GoalID>> assignments;
        GoalPins pins;
        std::optional<bool> isAutoSortingGoals;
        std::optional<bool> isRememberingWindows;
        /// Whether it is answered, by window.
        QHash<WindowID, bool> answeredOffers;
        /// By goal; absent where it has none.
        QHash<GoalID, std::optional<DesktopLink>> desktopLinks;
    };

    static Step stepBetween(const BoardVersion& from, const BoardVersion& to);
    /// Applies the last step of `source` to `board` and moves its inverse to `inverses`.
    static BoardVersion applyLast(QList<Step>& source, QList<Step>& inverses,
                                  const BoardVersion& board);

    QList<Step> m_undoable;
    QList<Step> m_redoable;
};

} // namespace kelpa
