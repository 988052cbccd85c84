// What a backup holds, in a few lines, for a person who chooses among several.
#pragma once

#include "store/board/BoardContents.h"

#include <QList>
#include <QString>

namespace kelpa {

struct BackupSummary
{
    struct Line
    {
        QString title;
        qsizetype openTodoCount = 0;

        friend bool operator==(const Line&, const Line&) = default;
    };

    /// In board order.
    QList<Line> goals;
    qsizetype goalCount = 0;
    /// Of the whole board.
    qsizetype openTodoCount = 0;
    qsizetype openTodosWithoutGoal = 0;

    friend bool operator==(const BackupSummary&, const BackupSummary&) = default;
};

BackupSummary summaryOf(const BoardContents& board);

} // namespace kelpa
