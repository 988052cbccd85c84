// What a search finds on the board beside the windows that it narrows: titles of goals and todos,
// and what lies in goals that the board hides.
#pragma once

#include "model/Goal.h"
#include "model/WindowItem.h"

#include <QList>
#include <QLocale>
#include <QSet>
#include <QString>

#include <cstdint>
#include <optional>

namespace kelpa {

/// Empty while nothing is searched.
struct SearchFindings
{
    bool isSearching = false;
    /// The goals that the board shows and whose titles match.
    QSet<GoalID> goals;
    /// The todos that the board shows and whose titles match.
    QSet<TodoID> todos;
    /// The goals that the board shows in which anything matches: title, todo or window.
    QSet<GoalID> goalsWithMatches;
    /// Whether the same holds for the column of what belongs to no goal.
    bool hasUnassignedMatches = false;
    /// The windows that match and that the board shows.
    qsizetype windowCount = 0;
    /// How many windows and goals match that the board hides.
    qsizetype hiddenCount = 0;

    friend bool operator==(const SearchFindings&, const SearchFindings&) = default;
};

/// Whether anything matches in the column of a goal, or of what belongs to none.
bool hasMatches(const SearchFindings& findings, const std::optional<GoalID>& goalID);

/// Whether goals without open todos are hidden.
enum class EmptyGoals : std::uint8_t { shown, hidden };

/// `foundWindows` are the windows that match.
SearchFindings searchFindings(const QList<Goal>& goals, const QList<TodoItem>& unassignedTodos,
                              const QList<WindowItem>& foundWindows, EmptyGoals emptyGoals,
                              const QString& searchText, const QLocale& locale);

/// The goals that the board hides.
struct HiddenGoals
{
    qsizetype count = 0;
    /// Those of them that hold windows.
    qsizetype countWithWindows = 0;

    friend bool operator==(const HiddenGoals&, const HiddenGoals&) = default;
};

HiddenGoals hiddenGoals(const QList<Goal>& goals, const QList<WindowItem>& windows,
                        EmptyGoals emptyGoals);

} // namespace kelpa
