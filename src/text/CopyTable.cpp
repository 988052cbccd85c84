#include "text/CopyTable.h"

#include "text/FormerWindowCopy.h"
#include "text/KeyHelp.h"
#include "text/TodoCopy.h"

namespace kelpa {

QString CopyTable::text(kelpa::CopyKey key) const
{
    return withPlatformKeyNames(KelpaCopy::text(key, m_language), m_keyNames);
}

QString CopyTable::selectWindowsTitle(const QString& goalTitle) const
{
    return KelpaCopy::selectWindowsTitle(goalTitle, m_language);
}

QString CopyTable::selectedWindowCount(int count) const
{
    return KelpaCopy::selectedWindowCount(count, m_language);
}

QString CopyTable::confirmWindowSelection(int count) const
{
    return KelpaCopy::confirmWindowSelection(count, m_language);
}

QString CopyTable::openTodoCount(int count) const
{
    return KelpaCopy::openTodoCount(count, m_language);
}

QString CopyTable::completedTodoCount(int count) const
{
    return KelpaCopy::completedTodoCount(count, m_language);
}

QString CopyTable::windowCount(int count) const
{
    return KelpaCopy::windowCount(count, m_language);
}

QString CopyTable::foundCounts(int windows, int goals, int todos) const
{
    return KelpaCopy::foundCounts(windows, goals, todos, m_language);
}

QString CopyTable::moreInHiddenGoals(int count) const
{
    return KelpaCopy::moreInHiddenGoals(count, m_language);
}

QString CopyTable::hiddenGoals(int count, int countWithWindows) const
{
    return KelpaCopy::hiddenGoals(count, countWithWindows, m_language);
}

QString CopyTable::onlyMatchesShown(const QString& searchText) const
{
    return KelpaCopy::onlyMatchesShown(searchText, m_language);
}

QString CopyTable::showMoreWindows(int count) const
{
    return KelpaCopy::showMoreWindows(count, m_language);
}

QString CopyTable::dropInto(const QString& title) const
{
    return KelpaCopy::dropInto(title, m_language);
}

QString CopyTable::dropBefore(const QString& title) const
{
    return KelpaCopy::dropBefore(title, m_language);
}

QString CopyTable::textTooLong(int limit) const
{
    return KelpaCopy::textTooLong(limit, m_language);
}

QString CopyTable::makeTodos(int count) const
{
    return KelpaCopy::makeTodos(count, m_language);
}

QString CopyTable::windowName(const QString& ownerName, const QString& title) const
{
    return KelpaCopy::windowName(ownerName, title, m_language);
}

QString CopyTable::windowsFromLastTime(int count) const
{
    return KelpaCopy::windowsFromLastTime(count, m_language);
}

QString CopyTable::closedWindows(int count) const
{
    return KelpaCopy::closedWindows(count, m_language);
}

QString CopyTable::onVirtualDesktop(const QString& desktop) const
{
    return KelpaCopy::onVirtualDesktop(desktop, m_language);
}

QString CopyTable::wasIn(const QStringList& goalTitles) const
{
    return KelpaCopy::wasIn(goalTitles, m_language);
}

QString CopyTable::movedAsideTo(const QString& name) const
{
    return KelpaCopy::movedAsideTo(name, m_language);
}

QString CopyTable::statusName(const QString& status) const
{
    const std::optional<TodoStatus> value = todoStatusFromRawValue(status);
    return value ? KelpaCopy::statusName(*value, m_language) : QString();
}

QString CopyTable::statusHelp(const QString& status) const
{
    const std::optional<TodoStatus> value = todoStatusFromRawValue(status);
    return value ? KelpaCopy::statusHelp(*value, m_language) : QString();
}

QString CopyTable::nextStatus(const QString& next) const
{
    const std::optional<TodoStatus> value = todoStatusFromRawValue(next);
    return value ? KelpaCopy::nextStatus(*value, m_language) : QString();
}

QString CopyTable::statusAccessibilityLabel(const QString& status) const
{
    const std::optional<TodoStatus> value = todoStatusFromRawValue(status);
    return value ? KelpaCopy::statusAccessibilityLabel(*value, m_language) : QString();
}

QString CopyTable::priorityName(const QString& priority) const
{
    const std::optional<GoalPriority> value = goalPriorityFromRawValue(priority);
    return value ? text(KelpaCopy::priorityName(*value)) : QString();
}

QString CopyTable::priorityAccessibilityLabel(const QString& priority) const
{
    const std::optional<GoalPriority> value = goalPriorityFromRawValue(priority);
    return value ? KelpaCopy::priorityAccessibilityLabel(*value, m_language) : QString();
}

QStringList CopyTable::keyHelpKeys(bool isDoubleTapOffered, bool canWorkOnGoals,
                                   bool canPinGoals) const
{
    QStringList keys;
    for (const KeyHelp& each : keyHelp(m_language, {.doubleTap = isDoubleTapOffered,
                                                   .workOnGoals = canWorkOnGoals,
                                                   .pinGoals = canPinGoals}))
        keys.append(withPlatformKeyNames(each.keys, m_keyNames));
    return keys;
}

QStringList CopyTable::keyHelpMeanings(bool isDoubleTapOffered, bool canWorkOnGoals,
                                       bool canPinGoals) const
{
    QStringList meanings;
    for (const KeyHelp& each : keyHelp(m_language, {.doubleTap = isDoubleTapOffered,
                                                   .workOnGoals = canWorkOnGoals,
                                                   .pinGoals = canPinGoals}))
        meanings.append(each.meaning);
    return meanings;
}

QString CopyTable::newGoalKeys() const
{
    return kelpa::newGoalKeys(m_language);
}

QString CopyTable::undoKeys() const
{
    return kelpa::undoKeys(m_language);
}

QString CopyTable::redoKeys() const
{
    return kelpa::redoKeys(m_language);
}

QString CopyTable::renameKeys() const
{
    return kelpa::renameKeys(m_language);
}

QString CopyTable::deleteTodoKeys() const
{
    return kelpa::deleteTodoKeys(m_language);
}

QString CopyTable::moveLeftKeys() const
{
    return kelpa::moveLeftKeys(m_language);
}

QString CopyTable::moveRightKeys() const
{
    return kelpa::moveRightKeys(m_language);
}

QString CopyTable::moveUpKeys() const
{
    return kelpa::moveUpKeys(m_language);
}

QString CopyTable::moveDownKeys() const
{
    return kelpa::moveDownKeys(m_language);
}

QString CopyTable::workKeys() const
{
    return kelpa::workKeys(m_language);
}

QString CopyTable::goBackKeys() const
{
    return kelpa::goBackKeys(m_language);
}

QString CopyTable::quitKeys() const
{
    return kelpa::quitKeys(m_language);
}

QString CopyTable::helpKeys() const
{
    return kelpa::helpKeys(m_language);
}

QString CopyTable::makeTodosKeys() const
{
    return kelpa::makeTodosKeys(m_language);
}

} // namespace kelpa
