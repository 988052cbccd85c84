// One todo of the board, and the states it passes through.
#pragma once

#include "model/Date.h"
#include "model/Identifiers.h"

#include <QString>

#include <cstdint>
#include <optional>

namespace kelpa {

enum class TodoStatus : std::uint8_t { todo, ing, completed };

/// The stored text of a status, and back; absent for any other text.
QString rawValue(TodoStatus status);
std::optional<TodoStatus> todoStatusFromRawValue(QStringView text);

struct TodoItem
{
    /// Kept when the todo moves between lists.
    TodoID id;
    QString title;
    TodoStatus status = TodoStatus::todo;
    /// When the todo was last marked completed; absent otherwise.
    std::optional<Date> completedAt;
    /// Position among all todos of the board; lists show ascending `order`.
    std::int64_t order = 0;

    bool isOpen() const { return status != TodoStatus::completed; }

    friend bool operator==(const TodoItem&, const TodoItem&) = default;
};

size_t qHash(const TodoItem& todo, size_t seed = 0);

} // namespace kelpa
