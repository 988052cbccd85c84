// Every text of the interface, in its six languages: plain texts by key, and those that are
// composed with a title, a count or a state.
#pragma once

#include "model/GoalPriority.h"
#include "model/TodoItem.h"
#include "text/AppLanguage.h"
#include "text/CopyKey.h"

#include <QString>

namespace kelpa::KelpaCopy {

/// Never empty. Texts that name the Command key write it "⌘" (see `withPlatformKeyNames`).
QString text(CopyKey key, AppLanguage language);

/// Title of the window selection sheet. The goal's title goes in as it is, also when empty.
QString selectWindowsTitle(const QString& goalTitle, AppLanguage language);

/// Names the goal that a window is in now.
QString currentWindowLocation(const QString& goalTitle, AppLanguage language);

/// Counts are written in plain decimal digits, and the plural stands for every count.
QString selectedWindowCount(qsizetype count, AppLanguage language);
QString confirmWindowSelection(qsizetype count, AppLanguage language);

QString statusName(TodoStatus status, AppLanguage language);

/// Of the control that shows a todo's status and advances it on a click.
QString statusHelp(TodoStatus status, AppLanguage language);
QString statusAccessibilityLabel(TodoStatus status, AppLanguage language);

CopyKey priorityName(GoalPriority priority);
QString priorityAccessibilityLabel(GoalPriority priority, AppLanguage language);

/// What the count badges of a goal's header say to a screen reader.
QString openTodoCount(qsizetype count, AppLanguage language);
QString windowCount(qsizetype count, AppLanguage language);

/// What a window's card says to a screen reader. `title` is not empty; without the name of an
/// application it stands alone.
QString windowName(const QString& ownerName, const QString& title, AppLanguage language);

} // namespace kelpa::KelpaCopy
