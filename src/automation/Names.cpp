#include "automation/Names.h"

#include "model/Text.h"
#include "text/KelpaCopy.h"

#include <algorithm>
#include <utility>

namespace kelpa::automation {

namespace {

/// How many records a message lists.
constexpr qsizetype mostListed = 5;

/// How much of a name a message repeats that may be of any length.
constexpr qsizetype longestQuotedName = 80;

template <class Record>
Failure ambiguous(const QString& kinds, const QString& name, const QList<Record>& found)
{
    QStringList lines;
    for (const Record& record : found.first(std::min(found.size(), mostListed)))
        lines.append(QStringLiteral("  %1  %2").arg(record.id.text(), singleLine(record.title)));
    if (found.size() > mostListed)
        lines.append(QStringLiteral("  …"));
    return {FailureKind::ambiguousName,
            QStringLiteral("'%1' names %2 %3; name one by its identifier:\n%4")
                .arg(singleLine(name), QString::number(found.size()), kinds, lines.join(u'\n'))};
}

template <class ID, class Record>
std::variant<ID, Failure> named(const QString& name, const QList<Record>& records,
                                const QString& kind, FailureKind unknown)
{
    if (const std::optional<ID> id = ID::fromText(name))
        return *id;
    const QString title = trimmedText(name);
    QList<Record> found;
    for (const Record& record : records) {
        if (record.title == title)
            found.append(record);
    }
    for (const Record& record : records) {
        // Only where there was no title: what a person reads comes first.
        const bool isMeant = title.size() >= shortestBeginning &&
                             record.id.text().startsWith(title, Qt::CaseInsensitive);
        if (isMeant && (found.isEmpty() || found.constLast().title != title))
            found.append(record);
    }
    if (found.size() == 1)
        return found.constFirst().id;
    if (!found.isEmpty())
        return ambiguous(kind + u's', name, found);
    return Failure{unknown, QStringLiteral("there is no %1 '%2'").arg(kind, singleLine(name))};
}

} // namespace

std::variant<GoalID, Failure> goalNamed(const QString& name, const QList<GoalRecord>& goals)
{
    return named<GoalID>(name, goals, QStringLiteral("goal"), FailureKind::unknownGoal);
}

std::variant<TodoID, Failure> todoNamed(const QString& name, const QList<TodoRecord>& todos)
{
    return named<TodoID>(name, todos, QStringLiteral("todo"), FailureKind::unknownTodo);
}

bool isNameOfUnsorted(const QString& name, const QList<GoalRecord>& goals)
{
    const QString title = trimmedText(name);
    const auto isColumn = [&title](AppLanguage language) {
        return title.compare(KelpaCopy::text(CopyKey::Unsorted, language), Qt::CaseInsensitive) ==
               0;
    };
    return std::ranges::any_of(allAppLanguages, isColumn) &&
           std::ranges::find(goals, title, &GoalRecord::title) == goals.end();
}

std::variant<int, Failure> desktopNamed(const QString& name, const QStringList& desktops)
{
    const QString wanted = trimmedText(name);
    bool isNumber = false;
    const qlonglong number = wanted.toLongLong(&isNumber);
    if (isNumber && number >= 1 && number <= desktops.size())
        return static_cast<int>(number);
    const qsizetype count = isNumber || wanted.isEmpty() ? 0 : desktops.count(wanted);
    if (count == 1)
        return static_cast<int>(desktops.indexOf(wanted)) + 1;
    const QString quoted = singleLine(name.left(longestQuotedName));
    if (count > 1)
        return Failure{FailureKind::ambiguousName,
                       QStringLiteral("'%1' names %2 virtual desktops; name one by its number")
                           .arg(quoted, QString::number(count))};
    return Failure{FailureKind::unknownDesktop,
                   QStringLiteral("there is no virtual desktop '%1'; there are %2")
                       .arg(quoted, QString::number(desktops.size()))};
}

} // namespace kelpa::automation
