// What a person has put on the board: the part of the store's state that is kept between runs.
#pragma once

#include "model/BoardJson.h"
#include "model/Goal.h"

#include <QList>

namespace kelpa {

/// Copies are cheap: the lists are shared until one of them is changed.
struct BoardContents
{
    QList<Goal> goals;
    QList<TodoItem> unassignedTodos;
    Assignments assignments;

    friend bool operator==(const BoardContents&, const BoardContents&) = default;
};

/// `stored` with what was made on another board beside it: its goals after the stored ones, its
/// todos after all stored ones in their lists and in the order of the board, which becomes 0 … n−1.
/// A window that is assigned on both belongs where it was assigned last, on the made one.
BoardContents joined(BoardContents stored, BoardContents made);

} // namespace kelpa
