#include "store/board/ImportPreview.h"

#include "model/Text.h"

#include <algorithm>

namespace kelpa {

ImportPreview previewOf(const ImportedBoard& board, TransferFormat format)
{
    ImportPreview preview;
    preview.format = format;
    preview.summary = summaryOf({board.goals, board.todosWithoutGoal, {}});
    preview.skipped = board.skipped;
    preview.skippedCount = board.skippedCount;

    QList<TodoItem> first;
    const auto take = [&](const QList<TodoItem>& todos) {
        preview.todoCount += todos.size();
        first.append(todos.first(std::min(todos.size(), mostFirstTodos)));
        std::ranges::stable_sort(first, {}, &TodoItem::order);
        first.resize(std::min(first.size(), mostFirstTodos));
    };
    for (const Goal& goal : board.goals)
        take(goal.todos);
    take(board.todosWithoutGoal);
    for (const TodoItem& todo : std::as_const(first))
        preview.firstTodos.append(singleLine(todo.title));
    return preview;
}

} // namespace kelpa
