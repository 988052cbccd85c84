#include "transfer/Transfer.h"

#include "transfer/CalendarTransfer.h"
#include "transfer/JsonTransfer.h"
#include "transfer/MarkdownTransfer.h"
#include "transfer/TodoTxtTransfer.h"

namespace kelpa {

std::optional<QByteArray> exported(TransferFormat format, const QList<Goal>& goals,
                                   const QList<TodoItem>& todosWithoutGoal,
                                   const TransferClock& clock)
{
    switch (format) {
    case TransferFormat::json:
        return toJson(goals, todosWithoutGoal);
    case TransferFormat::markdown:
        return toMarkdown(goals, todosWithoutGoal);
    case TransferFormat::todoTxt:
        return toTodoTxt(goals, todosWithoutGoal, clock.zone);
    case TransferFormat::iCalendar:
        return toCalendar(goals, todosWithoutGoal, clock.now);
    }
    Q_UNREACHABLE();
}

ImportResult readImport(const QByteArray& bytes, TransferFormat format, const TransferClock& clock,
                        const std::stop_token& stop)
{
    switch (format) {
    case TransferFormat::json:
        return fromJson(bytes);
    case TransferFormat::markdown:
        return fromMarkdown(bytes, stop);
    case TransferFormat::todoTxt:
        return fromTodoTxt(bytes, clock.zone, stop);
    case TransferFormat::iCalendar:
        return fromCalendar(bytes, clock.zone, stop);
    }
    Q_UNREACHABLE();
}

} // namespace kelpa
