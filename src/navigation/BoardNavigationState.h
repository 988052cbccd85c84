// The keyboard selection on the board.
#pragma once

#include "model/Identifiers.h"

#include <cstdint>
#include <optional>
#include <variant>

namespace kelpa {

/// One target of the board: a goal, the unified todo column, the unassigned column, or nothing.
class TargetSelection
{
public:
    static TargetSelection goal(GoalID id) { return TargetSelection(id); }
    static TargetSelection none() { return TargetSelection(Kind::none); }
    static TargetSelection unifiedTodos() { return TargetSelection(Kind::unifiedTodos); }
    static TargetSelection unassigned() { return TargetSelection(Kind::unassigned); }
    /// Where what belongs to the goal is shown, or to none.
    static TargetSelection of(std::optional<GoalID> id) { return id ? goal(*id) : unassigned(); }

    bool isNone() const { return *this == none(); }
    bool isUnifiedTodos() const { return *this == unifiedTodos(); }
    bool isUnassigned() const { return *this == unassigned(); }

    /// The selected goal, when the target is one.
    std::optional<GoalID> goalID() const
    {
        const GoalID* const id = std::get_if<GoalID>(&m_value);
        return id != nullptr ? std::optional<GoalID>(*id) : std::nullopt;
    }

    friend bool operator==(const TargetSelection&, const TargetSelection&) = default;

private:
    enum class Kind : std::uint8_t { none, unifiedTodos, unassigned };

    explicit TargetSelection(GoalID id) : m_value(id) {}
    explicit TargetSelection(Kind kind) : m_value(kind) {}

    std::variant<Kind, GoalID> m_value;
};

/// Whether the selection moves between targets or between the windows inside one.
enum class BoardNavigationLayer : std::uint8_t { targets, windows };

/// Whether a target that is activated is entered, where it has windows.
enum class EnterWindowLayer : std::uint8_t { no, yes };

enum class NavigationDirection : std::uint8_t { left, right, up, down };

/// In the `windows` layer a target and a window are selected; in the `targets` layer no window is.
struct BoardNavigationState
{
    TargetSelection target = TargetSelection::none();
    BoardNavigationLayer layer = BoardNavigationLayer::targets;
    std::optional<WindowID> selectedWindowID;

    static BoardNavigationState idle() { return {}; }
    /// On `target` itself.
    static BoardNavigationState on(TargetSelection target)
    {
        return {target, BoardNavigationLayer::targets, std::nullopt};
    }
    /// Inside `target`, on the window `id`.
    static BoardNavigationState inside(TargetSelection target, WindowID id)
    {
        return {target, BoardNavigationLayer::windows, id};
    }

    friend bool operator==(const BoardNavigationState&, const BoardNavigationState&) = default;
};

} // namespace kelpa
