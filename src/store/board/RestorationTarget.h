// Where on the board a person finds what differs between two versions of it.
#pragma once

#include "navigation/BoardNavigationState.h"
#include "store/board/BoardContents.h"

#include <optional>

namespace kelpa {

struct RestorationTarget
{
    TargetSelection target = TargetSelection::none();
    /// The todo that came back, changed or moved there; absent when it was none.
    std::optional<TodoID> todoID = std::nullopt;
    /// It is where a window went, and nothing else that can be seen differs.
    bool isPlaceOfWindow = false;

    friend bool operator==(const RestorationTarget&, const RestorationTarget&) = default;
};

/// The target that came back or was given something; without one, a target whose title, todos or
/// windows differ otherwise, also in their order. A person who is at the list of all todos
/// (`present`) stays there when it shows all that differs. That list, too, when only the order of
/// the whole board differs; a goal that was moved when only the order of the goals does; the place
/// of the window for which a goal was made that has gone. None when there is nothing to be seen:
/// both are the same, or `after` lacks a goal and nothing else.
std::optional<RestorationTarget> restorationTarget(const BoardContents& before,
                                                   const BoardContents& after,
                                                   const TargetSelection& present);

} // namespace kelpa
