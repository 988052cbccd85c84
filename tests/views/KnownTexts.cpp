#include "views/KnownTexts.h"

#include <QMetaEnum>

namespace kelpa::test {

QStringList knownTexts(const CopyTable& table)
{
    // A space stands for the name of an application.
    QStringList texts{
        table.windowName(QStringLiteral(" "), table.text(CopyKey::Window)),
        table.selectWindowsTitle({}),
        KelpaCopy::currentWindowLocation({}, table.language()),
        KelpaCopy::currentWindowLocation(table.text(CopyKey::Unsorted), table.language()),
        table.selectedWindowCount(0),
        table.confirmWindowSelection(0),
        table.openTodoCount(1),
        table.openTodoCount(2),
        table.completedTodoCount(1),
        table.completedTodoCount(2),
        table.moveLeftKeys(),
        table.moveRightKeys(),
        table.moveUpKeys(),
        table.moveDownKeys(),
        table.windowCount(1),
        table.windowCount(2),
        table.foundCounts(0, 0, 0),
        table.moreInHiddenGoals(1),
        table.moreInHiddenGoals(2),
        table.hiddenGoals(0, 0),
        table.hiddenGoals(0, 1),
        table.onlyMatchesShown({}),
        table.showMoreWindows(0),
        table.dropInto({}),
        table.dropBefore({}),
        table.movedAsideTo({}),
        table.makeTodos(0),
        table.textTooLong(0)};
    const QMetaEnum keys = QMetaEnum::fromType<CopyKey>();
    for (int i = 0; i < keys.keyCount(); ++i)
        texts.append(table.text(static_cast<CopyKey>(keys.value(i))));
    for (const TodoStatus status : {TodoStatus::todo, TodoStatus::ing, TodoStatus::completed}) {
        const QString stored = rawValue(status);
        texts << table.statusName(stored) << table.statusHelp(stored) << table.nextStatus(stored)
              << table.statusAccessibilityLabel(stored);
    }
    for (const GoalPriority priority : allGoalPriorities)
        texts.append(table.priorityAccessibilityLabel(rawValue(priority)));
    return texts + table.keyHelpKeys(true, true, true) + table.keyHelpMeanings(true, true, true) +
           table.keyHelpMeanings(true, false, true);
}

} // namespace kelpa::test
