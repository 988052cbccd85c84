#include "store/board/BoardContents.h"

#include "store/board/TodoOrder.h"

#include <algorithm>

namespace kelpa {

BoardContents joined(BoardContents stored, BoardContents made)
{
    TodoPositions positions = normalizedPositions(stored.goals, stored.unassignedTodos);
    const auto storedCount = static_cast<std::int64_t>(positions.size());
    const TodoPositions madePositions = normalizedPositions(made.goals, made.unassignedTodos);
    for (const auto& [id, position] : madePositions.asKeyValueRange())
        positions.insert(id, storedCount + position);

    stored.goals.append(std::move(made.goals));
    stored.unassignedTodos.append(std::move(made.unassignedTodos));
    stored.assignments.insert(made.assignments);
    stored.pins.insert(made.pins);
    applyPositions(stored.goals, positions);
    applyPositions(stored.unassignedTodos, positions);
    return stored;
}

BoardContents restored(const BoardContents& present, BoardContents backup)
{
    for (const auto& [window, goalID] : present.assignments.asKeyValueRange()) {
        if (!backup.assignments.contains(window) && goalWith(goalID, backup.goals) != nullptr)
            backup.assignments.insert(window, goalID);
    }
    for (const auto& [goalID, desktop] : present.pins.asKeyValueRange()) {
        if (!backup.pins.contains(goalID) && goalWith(goalID, backup.goals) != nullptr)
            backup.pins.insert(goalID, desktop);
    }
    return backup;
}

qsizetype openTodoCount(const BoardContents& board)
{
    qsizetype count = std::ranges::count_if(board.unassignedTodos, &TodoItem::isOpen);
    for (const Goal& goal : board.goals)
        count += goal.openTodoCount();
    return count;
}

} // namespace kelpa
