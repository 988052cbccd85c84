// A large board, the same in every run.
#pragma once

#include "model/BoardJson.h"
#include "model/Goal.h"

#include <QList>
#include <QString>
#include <QUuid>

#include <random>

namespace kelpa::bench {

/// `goalCount` goals that share `todoCount` todos evenly, every third of them completed. Titles are
/// of the length that people write, a tenth of them in Chinese.
inline QList<Goal> largeBoard(int goalCount, int todoCount)
{
    std::mt19937_64 random(20'010'101);
    const auto uuid = [&random] {
        const quint64 high = random();
        const quint64 low = random();
        return QUuid(static_cast<uint>(high), static_cast<ushort>(high >> 32),
                     static_cast<ushort>(high >> 48), static_cast<uchar>(low),
                     static_cast<uchar>(low >> 8), static_cast<uchar>(low >> 16),
                     static_cast<uchar>(low >> 24), static_cast<uchar>(low >> 32),
                     static_cast<uchar>(low >> 40), static_cast<uchar>(low >> 48),
                     static_cast<uchar>(low >> 56));
    };

    QList<Goal> goals;
    for (int i = 0; i < goalCount; ++i) {
        goals.append({GoalID{uuid()},
                      QStringLiteral("Goal %1 of the quarter").arg(i),
                      allGoalAccents.at(static_cast<std::size_t>(i) % allGoalAccents.size()),
                      allGoalPriorities.at(static_cast<std::size_t>(i) % allGoalPriorities.size()),
                      {}});
    }
    for (int i = 0; i < todoCount; ++i) {
        TodoItem todo{TodoID{uuid()},
                      i % 10 == 0
                          ? QStringLiteral("给客户回信，确认第 %1 号报价单的交付日期").arg(i)
                          : QStringLiteral("Answer letter %1 about the spring offer").arg(i),
                      i % 2 == 0 ? TodoStatus::todo : TodoStatus::ing, std::nullopt, i};
        if (i % 3 == 0) {
            todo.status = TodoStatus::completed;
            todo.completedAt = Date{785'000'000.125 + i * 61.7};
        }
        goals[i % goalCount].todos.append(todo);
    }
    return goals;
}

} // namespace kelpa::bench
