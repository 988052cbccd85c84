// Every text of the interface in every language: plain texts by key, and texts composed with a
// title, a count or a state.
#pragma once

#include "model/GoalPriority.h"
#include "model/TodoItem.h"
#include "text/AppLanguage.h"
#include "text/CopyKey.h"

#include <QDateTime>
#include <QString>
#include <QStringList>

namespace kelpa::KelpaCopy {

/// Never empty. Texts that name the Command key write it "⌘" (see `withPlatformKeyNames`).
QString text(CopyKey key, AppLanguage language);

/// Title of the window selection sheet. The goal's title is inserted unchanged, even when empty.
QString selectWindowsTitle(const QString& goalTitle, AppLanguage language);

/// Names the goal that a window belongs to now.
QString currentWindowLocation(const QString& goalTitle, AppLanguage language);

/// Counts are written in plain decimal digits; the plural is used for every count.
QString selectedWindowCount(qsizetype count, AppLanguage language);
QString confirmWindowSelection(qsizetype count, AppLanguage language);

QString statusName(TodoStatus status, AppLanguage language);

/// Describes the control that shows a todo's status and advances it on a click.
QString statusHelp(TodoStatus status, AppLanguage language);
/// Says which status the click brings.
QString nextStatus(TodoStatus next, AppLanguage language);
QString statusAccessibilityLabel(TodoStatus status, AppLanguage language);

CopyKey priorityName(GoalPriority priority);
QString priorityAccessibilityLabel(GoalPriority priority, AppLanguage language);

/// The text that a screen reader says for the count badges of a goal's header. With a singular.
QString openTodoCount(qsizetype count, AppLanguage language);
QString windowCount(qsizetype count, AppLanguage language);

/// What a search has found on the board, and what it has found where goals are hidden. With a
/// singular.
QString foundCounts(qsizetype windows, qsizetype goals, qsizetype todos, AppLanguage language);
QString moreInHiddenGoals(qsizetype count, AppLanguage language);
/// How many goals are hidden, and how many of them hold windows.
QString hiddenGoals(qsizetype count, qsizetype countWithWindows, AppLanguage language);
/// Says that windows are narrowed to those that match. A long `searchText` is cut short.
QString onlyMatchesShown(const QString& searchText, AppLanguage language);
/// The button that shows the windows of "Unsorted" that are folded away.
QString showMoreWindows(qsizetype count, AppLanguage language);
/// Where a drop would move what is dragged: into the column of that title, or before that goal. A
/// long title is cut short.
QString dropInto(const QString& title, AppLanguage language);
QString dropBefore(const QString& title, AppLanguage language);
/// Refuses what would make the text of a field longer than `limit` characters.
QString textTooLong(qsizetype limit, AppLanguage language);

/// The button that makes a todo of each pasted line. `count` is at least 2.
QString makeTodos(qsizetype count, AppLanguage language);

/// Says of a title of `length` characters that no field takes it.
QString overlongTitle(qsizetype length, AppLanguage language);
/// Where a window is that is on another virtual desktop, which has that name or number.
QString onVirtualDesktop(const QString& desktop, AppLanguage language);

/// The text that a screen reader says for a window's card: the application's name and the title, or
/// the title alone where `ownerName` is empty. `title` is not empty.
QString windowName(const QString& ownerName, const QString& title, AppLanguage language);
/// What something is and its name, with a colon between them as the language writes it.
QString withColon(const QString& what, const QString& name, AppLanguage language);

/// Day and time, as the language writes them.
QString dayAndTime(const QDateTime& local, AppLanguage language);
/// Where a damaged file is now that was renamed to `name`.
QString movedAsideTo(const QString& name, AppLanguage language);

} // namespace kelpa::KelpaCopy
