// Requests about the list of goals.
#pragma once

#include "automation/RequestParts.h"
#include "model/GoalPriority.h"
#include "model/Identifiers.h"
#include "store/board/MovePlace.h"

#include <QString>

#include <array>
#include <tuple>

namespace kelpa::automation {

struct ListGoals : WithoutParameters
{
    static constexpr const char* name = "ListGoals";
    static constexpr ReplyKind reply = ReplyKind::goals;
};

struct AddGoal
{
    QString title;

    static constexpr const char* name = "AddGoal";
    static constexpr ReplyKind reply = ReplyKind::identifier;
    static constexpr std::array parameters{"title"};
    template <class Self>
    static auto fields(Self& self)
    {
        return std::tie(self.title);
    }
    friend bool operator==(const AddGoal&, const AddGoal&) = default;
};

struct RenameGoal
{
    GoalID goal;
    QString title;

    static constexpr const char* name = "RenameGoal";
    static constexpr ReplyKind reply = ReplyKind::nothing;
    static constexpr std::array parameters{"goal", "title"};
    template <class Self>
    static auto fields(Self& self)
    {
        return std::tie(self.goal, self.title);
    }
    friend bool operator==(const RenameGoal&, const RenameGoal&) = default;
};

struct SetGoalPriority
{
    GoalID goal;
    GoalPriority priority = defaultGoalPriority;

    static constexpr const char* name = "SetGoalPriority";
    static constexpr ReplyKind reply = ReplyKind::nothing;
    static constexpr std::array parameters{"goal", "priority"};
    template <class Self>
    static auto fields(Self& self)
    {
        return std::tie(self.goal, self.priority);
    }
    friend bool operator==(const SetGoalPriority&, const SetGoalPriority&) = default;
};

struct MoveGoal
{
    GoalID goal;
    GoalID target;
    MovePlace place = MovePlace::before;

    static constexpr const char* name = "MoveGoal";
    static constexpr ReplyKind reply = ReplyKind::nothing;
    static constexpr std::array parameters{"goal", "target", "behind"};
    template <class Self>
    static auto fields(Self& self)
    {
        return std::tie(self.goal, self.target, self.place);
    }
    friend bool operator==(const MoveGoal&, const MoveGoal&) = default;
};

struct DeleteGoal
{
    GoalID goal;

    static constexpr const char* name = "DeleteGoal";
    static constexpr ReplyKind reply = ReplyKind::nothing;
    static constexpr std::array parameters{"goal"};
    template <class Self>
    static auto fields(Self& self)
    {
        return std::tie(self.goal);
    }
    friend bool operator==(const DeleteGoal&, const DeleteGoal&) = default;
};

} // namespace kelpa::automation
