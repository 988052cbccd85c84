// The place on the board that undo and redo select: where the board differs from before.
#pragma once

#include "navigation/BoardNavigationState.h"
#include "store/board/BoardContents.h"

#include <optional>

namespace kelpa {

struct RestorationTarget
{
    TargetSelection target = TargetSelection::none();
    /// The todo that came back, changed or moved there; absent when no todo did.
    std::optional<TodoID> todoID = std::nullopt;
    /// Whether a window moved there, and nothing else that can be seen differs.
    bool isPlaceOfWindow = false;

    friend bool operator==(const RestorationTarget&, const RestorationTarget&) = default;
};

/// The column that gained something, or else the one that looks different, or else the place of
/// the window that moved, or else the goal that moved, or else the list of all todos; that list
/// before all others for a person who is at it (`present`), when it shows all that differs. None
/// when nothing can be seen: the boards are the same, or `after` lacks a goal and nothing else.
///
/// `before` and `after` are a single operation apart. Where one operation affects several columns
/// alike, the first in the order of the board is the target.
std::optional<RestorationTarget> restorationTarget(const BoardContents& before,
                                                   const BoardContents& after,
                                                   const TargetSelection& present);

} // namespace kelpa
