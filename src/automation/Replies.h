// What a request receives: records of the board, or the reason why nothing was done.
#pragma once

#include "model/Date.h"
#include "model/GoalPriority.h"
#include "model/Identifiers.h"
#include "model/TodoItem.h"

#include <QList>
#include <QString>

#include <cstdint>
#include <optional>
#include <variant>

namespace kelpa::automation {

struct GoalRecord
{
    GoalID id;
    QString title;
    GoalPriority priority = defaultGoalPriority;
    std::uint32_t openTodos = 0;
    std::uint32_t todos = 0;
    /// The number of the virtual desktop that it is pinned to, from 1; 0 for none.
    std::uint32_t desktop = 0;

    friend bool operator==(const GoalRecord&, const GoalRecord&) = default;
};

struct TodoRecord
{
    TodoID id;
    QString title;
    TodoStatus status = TodoStatus::todo;
    /// "2026-03-01T09:30:00Z"; empty where the todo is not completed.
    QString completedAt;
    /// Absent: "Unsorted".
    std::optional<GoalID> goal;

    friend bool operator==(const TodoRecord&, const TodoRecord&) = default;
};

struct WindowRecord
{
    WindowID id = 0;
    QString title;
    QString application;
    /// Absent: "Unsorted".
    std::optional<GoalID> goal;
    bool isMinimized = false;

    friend bool operator==(const WindowRecord&, const WindowRecord&) = default;
};

struct Nothing
{
    friend bool operator==(const Nothing&, const Nothing&) = default;
};

/// A goal or a todo was added.
struct Added
{
    QUuid id;

    friend bool operator==(const Added&, const Added&) = default;
};

using Reply =
    std::variant<Nothing, Added, QList<GoalRecord>, QList<TodoRecord>, QList<WindowRecord>>;

/// Why a request did nothing. The names on the bus are those in `errorName`.
enum class FailureKind : std::uint8_t {
    /// There is no such method.
    unknownMethod,
    /// An argument is missing, too many or of another type, or no word that Kelpa knows.
    invalidArguments,
    unknownGoal,
    unknownTodo,
    unknownWindow,
    unknownDesktop,
    /// A title names more than one.
    ambiguousName,
    emptyTitle,
    titleTooLong,
    /// Goals are sorted automatically, so nobody can move them.
    automaticOrder,
    nothingToUndo,
    nothingToRedo,
    nothingToGoBackTo,
    /// The goal has none that is listed.
    noWindows,
    /// The board is closed, so the windows are not known.
    windowsNotFollowed,
    /// The desktop does not offer it, or does not let Kelpa.
    notOffered,
    /// The answer would be longer than a caller may make the board write.
    tooLarge,
    /// Too many requests wait already.
    busy,
    /// Kelpa is starting or ending.
    notReady,
    /// No Kelpa runs, and there is nothing to be done without.
    notRunning,
    /// Kelpa or the bus does not reply.
    silent,
    /// The board's file cannot be read or written.
    notSaved,
    /// What has Kelpa's name on the bus answers as no Kelpa of this version does.
    unexpectedReply,
};

struct Failure
{
    FailureKind kind = FailureKind::invalidArguments;
    /// A sentence without a full stop, for a person, in English as all of the command line.
    QString message;

    friend bool operator==(const Failure&, const Failure&) = default;
};

using Outcome = std::variant<Reply, Failure>;

} // namespace kelpa::automation
