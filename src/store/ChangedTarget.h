// Where on the board a person finds what differs between two versions of it.
#pragma once

#include "navigation/BoardNavigationState.h"
#include "store/BoardContents.h"

#include <optional>

namespace kelpa {

/// The target that came back or was given something; without one, a target whose title, todos or
/// windows differ otherwise, also in their order. The list of all todos when only the order of the
/// whole board differs; a goal that was moved when only the order of the goals does. None when
/// there is nothing to be seen: both are the same, or `after` lacks a goal and nothing else.
std::optional<TargetSelection> changedTarget(const BoardContents& before,
                                             const BoardContents& after);

} // namespace kelpa
