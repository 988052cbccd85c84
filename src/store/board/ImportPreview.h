// What an import would bring, in a few lines, for a person who decides about it.
#pragma once

#include "store/board/BackupSummary.h"
#include "transfer/ImportedBoard.h"
#include "transfer/TransferFormat.h"

#include <QList>
#include <QStringList>

namespace kelpa {

struct ImportPreview
{
    TransferFormat format = TransferFormat::json;
    /// Its goals in the order of the file.
    BackupSummary summary;
    /// Of all goals and without a goal, completed ones included.
    qsizetype todoCount = 0;
    /// The titles of the first todos in the order of the file, each in a single line.
    QStringList firstTodos;
    /// The first ones of `skippedCount`.
    QList<SkippedLine> skipped;
    qsizetype skippedCount = 0;

    friend bool operator==(const ImportPreview&, const ImportPreview&) = default;
};

/// How many titles `firstTodos` has at most.
inline constexpr qsizetype mostFirstTodos = 8;

ImportPreview previewOf(const ImportedBoard& board, TransferFormat format);

} // namespace kelpa
