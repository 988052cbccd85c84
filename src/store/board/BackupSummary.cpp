#include "store/board/BackupSummary.h"

#include <algorithm>

namespace kelpa {

BackupSummary summaryOf(const BoardContents& board)
{
    BackupSummary summary;
    summary.goalCount = board.goals.size();
    summary.openTodoCount = openTodoCount(board);
    summary.openTodosWithoutGoal = std::ranges::count_if(board.unassignedTodos, &TodoItem::isOpen);
    for (const Goal& goal : board.goals)
        summary.goals.append({goal.title, goal.openTodoCount()});
    return summary;
}

} // namespace kelpa
