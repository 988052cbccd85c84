#include "automation/Names.h"

#include "model/Text.h"

#include <QStringList>

#include <utility>

namespace kelpa::automation {

namespace {

/// How many records a message lists.
constexpr qsizetype mostListed = 5;

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
                .arg(singleLine(name))
                .arg(found.size())
                .arg(kinds, lines.join(u'\n'))};
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

} // namespace kelpa::automation
