// Writes a board in one of the formats, and reads one from it. docs/formats.md says what each
// format holds. Pure functions; any thread.
#pragma once

#include "model/Date.h"
#include "model/Goal.h"
#include "transfer/ImportedBoard.h"
#include "transfer/TransferFormat.h"

#include <QByteArray>
#include <QList>
#include <QTimeZone>

#include <optional>
#include <stop_token>

namespace kelpa {

/// What formats with calendar dates need to know.
struct TransferClock
{
    Date now;
    /// Where days begin, and what times without a zone mean.
    QTimeZone zone = QTimeZone::systemTimeZone();
};

/// The file, UTF-8. For one goal, the list with that goal alone and no other todo. Absent when the
/// format has no form for a value (`encodeGoals`); the file of a board without todos may be empty.
std::optional<QByteArray> exported(TransferFormat format, const QList<Goal>& goals,
                                   const QList<TodoItem>& todosWithoutGoal,
                                   const TransferClock& clock);

/// Reads a whole file. Takes a time that grows with the size of the file and no faster, and memory
/// that is bounded by `largestImport`. Once `stop` is requested, may end early with any result.
ImportResult readImport(const QByteArray& bytes, TransferFormat format, const TransferClock& clock,
                        const std::stop_token& stop = {});

} // namespace kelpa
