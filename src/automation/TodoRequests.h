// Requests about todos.
#pragma once

#include "automation/RequestParts.h"
#include "model/Identifiers.h"
#include "model/TodoItem.h"
#include "store/board/MovePlace.h"

#include <QString>

#include <array>
#include <optional>
#include <tuple>

namespace kelpa::automation {

struct ListTodos : WithoutParameters
{
    static constexpr const char* name = "ListTodos";
    static constexpr ReplyKind reply = ReplyKind::todos;
};

struct AddTodo
{
    QString title;
    /// Absent: "Unsorted".
    std::optional<GoalID> goal;

    static constexpr const char* name = "AddTodo";
    static constexpr ReplyKind reply = ReplyKind::identifier;
    static constexpr std::array parameters{"title", "goal"};
    template <class Self>
    static auto fields(Self& self)
    {
        return std::tie(self.title, self.goal);
    }
    friend bool operator==(const AddTodo&, const AddTodo&) = default;
};

struct RenameTodo
{
    TodoID todo;
    QString title;

    static constexpr const char* name = "RenameTodo";
    static constexpr ReplyKind reply = ReplyKind::nothing;
    static constexpr std::array parameters{"todo", "title"};
    template <class Self>
    static auto fields(Self& self)
    {
        return std::tie(self.todo, self.title);
    }
    friend bool operator==(const RenameTodo&, const RenameTodo&) = default;
};

struct SetTodoStatus
{
    TodoID todo;
    TodoStatus status = TodoStatus::todo;

    static constexpr const char* name = "SetTodoStatus";
    static constexpr ReplyKind reply = ReplyKind::nothing;
    static constexpr std::array parameters{"todo", "status"};
    template <class Self>
    static auto fields(Self& self)
    {
        return std::tie(self.todo, self.status);
    }
    friend bool operator==(const SetTodoStatus&, const SetTodoStatus&) = default;
};

/// To another list.
struct MoveTodo
{
    TodoID todo;
    /// Absent: "Unsorted".
    std::optional<GoalID> goal;

    static constexpr const char* name = "MoveTodo";
    static constexpr ReplyKind reply = ReplyKind::nothing;
    static constexpr std::array parameters{"todo", "goal"};
    template <class Self>
    static auto fields(Self& self)
    {
        return std::tie(self.todo, self.goal);
    }
    friend bool operator==(const MoveTodo&, const MoveTodo&) = default;
};

/// Within the order of the whole board.
struct PlaceTodo
{
    TodoID todo;
    TodoID target;
    MovePlace place = MovePlace::before;

    static constexpr const char* name = "PlaceTodo";
    static constexpr ReplyKind reply = ReplyKind::nothing;
    static constexpr std::array parameters{"todo", "target", "behind"};
    template <class Self>
    static auto fields(Self& self)
    {
        return std::tie(self.todo, self.target, self.place);
    }
    friend bool operator==(const PlaceTodo&, const PlaceTodo&) = default;
};

struct DeleteTodo
{
    TodoID todo;

    static constexpr const char* name = "DeleteTodo";
    static constexpr ReplyKind reply = ReplyKind::nothing;
    static constexpr std::array parameters{"todo"};
    template <class Self>
    static auto fields(Self& self)
    {
        return std::tie(self.todo);
    }
    friend bool operator==(const DeleteTodo&, const DeleteTodo&) = default;
};

} // namespace kelpa::automation
