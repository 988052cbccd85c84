// Finds what a person names on the command line: by its identifier, a beginning of that, or its
// title.
#pragma once

#include "automation/Replies.h"

#include <QList>
#include <QString>
#include <QStringList>

#include <variant>

namespace kelpa::automation {

/// The shortest beginning of an identifier that names a record.
inline constexpr qsizetype shortestBeginning = 4;

/// A whole identifier names its record, whether or not it is in the list. Otherwise the title does,
/// as it is on the board; where no record has that title, the beginning of an identifier. Nothing
/// is guessed: a name of several records is a failure that lists them.
std::variant<GoalID, Failure> goalNamed(const QString& name, const QList<GoalRecord>& goals);
std::variant<TodoID, Failure> todoNamed(const QString& name, const QList<TodoRecord>& todos);

/// Whether the name is that of the column of what is in no goal, in any language and either case.
/// A goal with just that title is meant instead, as by `goalNamed`.
bool isNameOfUnsorted(const QString& name, const QList<GoalRecord>& goals);

/// The number of the virtual desktop, from 1: a number is that number, whatever desktops are
/// called, and any other text the name of one. `desktops` are the names in their order.
std::variant<int, Failure> desktopNamed(const QString& name, const QStringList& desktops);

} // namespace kelpa::automation
