// The goals, todos, assignments and pins of a board: the part of the store's state that is kept
// between runs.
#pragma once

#include "model/BoardJson.h"
#include "model/Goal.h"
#include "model/GoalPins.h"

#include <QList>

namespace kelpa {

/// Copies are cheap: the lists are shared until one of them is changed.
struct BoardContents
{
    QList<Goal> goals;
    QList<TodoItem> unassignedTodos;
    Assignments assignments;
    GoalPins pins{};

    friend bool operator==(const BoardContents&, const BoardContents&) = default;
};

/// `stored` with the contents of `made`, another board made beside it, appended: its goals after
/// the stored ones, its todos after all stored ones in their lists and in the order of the board,
/// which becomes 0 … n−1. A window that is assigned on both keeps its assignment on `made`, which
/// is the later one; likewise a goal that both pin.
BoardContents joined(BoardContents stored, BoardContents made);

/// `backup` in the place of `present`. A window that only `present` assigns keeps its goal where
/// the backup has that goal, since it may have been opened later. A goal that only `present` pins
/// stays pinned.
BoardContents restored(const BoardContents& present, BoardContents backup);

/// The todos of all lists that are not completed.
qsizetype openTodoCount(const BoardContents& board);

} // namespace kelpa
