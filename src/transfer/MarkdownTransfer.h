// Markdown: goals as headings, todos as task lists. Other people's lists are read as far as they
// can be understood.
#pragma once

#include "model/Goal.h"
#include "transfer/ImportedBoard.h"

#include <QByteArray>
#include <QList>

#include <stop_token>

namespace kelpa {

QByteArray toMarkdown(const QList<Goal>& goals, const QList<TodoItem>& todosWithoutGoal);
ImportResult fromMarkdown(const QByteArray& bytes, const std::stop_token& stop);

} // namespace kelpa
