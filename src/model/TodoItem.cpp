#include "model/TodoItem.h"

#include "model/RawValues.h"

namespace kelpa {

namespace {

constexpr RawValues<TodoStatus, 3> statusRawValues{{{
    {TodoStatus::todo, u"todo"},
    {TodoStatus::ing, u"ing"},
    {TodoStatus::completed, u"completed"},
}}};

} // namespace

QString rawValue(TodoStatus status)
{
    return statusRawValues.text(status);
}

std::optional<TodoStatus> todoStatusFromRawValue(QStringView text)
{
    return statusRawValues.value(text);
}

size_t qHash(const TodoItem& todo, size_t seed)
{
    const Date completedAt = todo.completedAt.value_or(Date::distantPast());
    return qHashMulti(seed, todo.id, todo.title, static_cast<int>(todo.status),
                      todo.completedAt.has_value(), completedAt, todo.order);
}

} // namespace kelpa
