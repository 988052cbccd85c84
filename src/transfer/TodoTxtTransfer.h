// todo.txt: a todo a line, a goal as +project. What has no place on the board stays in the title.
#pragma once

#include "model/Goal.h"
#include "transfer/ImportedBoard.h"

#include <QByteArray>
#include <QList>
#include <QTimeZone>

#include <stop_token>

namespace kelpa {

QByteArray toTodoTxt(const QList<Goal>& goals, const QList<TodoItem>& todosWithoutGoal,
                     const QTimeZone& zone);
ImportResult fromTodoTxt(const QByteArray& bytes, const QTimeZone& zone,
                         const std::stop_token& stop);

} // namespace kelpa
