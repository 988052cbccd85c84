// Puts an imported board beside the present one or in its place.
#pragma once

#include "store/board/BoardContents.h"
#include "store/board/BoardPersistence.h"
#include "transfer/ImportedBoard.h"

#include <cstdint>

namespace kelpa {

enum class ImportMode : std::uint8_t {
    /// Appends goals and todos to those of the board.
    add,
    /// Leaves nothing of the board but the windows of goals that the import has, too.
    replace,
};

/// The board after the import, its todos in the order 0 … n−1: those that were there first, then
/// those of the import. What the board already has gets a new identity, so that a file that is
/// added twice is there twice. Goals without a colour of their own get the next free ones.
BoardContents withImport(const BoardContents& present, const ImportedBoard& import,
                         ImportMode mode);

/// An import that was worked out ahead, off the main thread.
struct PreparedImport
{
    BoardContents before;
    bool isAutoSortingGoals = true;
    /// The board after it, its goals in automatic order where that is on.
    EncodedBoard after;
};

/// Any thread.
PreparedImport preparedImport(const BoardContents& present, const ImportedBoard& import,
                              ImportMode mode, bool isAutoSortingGoals);

} // namespace kelpa
