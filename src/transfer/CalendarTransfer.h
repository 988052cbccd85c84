// iCalendar: goals and todos as VTODO components, each todo related to its goal's as to its parent.
#pragma once

#include "model/Date.h"
#include "model/Goal.h"
#include "transfer/ImportedBoard.h"

#include <QByteArray>
#include <QList>
#include <QTimeZone>

#include <stop_token>

namespace kelpa {

QByteArray toCalendar(const QList<Goal>& goals, const QList<TodoItem>& todosWithoutGoal, Date now);
ImportResult fromCalendar(const QByteArray& bytes, const QTimeZone& zone,
                          const std::stop_token& stop);

} // namespace kelpa
