// Which goals are offered for what a person types after a number sign, and which goal a whole text
// names.
#pragma once

#include "model/GoalAccent.h"
#include "model/Identifiers.h"
#include "views/entry/GoalMention.h"

#include <QList>
#include <QLocale>
#include <QString>
#include <QUuid>

#include <optional>

namespace kelpa {

/// A list that a todo can be added to.
struct EntryGoal
{
    /// Absent for "Unsorted".
    std::optional<GoalID> goalID;
    QString title;
    GoalAccent accent = GoalAccent::blue;

    QUuid key() const { return goalID ? goalID->value : QUuid(); }

    friend bool operator==(const EntryGoal&, const EntryGoal&) = default;
};

/// The goals in whose titles the query is found, as the search finds it, and whatever the width of
/// the letters. First those whose whole title it is, then those that begin with it, those with a
/// word that does, and the others; otherwise in order. An empty query finds all of them.
QList<EntryGoal> matchingGoals(const QList<EntryGoal>& goals, const QString& query,
                               const QLocale& locale);

/// Whether the text is the title, but for case, width and white space at the ends.
bool isTitleOf(const EntryGoal& goal, const QString& text, const QLocale& locale);

struct NamedGoal
{
    EntryGoal goal;
    GoalMention mention;
};

/// The last mention in the text that has the whole title of one of the goals, up to a space, a
/// punctuation mark at the end of a word, or the end of the text; the longest such title. A mention
/// that starts at `declined` does not count, nor do titles of more than some lines.
std::optional<NamedGoal> goalNamedIn(const QString& text, const QList<EntryGoal>& goals,
                                     const QLocale& locale,
                                     std::optional<qsizetype> declined = std::nullopt);

/// The goal that a todo is for unless the person says otherwise: that of the window in front, else
/// the one that got the last todo, else none. Goals that are not there any more do not count.
std::optional<GoalID> proposedGoal(const QList<EntryGoal>& goals, std::optional<GoalID> ofWindow,
                                   std::optional<GoalID> last);

} // namespace kelpa
