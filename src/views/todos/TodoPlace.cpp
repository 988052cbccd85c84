#include "views/todos/TodoPlace.h"

#include "store/WindowStore.h"

namespace kelpa {

std::optional<TodoPlace> todoPlaceFromTexts(const QString& todoID, const QString& columnID)
{
    const std::optional<TodoID> todo = TodoID::fromText(todoID);
    const std::optional<ColumnID> column = columnFromText(columnID);
    return todo && column ? std::optional(TodoPlace{*todo, column->goalID}) : std::nullopt;
}

const TodoItem* todoAt(const TodoPlace& place, const WindowStore& store)
{
    return todoAt(place.goalID, place.todoID, store.goals(), store.unassignedTodos());
}

} // namespace kelpa
