#include "store/board/BoardContents.h"

#include "store/board/TodoOrder.h"

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
    applyPositions(stored.goals, positions);
    applyPositions(stored.unassignedTodos, positions);
    return stored;
}

} // namespace kelpa
