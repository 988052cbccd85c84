// The values in the board's file, and the files beside it.
#include "fuzz/FuzzTarget.h"
#include "model/BoardJson.h"
#include "model/GoalPins.h"
#include "model/WindowMemoryJson.h"
#include "platform/numbers/NameTable.h"
#include "platform/numbers/WindowOwnersFile.h"
#include "store/board/BackupSummary.h"
#include "store/board/BoardPersistence.h"

#include <QList>

#include <array>

namespace kelpa::fuzz {

void decodeGoalsDocument(const QByteArray& bytes)
{
    const auto goals = decodeGoals(bytes);
    if (!goals)
        return;
    const auto encoded = encodeGoals(*goals);
    require(encoded.has_value(), "goals that were read can be stored");
    require(decodeGoals(*encoded) == goals, "stored goals are read as they were");
    for (const Goal& goal : *goals)
        require(goal.visibleTodos().size() <= goal.todos.size(), "a goal shows todos that it has");
}

void decodeTodosDocument(const QByteArray& bytes)
{
    const auto todos = decodeTodos(bytes);
    if (!todos)
        return;
    const auto encoded = encodeTodos(*todos);
    require(encoded.has_value(), "todos that were read can be stored");
    require(decodeTodos(*encoded) == todos, "stored todos are read as they were");
}

void decodeAssignmentsDocument(const QByteArray& bytes)
{
    const auto assignments = decodeAssignments(bytes);
    if (assignments)
        require(decodeAssignments(encodeAssignments(*assignments)) == assignments,
                "stored assignments are read as they were");
}

void decodeGoalPinsDocument(const QByteArray& bytes)
{
    const auto pins = decodeGoalPins(bytes);
    if (pins)
        require(decodeGoalPins(encodeGoalPins(*pins)) == pins, "stored pins are read as they were");
    if (const auto links = decodeDesktopLinks(bytes))
        require(decodeDesktopLinks(encodeDesktopLinks(*links)) == links, "and what they mean");
}

void decodeWindowMemory(const QByteArray& bytes)
{
    const auto windows = decodeRememberedWindows(bytes);
    if (!windows)
        return;
    const QByteArray encoded = encodeRememberedWindows(*windows);
    const auto again = decodeRememberedWindows(encoded);
    require(again.has_value(), "remembered windows that were read can be stored");
    require(encodeRememberedWindows(*again) == encoded, "and stay as they are");
}

/// Documents of a whole board, each ended by a byte that no JSON has.
void decodeStoredBoard(const QByteArray& bytes)
{
    const QList<QByteArray> documents = bytes.split('\x1e');
    const std::array keys{goalsKey,       unassignedTodosKey,   assignmentsKey,
                          legacyGoalsKey, legacyAssignmentsKey, goalPinsKey};
    QMap<QString, SettingsValue> values;
    for (qsizetype i = 0; i < documents.size() && i < static_cast<qsizetype>(keys.size()); ++i) {
        if (!documents[i].isEmpty())
            values.insert(keys.at(static_cast<std::size_t>(i)), documents[i]);
    }
    const std::optional<BoardContents> board = boardIn(values);
    if (!board)
        return;
    const BackupSummary summary = summaryOf(*board);
    require(summary.goalCount == board->goals.size(), "a backup's summary counts its goals");
    require(wholeBoardEntries(*board).has_value(), "a board that was read can be stored");
}

void decodeNameTable(const QByteArray& bytes)
{
    const auto table = decodedNameTable(bytes);
    if (table)
        require(encodedNameTable(*table) == bytes, "only what Kelpa writes is a table of names");
}

void decodeWindowOwners(const QByteArray& bytes)
{
    const auto owners = decodedOwners(bytes);
    if (owners)
        require(encoded(*owners) == bytes, "only what Kelpa writes is a list of owners");
}

} // namespace kelpa::fuzz
