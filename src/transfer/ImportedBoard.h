// What a file holds for the board, or why it holds nothing: the results of reading an import.
#pragma once

#include "model/Goal.h"

#include <QList>
#include <QString>

#include <cstdint>
#include <variant>

namespace kelpa {

/// Why a whole file is refused.
enum class ImportRefusal : std::uint8_t {
    /// No byte, or only white space.
    empty,
    /// More than `largestImport` bytes.
    tooLarge,
    /// More than `mostImportedRecords` goals and todos.
    tooManyRecords,
    /// Neither UTF-8 nor UTF-16 with a byte order mark, or with a NUL.
    wrongEncoding,
    /// Not of the format, or of none that Kelpa knows.
    notThisFormat,
    /// Begins as the format does, but ends within it.
    cutOff,
    /// Kelpa's own format, written by a later Kelpa.
    newerVersion,
    /// Kelpa's own format, which says every field, with a record that breaks its rules.
    damaged,
    /// Of the format, but without a goal or todo.
    nothingToImport,
};

/// In bytes. A board of 100,000 todos has about a fifth of it.
inline constexpr qsizetype largestImport = qsizetype{64} * 1024 * 1024;
/// Goals and todos together.
inline constexpr qsizetype mostImportedRecords = 250'000;

/// Why a part of a file was left out.
enum class SkipReason : std::uint8_t {
    /// Text between lists, an appointment, a table.
    notATodo,
    /// A todo or a goal without a word.
    withoutTitle,
    /// Something that the board has no place for: a due date, notes.
    withoutPlace,
    /// Breaks the rules of the format, so that nobody can tell what it was.
    damaged,
};

struct SkippedLine
{
    /// From 1.
    qsizetype line = 0;
    /// The beginning of the line, as a view can show it.
    QString text;
    SkipReason reason = SkipReason::notATodo;

    friend bool operator==(const SkippedLine&, const SkippedLine&) = default;
};

/// Lines beyond these are counted only.
inline constexpr qsizetype mostListedSkippedLines = 100;

struct ImportedBoard
{
    /// In the order of the file; `order` follows it across the whole board. No two have the same
    /// identity.
    QList<Goal> goals;
    QList<TodoItem> todosWithoutGoal;
    /// Whether the file says every field (Kelpa's JSON): all are then as it has them, `order` too.
    /// Otherwise identities are new, titles are trimmed, and `accent` means nothing.
    bool hasAllFields = false;

    /// The first ones, in the order of the file.
    QList<SkippedLine> skipped;
    qsizetype skippedCount = 0;

    friend bool operator==(const ImportedBoard&, const ImportedBoard&) = default;
};

using ImportResult = std::variant<ImportedBoard, ImportRefusal>;

} // namespace kelpa
