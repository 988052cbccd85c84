// Requests that need Kelpa's window or those of other programs.
#pragma once

#include "automation/RequestParts.h"
#include "model/Identifiers.h"

#include <QString>

#include <array>
#include <optional>
#include <tuple>

namespace kelpa::automation {

struct ListWindows : WithoutParameters
{
    static constexpr const char* name = "ListWindows";
    static constexpr ReplyKind reply = ReplyKind::windows;
};

struct AssignWindow
{
    WindowID window = 0;
    /// Absent: "Unsorted".
    std::optional<GoalID> goal;

    static constexpr const char* name = "AssignWindow";
    static constexpr ReplyKind reply = ReplyKind::nothing;
    static constexpr std::array parameters{"window", "goal"};
    template <class Self>
    static auto fields(Self& self)
    {
        return std::tie(self.window, self.goal);
    }
    friend bool operator==(const AssignWindow&, const AssignWindow&) = default;
};

/// Brings the board forward with the goal selected.
struct ShowGoal
{
    GoalID goal;
    /// The caller's activation token or startup id; empty without one.
    QString activationToken;

    static constexpr const char* name = "ShowGoal";
    static constexpr ReplyKind reply = ReplyKind::nothing;
    static constexpr std::array parameters{"goal", "activation_token"};
    template <class Self>
    static auto fields(Self& self)
    {
        return std::tie(self.goal, self.activationToken);
    }
    friend bool operator==(const ShowGoal&, const ShowGoal&) = default;
};

/// Brings the goal's windows forward.
struct RaiseWindows
{
    GoalID goal;

    static constexpr const char* name = "RaiseWindows";
    static constexpr ReplyKind reply = ReplyKind::nothing;
    static constexpr std::array parameters{"goal"};
    template <class Self>
    static auto fields(Self& self)
    {
        return std::tie(self.goal);
    }
    friend bool operator==(const RaiseWindows&, const RaiseWindows&) = default;
};

/// Pins the goal to a virtual desktop.
struct PinGoal
{
    GoalID goal;
    /// Its number, from 1, or its name; empty for none.
    QString desktop;

    static constexpr const char* name = "PinGoal";
    static constexpr ReplyKind reply = ReplyKind::nothing;
    static constexpr std::array parameters{"goal", "desktop"};
    template <class Self>
    static auto fields(Self& self)
    {
        return std::tie(self.goal, self.desktop);
    }
    friend bool operator==(const PinGoal&, const PinGoal&) = default;
};

/// Brings the goal's windows forward and minimises the others.
struct WorkOnGoal
{
    GoalID goal;

    static constexpr const char* name = "WorkOnGoal";
    static constexpr ReplyKind reply = ReplyKind::nothing;
    static constexpr std::array parameters{"goal"};
    template <class Self>
    static auto fields(Self& self)
    {
        return std::tie(self.goal);
    }
    friend bool operator==(const WorkOnGoal&, const WorkOnGoal&) = default;
};

/// Restores what that changed.
struct GoBack : WithoutParameters
{
    static constexpr const char* name = "GoBack";
    static constexpr ReplyKind reply = ReplyKind::nothing;
};

} // namespace kelpa::automation
